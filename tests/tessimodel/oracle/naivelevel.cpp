#include "tests/tessimodel/oracle/naivelevel.h"

#include "tests/tessimodel/oracle/wrapping.h"

#include <algorithm>
#include <iterator>

namespace tests::oracle {

namespace {

constexpr int kImplied = 100000;
constexpr int kCancel = 3;

} // namespace

__int64 NaiveQuote::live() const
{
    return minus(volume, dealVolume);
}

bool NaiveLevel::order(const Record& order, NaiveRow* row, int unit)
{
    if (quotes.contains(order.seq))
        return false;
    quotes[order.seq] = std::make_shared<NaiveQuote>(NaiveQuote{order.timetag, order.seq, order.volume, 0, 1});
    active = true;
    volume = plus(volume, order.volume);
    number += 1;
    lastChange = narrow(order.volume);
    timetag = std::max(timetag, order.timetag);
    if (row) {
        row->price = price;
        row->volume = handFigure(volume, unit);
        row->delta = handFigure(lastChange, unit);
        row->number = number;
    }
    return true;
}

void NaiveLevel::takeAway(std::map<__int64, std::shared_ptr<NaiveQuote>>::iterator quote)
{
    volume = minus(volume, quote->second->live());
    number -= 1;
    quotes.erase(quote);
}

bool NaiveLevel::cancel(__int64 seq)
{
    const auto found = quotes.find(seq);
    if (found == quotes.end())
        return false;
    takeAway(found);
    return true;
}

bool NaiveLevel::fill(const Record& trade, __int64 seq)
{
    while (!quotes.empty() && quotes.begin()->first < seq)
        takeAway(quotes.begin());
    if (quotes.empty())
        return true;
    const auto first = quotes.begin();
    if (first->first > seq)
        return false;
    NaiveQuote& quote = *first->second;
    const __int64 filled = std::min(quote.live(), trade.volume);
    volume = minus(volume, filled);
    quote.dealVolume = narrow(plus(quote.dealVolume, filled));
    if (quote.dealVolume < quote.volume) {
        quote.timetag = trade.timetag;
        quote.status = -1;
    } else {
        number -= 1;
        quotes.erase(first);
    }
    return true;
}

void NaiveLevel::writeRow(NaiveRow& row, int unit) const
{
    row.volume = handFigure(volume, unit);
    if (lastChange > 0)
        row.delta = handFigure(lastChange, unit);
    else if (lastChange < 0)
        row.delta = lastChange > -unit ? -1 : lastChange / unit;
    row.number = number;
}

bool NaiveLevel::deal(const Record& trade, NaiveRow* row, int unit)
{
    if (quotes.empty())
        return false;
    const __int64 seq = isBid ? trade.buySeq : trade.sellSeq;
    const bool taken = trade.transKind == kCancel ? cancel(seq) : fill(trade, seq);
    if (!taken)
        return false;
    lastChange = narrow(minus(0, trade.volume));
    if (volume < 1 || number < 1)
        active = false;
    else
        timetag = std::max(timetag, trade.timetag);
    if (row)
        writeRow(*row, unit);
    return true;
}

int NaiveLevel::correctNumber(int target) const
{
    if (target == volume)
        return number;
    int result = number;
    if (target > volume) {
        for (__int64 rest = narrow(minus(target, volume)); rest > 0; rest -= kImplied)
            ++result;
        return result;
    }
    __int64 excess = minus(volume, target);
    for (const auto& [seq, quote] : quotes) {
        excess = minus(excess, quote->live());
        if (excess < 0)
            break;
        --result;
        if (excess == 0)
            break;
    }
    return result;
}

int NaiveLevel::correctNumber(int from, int to)
{
    int count = 0;
    __int64 rest = narrow(static_cast<__int64>(to) - from);
    do {
        ++count;
        rest -= kImplied;
    } while (rest > 0);
    return count;
}

void NaiveLevel::correctQueue(int target)
{
    if (target < volume) {
        __int64 excess = minus(volume, target);
        while (!quotes.empty()) {
            NaiveQuote& oldest = *quotes.begin()->second;
            excess = minus(excess, oldest.live());
            if (excess < 0) {
                oldest.dealVolume = narrow(plus(oldest.volume, excess));
                break;
            }
            quotes.erase(quotes.begin());
            --number;
            if (excess == 0)
                break;
        }
    } else if (target > volume) {
        __int64 seq = quotes.empty() ? 1 : plus(std::prev(quotes.end())->second->seq, 1);
        for (__int64 surplus = narrow(minus(target, volume)); surplus > 0; surplus -= kImplied) {
            const __int64 size = std::min<__int64>(surplus, kImplied);
            quotes[seq] = std::make_shared<NaiveQuote>(NaiveQuote{0, seq, size, 0, 1});
            seq = plus(seq, 1);
            ++number;
        }
    }
    volume = target;
}

std::shared_ptr<NaiveLevel> NaiveLevel::deepCopy() const
{
    auto copy = std::make_shared<NaiveLevel>(*this);
    for (auto& [seq, quote] : copy->quotes)
        quote = std::make_shared<NaiveQuote>(*quote);
    return copy;
}

} // namespace tests::oracle
