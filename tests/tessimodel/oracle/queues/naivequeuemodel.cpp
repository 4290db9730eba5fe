#include "tests/tessimodel/oracle/queues/naivequeuemodel.h"

#include "tests/tessimodel/oracle/naiveinstruments.h"
#include "tests/tessimodel/oracle/wrapping.h"

#include <set>

namespace tests::oracle::queues {

namespace {

constexpr int kTradesIn = 1;
constexpr int kOrdersIn = 2;
constexpr int kBoth = 3;

bool isOrder(const RecordPtr& record)
{
    return isOfType(record, Record::Type::Order);
}

bool isTrade(const RecordPtr& record)
{
    return isOfType(record, Record::Type::Trade);
}

bool isHistory(int kind)
{
    return kind == 0 || kind == 3;
}

// Whether one of the trade's orders may be in the book.
bool isWorthOffering(const Record& trade, const std::set<__int64>& consumed)
{
    if (consumed.empty())
        return true;
    const bool bought = trade.buySeq != 0 && !consumed.contains(trade.buySeq);
    const bool sold = trade.sellSeq != 0 && !consumed.contains(trade.sellSeq);
    return bought || sold;
}

} // namespace

NaiveQueueModel::NaiveQueueModel(bool suppresses, Counters& counted)
    : suppressTickFlags(suppresses)
    , m_counters(counted)
{
    book.counters = &counted;
}

void NaiveQueueModel::setStock(int instrument)
{
    stock = instrument;
    initStockParams();
}

void NaiveQueueModel::initStockParams()
{
    if (stock < 0) {
        priceTick = 0.001;
        volumeUnit = 1;
        lastClose = DBL_MAX;
    } else {
        const Instrument& followed = instrumentAt(stock);
        priceTick = followed.priceTick;
        const bool isTen = isTyped(100016, followed.market, followed.code) || isTyped(100017, "SZ", followed.code);
        volumeUnit = isTen ? 10 : 100;
        lastClose = followed.lastClose;
    }
    book.stock = stock;
    book.priceTick = priceTick;
    book.volumeUnit = volumeUnit;
}

void NaiveQueueModel::callback(const ModelStep& step)
{
    m_tasks.emplace_back([this, action = step.action, kind = step.kind, records = step.batch->records] {
        if (action == ModelStep::Action::Orders)
            doEntrust(kind, records);
        else if (action == ModelStep::Action::Trades)
            doTransaction(kind, records);
        else if (action == ModelStep::Action::Queues)
            doQueue(records);
        else
            doQuoter(records);
    });
}

void NaiveQueueModel::work()
{
    for (; !m_tasks.empty(); m_tasks.pop_front())
        m_tasks.front()();
}

bool NaiveQueueModel::hasTicks() const
{
    return stock >= 0 && instrumentAt(stock).market == "SZ";
}

bool NaiveQueueModel::apply(const RecordPtr& tick)
{
    int flags = 0;
    if (isOrder(tick))
        book.appendOrder(stock, tick, flags);
    else
        book.appendTransaction(stock, tick, flags);
    if (flags == 16)
        ++m_counters.stoppedBatches;
    return flags != 16;
}

void NaiveQueueModel::applyLive(const RecordPtr& tick)
{
    if (loadedHistory != kBoth)
        return;
    int flags = 0;
    const bool isTaken =
        isOrder(tick) ? book.appendOrder(stock, tick, flags) : book.appendTransaction(stock, tick, flags);
    if (isTaken && suppressTickFlags)
        ++m_counters.silentTicks;
    else if (isTaken)
        updateFlags |= flags;
}

bool NaiveQueueModel::isConsumed(const Record& order) const
{
    const auto dealt = dealVolumes.find(order.seq);
    return dealt != dealVolumes.end() && dealt->second >= order.volume;
}

void NaiveQueueModel::doEntrust(int kind, const Records& batch)
{
    if (!hasTicks()) {
        ++m_counters.otherMarkets;
        return;
    }
    if (kind == 0)
        orders.clear();
    if (batch.empty() && kind != 0)
        return;
    if (!isHistory(kind)) {
        if (isOrder(batch.back())) {
            orders.push_back(batch.back());
            applyLive(batch.back());
        }
        return;
    }
    loadedHistory |= kOrdersIn;
    if (loadedHistory == kBoth) {
        completeWithOrders(kind, batch);
        return;
    }
    for (const RecordPtr& record : batch) {
        if (isOrder(record))
            orders.push_back(record);
    }
}

void NaiveQueueModel::completeWithOrders(int kind, const Records& batch)
{
    ++m_counters.builds;
    if (kind == 0) {
        book.clearBook();
        book.clearPending();
    }
    std::set<__int64> consumed;
    for (const RecordPtr& record : batch) {
        if (!isOrder(record))
            continue;
        orders.push_back(record);
        if (isConsumed(*record)) {
            consumed.insert(record->seq);
            ++m_counters.consumedOrders;
        } else if (!apply(record)) {
            return;
        }
    }
    if (kind == 0) {
        for (const RecordPtr& trade : transactions) {
            if (!isWorthOffering(*trade, consumed))
                ++m_counters.skippedTrades;
            else if (!apply(trade))
                return;
        }
    }
    updateFlags |= 1;
}

void NaiveQueueModel::noteDealt(const Record& trade)
{
    const int amount = trade.transKind == 3 ? 1000000000 : narrow(trade.volume);
    for (const int seq : {trade.buySeq, trade.sellSeq}) {
        if (seq != 0)
            dealVolumes[seq] = plus32(dealVolumes[seq], amount);
    }
}

void NaiveQueueModel::doTransaction(int kind, const Records& batch)
{
    if (!hasTicks()) {
        ++m_counters.otherMarkets;
        return;
    }
    if (kind == 0) {
        transactions.clear();
        dealVolumes.clear();
    }
    if (batch.empty() && kind != 0)
        return;
    if (!isHistory(kind)) {
        if (isTrade(batch.back())) {
            transactions.push_back(batch.back());
            applyLive(batch.back());
        }
        return;
    }
    for (const RecordPtr& record : batch) {
        if (isTrade(record)) {
            transactions.push_back(record);
            noteDealt(*record);
        }
    }
    loadedHistory |= kTradesIn;
    if (loadedHistory == kBoth)
        completeWithTrades(kind, batch);
}

void NaiveQueueModel::completeWithTrades(int kind, const Records& batch)
{
    ++m_counters.builds;
    std::set<__int64> consumed;
    if (kind == 0) {
        book.clearBook();
        book.clearPending();
        Records selected;
        for (const RecordPtr& order : orders) {
            if (isConsumed(*order))
                consumed.insert(order->seq);
            else
                selected.push_back(order);
        }
        m_counters.consumedOrders += static_cast<int>(consumed.size());
        for (const RecordPtr& order : selected) {
            if (!apply(order))
                return;
        }
    }
    for (const RecordPtr& record : batch) {
        if (!isTrade(record))
            continue;
        if (!isWorthOffering(*record, consumed))
            ++m_counters.skippedTrades;
        else if (!apply(record))
            return;
    }
    updateFlags |= 1;
}

void NaiveQueueModel::clear()
{
    priceTick = 0.001;
    lastClose = DBL_MAX;
    orders.clear();
    transactions.clear();
    dealVolumes.clear();
    rawTimetag = 0;
    quoter = nullptr;
    levelOrder = nullptr;
    continuous = false;
    loadedHistory = 0;
    updateFlags = 1;
    book.clearAll();
    initStockParams();
}

} // namespace tests::oracle::queues
