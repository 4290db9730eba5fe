#include "recording/terminalview.h"

#include "quoter/brovanquoteralldata.h"
#include "quoter/levelthousanddata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactioncount.h"

#include <algorithm>
#include <array>

namespace recording {

namespace {

template <std::size_t Levels>
void toHands(__int64 (&volumes)[Levels], int unit)
{
    for (__int64& volume : volumes)
        volume = levelHands(volume, unit);
}

void toHands(std::vector<int>& volumes, int unit)
{
    for (int& volume : volumes)
        volume = static_cast<int>(levelHands(volume, unit));
}

void toHands(quoter::QuoterAllData& quote, int unit)
{
    quote.volume /= unit;
    quote.rawVolume /= unit;
    toHands(quote.askVolume, unit);
    toHands(quote.bidVolume, unit);
}

void toHands(quoter::QuoterDepthData& snapshot, int unit)
{
    snapshot.volume /= unit;
    toHands(snapshot.askVolume, unit);
    toHands(snapshot.bidVolume, unit);
}

void toHands(quoter::LevelThousandData& levels, int unit)
{
    toHands(levels.askVolumes, unit);
    toHands(levels.bidVolumes, unit);
}

void toHands(quoter::TransactionCount& count, int unit)
{
    for (__int64* volume : {&count.buyHuge, &count.buyBig, &count.buyMiddle, &count.buySmall, &count.sellHuge,
                            &count.sellBig, &count.sellMiddle, &count.sellSmall})
        *volume /= unit;
}

void toHands(quoter::QuoteAux& aux, int unit)
{
    aux.totalBidVolume /= unit;
    aux.totalAskVolume /= unit;
}

// A copy of the record in hands when it is a Record; null otherwise.
template <class Record>
std::shared_ptr<quoter::QuoterBase> copyInHands(const std::shared_ptr<quoter::QuoterBase>& record, int unit)
{
    const auto source = std::dynamic_pointer_cast<Record>(record);
    if (!source)
        return nullptr;
    auto copy = std::make_shared<Record>(*source);
    toHands(*copy, unit);
    return copy;
}

Event delivered(const Event& event, int unit)
{
    Event out = event;
    switch (event.stream) {
    case Stream::Orders:
    case Stream::Trades:
    case Stream::Queues:
        break;
    case Stream::Quotes:
        out.record = copyInHands<zolv::BrovanQuoterAllData>(event.record, unit);
        if (!out.record)
            out.record = copyInHands<quoter::QuoterAllData>(event.record, unit);
        break;
    case Stream::Snapshots:
        out.record = copyInHands<quoter::QuoterDepthData>(event.record, unit);
        break;
    case Stream::Thousand:
        out.record = copyInHands<quoter::LevelThousandData>(event.record, unit);
        break;
    case Stream::Counts:
        out.record = copyInHands<quoter::TransactionCount>(event.record, unit);
        break;
    case Stream::Aux:
        if (event.aux) {
            out.aux = std::make_shared<quoter::QuoteAux>(*event.aux);
            toHands(*out.aux, unit);
        }
        break;
    }
    return out;
}

// Whether the volumes of a market are delivered as they are: contracts of futures and options, shares of Hong Kong. The
// models know the same markets by lists of their own, which this layer does not reach.
bool isCountedSingly(const std::string& market)
{
    constexpr std::array kMarkets{"DF",   "DCE", "ZF",    "CZCE", "SF",  "SHFE", "GF",
                                  "GFEX", "IF",  "CFFEX", "INE",  "SHO", "SZO",  "HK"};
    return std::find(kMarkets.begin(), kMarkets.end(), market) != kMarkets.end();
}

} // namespace

int sharesPerHand(const standin::InstrumentDescription& instrument)
{
    if (isCountedSingly(instrument.market))
        return 1;
    constexpr int kTenShares = 10;
    constexpr int kHundredShares = 100;
    const auto is = [&instrument](int type) { return instrument.types.count(type) > 0; };
    if (is(100016) || (instrument.market == "SZ" && is(100017)))
        return kTenShares;
    if (instrument.market == "SH" && (is(126) || is(100017)))
        return kTenShares;
    return kHundredShares;
}

__int64 levelHands(__int64 shares, int unit)
{
    return shares > 0 && shares < unit ? 1 : shares / unit;
}

TerminalView::TerminalView(const RecordedDay& day, int unit)
    : m_day(day)
    , m_unit(unit)
    , m_events(day.events.size())
{}

const Event& TerminalView::event(std::size_t arrival)
{
    const Stream stream = m_day.events[arrival].stream;
    if (!m_converted[static_cast<std::size_t>(stream)])
        convert(stream);
    return m_events[arrival];
}

void TerminalView::convert(Stream stream)
{
    for (std::size_t i = 0; i < m_events.size(); ++i) {
        if (m_day.events[i].stream == stream)
            m_events[i] = delivered(m_day.events[i], m_unit);
    }
    m_converted[static_cast<std::size_t>(stream)] = true;
}

} // namespace recording
