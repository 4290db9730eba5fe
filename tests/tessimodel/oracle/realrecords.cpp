#include "tests/tessimodel/oracle/realrecords.h"

#include "quoter/levelorderdata.h"
#include "quoter/levelthousanddata.h"
#include "tests/support/instruments.h"
#include "tests/support/records.h"
#include "ztservice/instrumentdetail.h"

#include <algorithm>

namespace tests::oracle {

namespace {

std::shared_ptr<quoter::QuoterBase> orderOf(const Record& from)
{
    auto order = std::make_shared<quoter::OrderData>();
    order->price = from.price;
    order->volume = from.volume;
    order->seq = from.seq;
    order->orderKind = from.orderKind;
    order->bsFlag = from.bsFlag;
    return order;
}

std::shared_ptr<quoter::QuoterBase> tradeOf(const Record& from)
{
    auto trade = std::make_shared<quoter::TransactionData>();
    trade->price = from.price;
    trade->volume = from.volume;
    trade->buySeq = from.buySeq;
    trade->sellSeq = from.sellSeq;
    trade->transKind = from.transKind;
    trade->tradeFlag = from.tradeFlag;
    return trade;
}

std::shared_ptr<quoter::QuoterBase> snapshotOf(const Record& from)
{
    auto snapshot = std::make_shared<quoter::QuoterDepthData>();
    snapshot->lastPrice = from.price;
    snapshot->lastPriceAlt = from.lastPriceAlt;
    snapshot->volume = from.volume;
    snapshot->tradeStatus = from.tradeStatus;
    std::copy(from.bids.prices.begin(), from.bids.prices.end(), snapshot->bidPrice);
    std::copy(from.bids.volumes.begin(), from.bids.volumes.end(), snapshot->bidVolume);
    std::copy(from.asks.prices.begin(), from.asks.prices.end(), snapshot->askPrice);
    std::copy(from.asks.volumes.begin(), from.asks.volumes.end(), snapshot->askVolume);
    return snapshot;
}

std::shared_ptr<quoter::QuoterBase> queueOf(const Record& from)
{
    auto queue = std::make_shared<quoter::LevelOrderData>();
    queue->bidPrice = from.allBids.prices.at(0);
    queue->bidQueue = from.allBids.volumes;
    queue->askPrice = from.allAsks.prices.at(0);
    queue->askQueue = from.allAsks.volumes;
    return queue;
}

std::shared_ptr<quoter::QuoterBase> thousandOf(const Record& from)
{
    auto thousand = std::make_shared<quoter::LevelThousandData>();
    thousand->bidPrices = from.allBids.prices;
    thousand->bidVolumes = from.allBids.volumes;
    thousand->bidNumbers = from.allBids.numbers;
    thousand->askPrices = from.allAsks.prices;
    thousand->askVolumes = from.allAsks.volumes;
    thousand->askNumbers = from.allAsks.numbers;
    return thousand;
}

std::shared_ptr<quoter::QuoterBase> realOf(const Record& from)
{
    switch (from.type) {
    case Record::Type::Order:
        return orderOf(from);
    case Record::Type::Trade:
        return tradeOf(from);
    case Record::Type::Snapshot:
        return snapshotOf(from);
    case Record::Type::Queue:
        return queueOf(from);
    case Record::Type::Thousand:
        return thousandOf(from);
    case Record::Type::LevelOne:
        break;
    }
    return std::make_shared<quoter::QuoterAllData>();
}

} // namespace

void prepare(standin::Terminal& terminal)
{
    for (const Instrument& instrument : instruments()) {
        auto description = stock(instrument.market, instrument.code, instrument.types);
        description.priceTick = instrument.priceTick;
        description.lastClose = instrument.lastClose;
        terminal.instruments.add(description);
    }
    terminal.strands.runByHand();
}

QString stockKeyOf(int instrument)
{
    if (instrument < 0)
        return "nowhere:000000";
    const Instrument& followed = instruments().at(static_cast<std::size_t>(instrument));
    return keyOf(followed.market, followed.code);
}

std::shared_ptr<ztservice::CInstrumentDetail> detailOf(int instrument)
{
    if (instrument < 0)
        return nullptr;
    auto detail = std::make_shared<ztservice::CInstrumentDetail>();
    detail->market = instruments().at(static_cast<std::size_t>(instrument)).market;
    detail->code = instruments().at(static_cast<std::size_t>(instrument)).code;
    return detail;
}

int indexOf(const std::shared_ptr<ztservice::CInstrumentDetail>& stock)
{
    return stock ? instrumentIndex(stock->market, stock->code) : -1;
}

std::shared_ptr<quoter::QuoterBase> RealRecords::of(const RecordPtr& record)
{
    if (!record)
        return nullptr;
    auto& real = m_real[record];
    if (!real) {
        real = realOf(*record);
        real->timetag = record->timetag;
        m_ids[real.get()] = record->id;
    }
    return real;
}

boost::shared_ptr<TC::MetaCacheDataWrapper> RealRecords::of(const BatchPtr& batch)
{
    if (!batch)
        return nullptr;
    const Instrument& instrument = instruments().at(static_cast<std::size_t>(batch->instrument));
    return batchFor(instrument.market, instrument.code, of(batch->records));
}

std::vector<std::shared_ptr<quoter::QuoterBase>> RealRecords::of(const std::vector<RecordPtr>& records)
{
    Records real;
    for (const RecordPtr& record : records)
        real.push_back(of(record));
    return real;
}

int RealRecords::idOf(const quoter::QuoterBase* record) const
{
    const auto found = m_ids.find(record);
    return found == m_ids.end() ? -1 : found->second;
}

} // namespace tests::oracle
