#include "bench/stockfeed.h"

#include "bench/tickstream.h"
#include "Formula/stockmanager.h"
#include "utils/stockkey.h"

#include <boost/make_shared.hpp>

namespace bench {

namespace {

constexpr const char* kMarket = "SZ";
constexpr const char* kCode = "000001";

} // namespace

StockFeed::StockFeed(int lowestKey, int highestKey)
{
    m_terminal.strands.runByHand();
    m_terminal.log.setLevel(50000);
    standin::InstrumentDescription description;
    description.market = kMarket;
    description.code = kCode;
    description.priceTick = kPriceTick;
    description.lastClose = (lowestKey + highestKey) * kPriceTick / 2;
    m_terminal.instruments.add(description);
    m_stock = utils::CSingletonT<TC::CStockManager>::instance()->getInstrumentDetail(kMarket, kCode);
}

QString StockFeed::key()
{
    return QString::fromStdString(utils::zlStockKey(kMarket, kCode));
}

StockFeed::Batch StockFeed::emptyBatch() const
{
    auto batch = boost::make_shared<TC::MetaCacheDataWrapper>();
    batch->market = kMarket;
    batch->stockCode = kCode;
    return batch;
}

void StockFeed::drain()
{
    m_terminal.strands.drain("modulegroup");
}

void StockFeed::freeReleased()
{
    m_terminal.strands.drain("data_release");
}

} // namespace bench
