#include "tests/tessimodel/oracle/recordmarket.h"

namespace tests::oracle {

RecordPtr RecordMarket::levelOne()
{
    Record record;
    record.type = Record::Type::LevelOne;
    record.timetag = m_time;
    record.id = m_nextId++;
    return std::make_shared<const Record>(record);
}

RecordPtr RecordMarket::kept(std::vector<RecordPtr>& list, Record record)
{
    record.id = m_nextId++;
    list.push_back(std::make_shared<const Record>(record));
    return list.back();
}

RecordPtr RecordMarket::repeated(const std::vector<RecordPtr>& list)
{
    return list[static_cast<std::size_t>(m_dice.below(static_cast<int>(list.size())))];
}

} // namespace tests::oracle
