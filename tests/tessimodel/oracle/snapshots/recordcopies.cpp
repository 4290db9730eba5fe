#include "tests/tessimodel/oracle/snapshots/recordcopies.h"

#include "quoter/brovanquoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "tests/tessimodel/oracle/wrapping.h"

#include <algorithm>
#include <bit>

namespace tests::oracle::snapshots {

namespace {

const Section kLast{"changed record", "lastPrice", {"#"}};
const Section kAlternative{"changed record", "lastPriceAlt", {"#"}};
const Section kClose{"changed record", "lastClose", {"#"}};
const Section kFigures{"changed record", nullptr, {"#", "status", "volume", "levels"}};

bool sameBits(double a, double b)
{
    return std::bit_cast<unsigned long long>(a) == std::bit_cast<unsigned long long>(b);
}

template <class Record>
bool copyAs(const RecordPtr& record, RecordPtr& copy)
{
    const auto own = std::dynamic_pointer_cast<Record>(record);
    if (own)
        copy = std::make_shared<Record>(*own);
    return own != nullptr;
}

template <class Record>
__int64 sumOfLevels(const Record& record)
{
    __int64 sum = 0;
    const auto addDoubles = [&sum](const auto& values) {
        for (const double value : values)
            sum = plus(plus(sum, plus(sum, sum)), std::bit_cast<__int64>(value));
    };
    const auto addVolumes = [&sum](const auto& values) {
        for (const __int64 value : values)
            sum = plus(sum, value);
    };
    addDoubles(record.askPrice);
    addDoubles(record.bidPrice);
    addVolumes(record.askVolume);
    addVolumes(record.bidVolume);
    return sum;
}

template <class Record>
void writeIfChanged(Lines& out, int id, const Record& was, const Record& is)
{
    if (!sameBits(was.lastPrice, is.lastPrice))
        out.add(kLast, is.lastPrice, {id});
    if (!sameBits(was.lastPriceAlt, is.lastPriceAlt))
        out.add(kAlternative, is.lastPriceAlt, {id});
    if (!sameBits(was.lastClose, is.lastClose))
        out.add(kClose, is.lastClose, {id});
    const bool sameLevels = std::ranges::equal(was.askPrice, is.askPrice, sameBits) &&
                            std::ranges::equal(was.bidPrice, is.bidPrice, sameBits) &&
                            std::ranges::equal(was.askVolume, is.askVolume) &&
                            std::ranges::equal(was.bidVolume, is.bidVolume);
    if (!sameLevels || was.volume != is.volume || was.tradeStatus != is.tradeStatus)
        out.add(kFigures, {id, is.tradeStatus, is.volume, sumOfLevels(is)});
}

template <class Record>
bool writeAs(Lines& out, int id, const RecordPtr& was, const RecordPtr& is)
{
    const auto before = std::dynamic_pointer_cast<Record>(was);
    const auto now = std::dynamic_pointer_cast<Record>(is);
    if (before && now)
        writeIfChanged(out, id, *before, *now);
    return before != nullptr;
}

} // namespace

RecordPtr RecordCopies::of(const RecordPtr& record)
{
    if (!record)
        return nullptr;
    const auto [known, isNew] = m_ids.try_emplace(record.get(), static_cast<int>(m_known.size()));
    if (!isNew)
        return m_known[static_cast<std::size_t>(known->second)].copy;
    RecordPtr copy = record; // what is no snapshot stays the same for all
    if (!copyAs<zolv::BrovanQuoterAllData>(record, copy) && !copyAs<quoter::QuoterAllData>(record, copy))
        copyAs<quoter::QuoterDepthData>(record, copy);
    m_ids.emplace(copy.get(), static_cast<int>(m_known.size()));
    m_known.push_back({record, copy});
    return copy;
}

Records RecordCopies::of(const Records& records)
{
    Records copies;
    for (const RecordPtr& record : records)
        copies.push_back(of(record));
    return copies;
}

int RecordCopies::idOf(const quoter::QuoterBase* copy) const
{
    return copy ? m_ids.at(copy) : -1;
}

void RecordCopies::writeChanged(Lines& out) const
{
    int id = 0;
    for (const auto& [original, copy] : m_known) {
        if (original != copy && !writeAs<quoter::QuoterAllData>(out, id, original, copy))
            writeAs<quoter::QuoterDepthData>(out, id, original, copy);
        ++id;
    }
}

} // namespace tests::oracle::snapshots
