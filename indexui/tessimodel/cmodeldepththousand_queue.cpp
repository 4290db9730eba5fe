#include "indexui/tessimodel/cmodeldepththousand_queue.h"

#include "indexui/tessimodel/detail/levelsteps.h"
#include "indexui/tessimodel/liveread.h"

#include <boost/thread/lock_guard.hpp>

#include <algorithm>

namespace TC {

using namespace detail;

namespace {

using Lock = boost::lock_guard<boost::recursive_mutex>;

// How many implied orders hold that many shares; none for a number that is not above 0.
int impliedOrders(int shares)
{
    return shares > 0 ? (shares - 1) / SingleQueue::kImpliedOrderShares + 1 : 0;
}

} // namespace

SingleQueue::SingleQueue(double price, bool isBid)
    : m_isBid(isBid)
    , m_price(price)
{}

SingleQueue::SingleQueue(SingleQueue& source)
{
    const Lock lock(source.m_mutex);
    m_active = source.m_active;
    m_isBid = source.m_isBid;
    m_timetag = source.m_timetag;
    m_price = source.m_price;
    m_volume = source.m_volume;
    m_number = source.m_number;
    m_lastChange = source.m_lastChange;
    source.getQuotes(m_quotes);
    for (auto& [seq, quote] : m_quotes)
        quote = std::make_shared<SingleQuote>(*quote);
}

void SingleQueue::renew(double price, bool isBid)
{
    m_quotes.clear();
    m_active = false;
    m_isBid = isBid;
    m_timetag = 0;
    m_price = price;
    m_volume = 0;
    m_number = 0;
    m_lastChange = 0;
    m_lent = false;
    m_markedSince = kNotMarked;
}

bool SingleQueue::order(const std::shared_ptr<quoter::OrderData>& order, const boost::shared_ptr<EntrustData>& row,
                        int unit)
{
    const Lock lock(m_mutex);
    return addOrder(*this, *order, row.get(), unit, PlainKeeper());
}

bool SingleQueue::deal(const std::shared_ptr<quoter::TransactionData>& trade, const boost::shared_ptr<EntrustData>& row,
                       int unit)
{
    const Lock lock(m_mutex);
    return takeTrade(*this, *trade, row.get(), unit, PlainKeeper());
}

int SingleQueue::correctNumber(int volume)
{
    const __int64 held = readLive(m_volume);
    const int number = readLive(m_number);
    if (volume == held)
        return number;
    if (volume > held)
        return sum32(number, impliedOrders(low32(difference64(volume, held))));

    const Lock lock(m_mutex);
    __int64 excess = difference64(m_volume, volume);
    int left = m_number;
    for (const auto& [seq, quote] : m_quotes) {
        excess = difference64(excess, liveSize(*quote));
        if (excess < 0)
            break; // this order survives in part
        --left;
        if (excess == 0)
            break;
    }
    return left;
}

int SingleQueue::correctNumber(int from, int to)
{
    return std::max(1, impliedOrders(difference32(to, from)));
}

void SingleQueue::correctQueue(int volume)
{
    if (volume < m_volume)
        cutFront(difference64(m_volume, volume));
    else if (volume > m_volume)
        addImplied(low32(difference64(volume, m_volume)));
    m_volume = volume;
}

void SingleQueue::cutFront(__int64 excess)
{
    const Lock lock(m_mutex);
    while (excess != 0 && !m_quotes.empty()) {
        SingleQuote& oldest = *m_quotes.begin()->second;
        excess = difference64(excess, liveSize(oldest));
        if (excess < 0) {
            oldest.dealVolume = low32(sum64(oldest.volume, excess)); // what was cut too much stays live
            return;
        }
        m_quotes.erase(m_quotes.begin());
        --m_number;
    }
}

void SingleQueue::addImplied(int surplus)
{
    const Lock lock(m_mutex);
    __int64 nextSeq = m_quotes.empty() ? 1 : sum64(m_quotes.rbegin()->second->seq, 1);
    for (; surplus > 0; surplus -= kImpliedOrderShares) {
        PlainKeeper::insert(m_quotes, 0, nextSeq, std::min(surplus, kImpliedOrderShares));
        nextSeq = sum64(nextSeq, 1);
        ++m_number;
    }
}

void SingleQueue::getQuotes(Quotes& out)
{
    const Lock lock(m_mutex);
    if (&out != &m_quotes)
        out = m_quotes;
}

} // namespace TC
