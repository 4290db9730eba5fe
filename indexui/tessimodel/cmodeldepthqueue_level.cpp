#include "indexui/tessimodel/cmodeldepthqueue_level.h"

#include "indexui/tessimodel/detail/queuesteps.h"

#include <boost/thread/lock_guard.hpp>

namespace TC {

using namespace detail;

namespace {

using Lock = boost::lock_guard<boost::recursive_mutex>;

} // namespace

OrderQueue::OrderQueue(double price, bool isBid)
    : m_isBid(isBid)
    , m_price(price)
{}

void OrderQueue::renew(double price, bool isBid)
{
    m_quotes.clear();
    m_valid = false;
    m_isBid = isBid;
    m_price = price;
    m_volume = 0;
    m_count = 0;
    m_queueVolume = 0;
    m_lent = false;
}

bool OrderQueue::appendQuote(const std::shared_ptr<quoter::OrderData>& order)
{
    const Lock lock(m_mutex);
    return addOrder(*this, *order, PlainKeeper());
}

bool OrderQueue::dealQuote(const std::shared_ptr<quoter::TransactionData>& trade)
{
    const Lock lock(m_mutex);
    return takeTrade(*this, *trade, PlainKeeper());
}

void OrderQueue::assignQueue(const std::vector<int>& volumes)
{
    const Lock lock(m_mutex);
    int sum = 0;
    __int64 seq = 0;
    for (const int volume : volumes) {
        std::shared_ptr<SingleQuote>& quote = m_quotes[seq];
        if (!quote)
            quote = std::make_shared<SingleQuote>(SingleQuote{0, seq});
        writeQuote(*quote, {0, quote->seq, volume});
        sum = sum32(sum, volume);
        ++seq;
    }
    for (auto left = m_quotes.find(seq); left != m_quotes.end() && left->first == seq; ++seq)
        left = m_quotes.erase(left);
    writeLive(m_count, low32(static_cast<__int64>(volumes.size())));
    writeLive(m_queueVolume, sum);
}

} // namespace TC
