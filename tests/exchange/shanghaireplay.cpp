#include "tests/exchange/shanghaireplay.h"

#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"
#include "tests/exchange/snapshottext.h"

#include <cmath>
#include <cstdlib>

namespace {

int ticks(double price)
{
    return static_cast<int>(std::llround(price * 100));
}

} // namespace

void ShanghaiReplay::apply(const quoter::OrderData& record)
{
    if (record.bsFlag > 2) {
        const auto found = m_orders.find(record.seq);
        if (found == m_orders.end() || found->second.left != record.volume || record.orderKind != 0)
            faults += line("delete of ", record.volume, " of order ", record.seq, "\n");
        m_orders.erase(record.seq);
        m_deleted[record.seq] = record.volume;
        return;
    }
    const auto before = m_arriving.find(record.seq);
    const __int64 left = record.volume - (before == m_arriving.end() ? 0 : before->second);
    if (record.orderKind != 1 || ticks(record.price) <= 0 || left <= 0)
        faults += line("order ", record.seq, " of kind ", record.orderKind, " appears with ", left, " left\n");
    if (before != m_arriving.end())
        m_arriving.erase(before);
    m_orders[record.seq] = {record.bsFlag == 1, ticks(record.price), left};
}

void ShanghaiReplay::apply(const quoter::TransactionData& record)
{
    if (record.transKind == 3) {
        const auto found = m_deleted.find(record.buySeq + record.sellSeq);
        if (found == m_deleted.end() || found->second != record.volume)
            faults += line("cancel of ", record.volume, " without its delete\n");
        m_deleted.clear();
        return;
    }
    m_volume += record.volume;
    const bool inAuction = record.tradeFlag == 0;
    const bool buyArrives = record.tradeFlag == 1;
    if (!inAuction && buyArrives != (record.buySeq > record.sellSeq))
        faults += line("trade ", record.buySeq, "x", record.sellSeq, " marked as ", record.tradeFlag, "\n");
    trade(record.buySeq, record.volume, !inAuction && buyArrives);
    trade(record.sellSeq, record.volume, !inAuction && !buyArrives);
}

void ShanghaiReplay::trade(__int64 seq, __int64 shares, bool mayArrive)
{
    const auto found = m_orders.find(seq);
    if ((found == m_orders.end()) != mayArrive) {
        faults += line("order ", seq, mayArrive ? " arrives twice\n" : " trades and is not there\n");
        return;
    }
    if (mayArrive) {
        m_arriving[seq] += shares;
        return;
    }
    found->second.left -= shares;
    if (found->second.left == 0)
        m_orders.erase(found);
}

std::string ShanghaiReplay::text() const
{
    std::map<int, __int64> levels[2]; // sells, buys; best first
    for (const auto& [seq, order] : m_orders)
        levels[order.buy ? 1 : 0][order.buy ? -order.price : order.price] += order.left;
    std::string text;
    for (const int side : {1, 0}) {
        text += side == 1 ? "bids" : " asks";
        int shown = 0;
        for (const auto& [key, shares] : levels[side]) {
            if (shown++ < 10)
                text += line(" ", std::abs(key), "x", shares);
        }
    }
    return text + line(" volume ", m_volume);
}

std::string ShanghaiReplay::auxText() const
{
    const auto side = [this](bool buy) {
        __int64 shares = 0;
        __int64 amount = 0;
        for (const auto& [seq, order] : m_orders) {
            shares += order.buy == buy ? order.left : 0;
            amount += order.buy == buy ? order.left * order.price : 0;
        }
        const __int64 twice = shares == 0 ? 0 : 2 * amount / shares;
        return line(shares, "@", (twice + 1) / 2);
    };
    return line("bid ", side(true), " ask ", side(false));
}

std::string ShanghaiReplay::textOf(const quoter::QuoterDepthData& snapshot)
{
    std::string bids = "bids";
    std::string asks = " asks";
    for (std::size_t i = 0; i < std::size(snapshot.bidPrice); ++i) {
        if (snapshot.bidPrice[i] > 0)
            bids += line(" ", ticks(snapshot.bidPrice[i]), "x", snapshot.bidVolume[i]);
        if (snapshot.askPrice[i] > 0)
            asks += line(" ", ticks(snapshot.askPrice[i]), "x", snapshot.askVolume[i]);
    }
    return bids + asks + line(" volume ", snapshot.volume);
}
