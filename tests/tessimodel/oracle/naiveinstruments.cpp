#include "tests/tessimodel/oracle/naiveinstruments.h"

namespace tests::oracle {

const Instrument& instrumentAt(int instrument)
{
    return instruments().at(static_cast<std::size_t>(instrument));
}

bool isTyped(int type, const std::string& market, const std::string& code)
{
    const int found = instrumentIndex(market, code);
    return found >= 0 && instrumentAt(found).types.contains(type);
}

int sharesPerHand(const Instrument& stock)
{
    if (isTyped(100016, stock.market, stock.code) || isTyped(100017, "SZ", stock.code))
        return 10;
    if (stock.market == "SH" && (isTyped(126, stock.market, stock.code) || isTyped(100017, stock.market, stock.code)))
        return 10;
    return 100;
}

bool isOfType(const RecordPtr& record, Record::Type type)
{
    return record && record->type == type;
}

} // namespace tests::oracle
