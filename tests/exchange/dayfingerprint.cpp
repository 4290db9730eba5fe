#include "tests/exchange/dayfingerprint.h"

#include "quoter/levelorderdata.h"
#include "quoter/levelthousanddata.h"
#include "quoter/orderdata.h"
#include "quoter/quoteralldata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactioncount.h"
#include "quoter/transactiondata.h"
#include "recording/recordedday.h"

#include <bit>
#include <stdexcept>

namespace {

class Hash {
public:
    template <class... Fields>
    void add(const Fields&... fields)
    {
        (addOne(fields), ...);
    }
    std::uint64_t value() const { return m_value; }

private:
    void addOne(std::uint64_t bits)
    {
        for (int byte = 0; byte < 8; ++byte, bits >>= 8) {
            m_value ^= bits & 0xffU;
            m_value *= 0x100000001b3U;
        }
    }
    void addOne(__int64 number) { addOne(static_cast<std::uint64_t>(number)); }
    void addOne(int number) { addOne(static_cast<__int64>(number)); }
    void addOne(double number) { addOne(std::bit_cast<std::uint64_t>(number)); }
    template <class Element>
    void addOne(const std::vector<Element>& list)
    {
        addOne(static_cast<std::uint64_t>(list.size()));
        for (const Element& element : list)
            addOne(element);
    }
    template <class Element, std::size_t size>
    void addOne(const Element (&array)[size])
    {
        for (const Element& element : array)
            addOne(element);
    }

    std::uint64_t m_value = 0xcbf29ce484222325U;
};

template <class Snapshot>
void addQuote(const Snapshot& r, Hash& hash)
{
    hash.add(r.open, r.high, r.low, r.lastClose, r.amount, r.volume, r.tradeStatus, r.lastSettlementPrice,
             r.settlementPrice, r.iopv, r.askPrice, r.bidPrice, r.askVolume, r.bidVolume, r.lastPriceAlt);
}

void addRecord(const quoter::QuoterBase& record, Hash& hash)
{
    hash.add(record.timetag, record.price);
    if (const auto* order = dynamic_cast<const quoter::OrderData*>(&record)) {
        hash.add(order->volume, order->seq, order->orderKind, order->bsFlag);
    } else if (const auto* trade = dynamic_cast<const quoter::TransactionData*>(&record)) {
        hash.add(trade->volume, trade->buySeq, trade->sellSeq, trade->tradeFlag, trade->transKind);
    } else if (const auto* quote = dynamic_cast<const quoter::QuoterAllData*>(&record)) {
        addQuote(*quote, hash);
        hash.add(quote->rawVolume);
    } else if (const auto* depth = dynamic_cast<const quoter::QuoterDepthData*>(&record)) {
        addQuote(*depth, hash);
    } else if (const auto* queue = dynamic_cast<const quoter::LevelOrderData*>(&record)) {
        hash.add(queue->bidPrice, queue->bidQueue, queue->askPrice, queue->askQueue);
    } else if (const auto* full = dynamic_cast<const quoter::LevelThousandData*>(&record)) {
        hash.add(full->bidPrices, full->bidVolumes, full->bidNumbers, full->askPrices, full->askVolumes,
                 full->askNumbers);
    } else if (const auto* counts = dynamic_cast<const quoter::TransactionCount*>(&record)) {
        hash.add(counts->buyOrderCount, counts->buyHuge, counts->buyBig, counts->buyMiddle, counts->buySmall,
                 counts->sellOrderCount, counts->sellHuge, counts->sellBig, counts->sellMiddle, counts->sellSmall);
    } else {
        throw std::logic_error("a record of an unknown type");
    }
}

} // namespace

std::uint64_t dayFingerprint(const recording::RecordedDay& day)
{
    Hash hash;
    for (const recording::Event& event : day.events) {
        hash.add(static_cast<int>(event.stream));
        if (event.record)
            addRecord(*event.record, hash);
        if (event.aux)
            hash.add(event.aux->timetag, event.aux->bidAveragePrice, event.aux->totalBidVolume,
                     event.aux->askAveragePrice, event.aux->totalAskVolume);
    }
    return hash.value();
}
