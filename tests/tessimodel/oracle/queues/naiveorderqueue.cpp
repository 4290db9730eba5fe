#include "tests/tessimodel/oracle/queues/naiveorderqueue.h"

#include "tests/tessimodel/oracle/wrapping.h"

namespace tests::oracle::queues {

bool NaiveOrderQueue::appendQuote(const Record& order)
{
    if (quotes.contains(order.seq))
        return false;
    quotes[order.seq] = std::make_shared<NaiveQuote>(NaiveQuote{order.timetag, order.seq, order.volume, 0, 1});
    valid = true;
    volume = plus(volume, order.volume);
    count += 1;
    return true;
}

void NaiveOrderQueue::takeAway(std::map<__int64, std::shared_ptr<NaiveQuote>>::iterator quote)
{
    volume = minus(volume, quote->second->live());
    count -= 1;
    quotes.erase(quote);
}

bool NaiveOrderQueue::cancel(__int64 seq)
{
    const auto found = quotes.find(seq);
    if (found == quotes.end())
        return false;
    takeAway(found);
    return true;
}

bool NaiveOrderQueue::fill(const Record& trade, __int64 seq, Counters& counters)
{
    const std::size_t before = quotes.size();
    while (!quotes.empty() && quotes.begin()->first < seq)
        takeAway(quotes.begin());
    counters.olderGone += quotes.size() < before ? 1 : 0;
    if (quotes.empty()) {
        ++counters.ranOff;
        return true;
    }
    const auto first = quotes.begin();
    if (first->first > seq) {
        counters.passedOver += quotes.size() < before ? 1 : 0;
        return false;
    }
    NaiveQuote& quote = *first->second;
    counters.overfills += trade.volume > quote.live() ? 1 : 0;
    volume = minus(volume, trade.volume);
    quote.dealVolume = plus32(quote.dealVolume, narrow(trade.volume));
    if (quote.dealVolume < quote.volume) {
        quote.timetag = trade.timetag;
        quote.status = -1;
        ++counters.partialFills;
    } else {
        count -= 1;
        quotes.erase(first);
        ++counters.fills;
    }
    return true;
}

bool NaiveOrderQueue::dealQuote(const Record& trade, Counters& counters)
{
    if (quotes.empty())
        return false;
    const __int64 seq = isBid ? trade.buySeq : trade.sellSeq;
    const bool isCancel = trade.transKind == 3;
    if (isCancel ? !cancel(seq) : !fill(trade, seq, counters))
        return false;
    counters.cancels += isCancel ? 1 : 0;
    if (!(volume > 0 && count > 0)) {
        valid = false;
        counters.deadWithOrders += quotes.empty() ? 0 : 1;
    }
    return true;
}

void NaiveOrderQueue::assignQueue(const std::vector<int>& volumes)
{
    count = 0;
    queueVolume = 0;
    __int64 place = 0;
    for (const int shares : volumes) {
        std::shared_ptr<NaiveQuote>& quote = quotes[place];
        if (!quote) {
            quote = std::make_shared<NaiveQuote>();
            quote->seq = place;
        }
        quote->dealVolume = 0;
        quote->volume = shares;
        quote->status = 1;
        quote->timetag = 0;
        count += 1;
        queueVolume = plus32(queueVolume, shares);
        ++place;
    }
    while (quotes.erase(place) > 0)
        ++place;
}

} // namespace tests::oracle::queues
