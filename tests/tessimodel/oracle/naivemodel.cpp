#include "tests/tessimodel/oracle/naivemodel.h"

#include "tests/tessimodel/oracle/naiveinstruments.h"
#include "tests/tessimodel/oracle/wrapping.h"

#include <set>

namespace tests::oracle {

namespace {

constexpr int kTradesIn = 1;
constexpr int kOrdersIn = 2;
constexpr int kBoth = 3;
constexpr int kRebuilt = 1;

bool isOrder(const RecordPtr& record)
{
    return isOfType(record, Record::Type::Order);
}

bool isTrade(const RecordPtr& record)
{
    return isOfType(record, Record::Type::Trade);
}

// A trade is worth offering when one of its orders is in the book.
bool touchesTheBook(const Record& trade, const std::set<__int64>& consumed)
{
    return consumed.empty() || (trade.buySeq != 0 && !consumed.contains(trade.buySeq)) ||
           (trade.sellSeq != 0 && !consumed.contains(trade.sellSeq));
}

} // namespace

void NaiveModel::callback(const Step& step)
{
    post(step.batch, [this, action = step.action, kind = step.kind, batch = step.batch] {
        if (action == Step::Action::Orders)
            doEntrust(kind, batch);
        else if (action == Step::Action::Trades)
            doTransaction(kind, batch);
        else
            doQuoter(kind, batch->records);
    });
}

void NaiveModel::doEntrust(int kind, const BatchPtr& batch)
{
    if (kind == 0)
        orders.clear();
    if (kind == 0 || kind == 3) {
        if (kind == 0 || !batch->records.empty())
            takeOrderHistory(kind, batch->records);
    } else if (!batch->records.empty() && isOrder(batch->records.back())) {
        liveOrder(batch->records.back());
    }
}

void NaiveModel::liveOrder(const RecordPtr& order)
{
    orders.push_back(order);
    int flags = 0;
    if (loadedHistory == kBoth && book.appendOrder(stock, order, flags, true) && !suppressTickFlags)
        updateFlags |= flags;
}

void NaiveModel::takeOrderHistory(int kind, const std::vector<RecordPtr>& batch)
{
    loadedHistory |= kOrdersIn;
    if (loadedHistory != kBoth) {
        for (const RecordPtr& record : batch) {
            if (isOrder(record))
                orders.push_back(record);
        }
        dataReady |= kOrdersIn;
        return;
    }
    ++m_counters.builds;
    if (kind == 0)
        book.clearAll();
    std::set<__int64> consumed;
    int flags = 0;
    for (const RecordPtr& record : batch) {
        if (!isOrder(record))
            continue;
        orders.push_back(record);
        if (isDealtAway(*record))
            consumed.insert(record->seq);
        else
            book.appendOrder(stock, record, flags, false);
    }
    m_counters.consumedOrders += static_cast<int>(consumed.size());
    if (kind == 0) {
        for (const RecordPtr& trade : transactions) {
            if (touchesTheBook(*trade, consumed))
                offerHistoric(trade);
        }
        tickVolumeToHands();
    }
    book.refreshDecay();
    updateFlags |= kRebuilt;
    dataReady |= kOrdersIn;
}

bool NaiveModel::isDealtAway(const Record& order) const
{
    const auto dealt = dealVolumes.find(order.seq);
    return dealt != dealVolumes.end() && dealt->second >= order.volume;
}

void NaiveModel::offerHistoric(const RecordPtr& trade)
{
    int flags = 0;
    book.appendTransaction(stock, trade, flags, false);
    if (trade->transKind != 3) {
        tickLastPrice = trade->price;
        tickLastVolume = narrow(trade->volume);
    }
}

void NaiveModel::doTransaction(int kind, const BatchPtr& batch)
{
    if (kind == 0) {
        transactions.clear();
        dealVolumes.clear();
    }
    if (kind != 0 && kind != 3) {
        if (!batch->records.empty() && isTrade(batch->records.back()))
            liveTrade(batch->records.back());
        return;
    }
    if (kind == 3 && batch->records.empty())
        return;
    for (const RecordPtr& record : batch->records) {
        if (!isTrade(record))
            continue;
        transactions.push_back(record);
        const int amount = record->transKind == 3 ? 1000000000 : narrow(record->volume);
        addDealt(record->buySeq, amount);
        addDealt(record->sellSeq, amount);
    }
    loadedHistory |= kTradesIn;
    if (loadedHistory == kBoth)
        buildWithTrades(kind, batch->records);
    dataReady |= kTradesIn;
}

void NaiveModel::addDealt(int seq, int amount)
{
    if (seq != 0)
        dealVolumes[seq] = plus32(dealVolumes[seq], amount);
}

void NaiveModel::buildWithTrades(int kind, const std::vector<RecordPtr>& batch)
{
    ++m_counters.builds;
    std::set<__int64> consumed;
    if (kind == 0) {
        book.clearAll();
        int flags = 0;
        for (const RecordPtr& order : orders) {
            if (isDealtAway(*order))
                consumed.insert(order->seq);
            else
                book.appendOrder(stock, order, flags, false);
        }
        m_counters.consumedOrders += static_cast<int>(consumed.size());
    }
    for (const RecordPtr& trade : batch) {
        if (isTrade(trade) && touchesTheBook(*trade, consumed))
            offerHistoric(trade);
    }
    tickVolumeToHands();
    book.refreshDecay();
    updateFlags |= kRebuilt;
}

void NaiveModel::liveTrade(const RecordPtr& trade)
{
    transactions.push_back(trade);
    int flags = 0;
    if (loadedHistory != kBoth || !book.appendTransaction(stock, trade, flags, true))
        return;
    if (!suppressTickFlags)
        updateFlags |= flags;
    if (trade->transKind != 3) {
        tickLastPrice = trade->price;
        tickLastVolume = narrow(trade->volume);
        tickVolumeToHands();
    }
}

void NaiveModel::tickVolumeToHands()
{
    if (tickLastVolume == 0)
        return;
    if (tickLastVolume < volumeUnit)
        tickLastVolume = 1;
    else
        tickLastVolume = truncated(tickLastVolume / static_cast<double>(volumeUnit) + 0.5);
}

void NaiveModel::noteStep(int kind, const Records& batch)
{
    const RecordPtr last = batch.back();
    takeStep(kind, batch);
    if (!quoter)
        quoter = baseBeforeLast(batch);
    if (!quoter || quoter->volume < last->volume) {
        quoterVolumeTime = last->timetag;
        quoter = last;
    }
}

} // namespace tests::oracle
