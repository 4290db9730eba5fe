#include "Formula/formulaparam.h"
#include "Formula/metacachedatawrapper.h"
#include "quoter/brovanquoteralldata.h"
#include "quoter/levelorderdata.h"
#include "quoter/levelthousanddata.h"
#include "quoter/orderdata.h"
#include "quoter/quoteaux.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactioncount.h"
#include "quoter/transactiondata.h"
#include "tests/support/layout.h"
#include "tests/support/records.h"
#include "ztservice/instrumentdetail.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace quoter;
using tests::standInOrder;

// The type of a field, from its member pointer.
template <class Owner, class Field>
Field fieldOf(Field Owner::*);

template <class Field, auto... members>
constexpr bool kAllAre = (std::is_same_v<decltype(fieldOf(members)), Field> && ...);

using A = QuoterAllData;
using D = QuoterDepthData;
using C = TransactionCount;
using T = LevelThousandData;
using I = ztservice::CInstrumentDetail;

// Widths are part of the contract: feeds and readers rely on them.
static_assert(kAllAre<qint64, &QuoterBase::timetag, &A::volume, &A::rawVolume, &D::volume, &OrderData::volume,
                      &OrderData::seq, &TransactionData::volume, &QuoteAux::timetag, &QuoteAux::totalBidVolume,
                      &QuoteAux::totalAskVolume, &TimeSeq::time, &TimeSeq::sequence, &TC::CFormulaParam::rangeFlags>);
static_assert(kAllAre<qint64, &C::buyOrderCount, &C::buyHuge, &C::buyBig, &C::buyMiddle, &C::buySmall,
                      &C::sellOrderCount, &C::sellHuge, &C::sellBig, &C::sellMiddle, &C::sellSmall>);
static_assert(kAllAre<int, &A::tradeStatus, &D::tradeStatus, &OrderData::orderKind, &OrderData::bsFlag,
                      &TransactionData::buySeq, &TransactionData::sellSeq, &TransactionData::tradeFlag,
                      &TransactionData::transKind, &I::listingFlags, &TC::CFormulaParam::period>);
static_assert(
    kAllAre<double, &QuoterBase::lastPrice, &QuoterBase::price, &A::open, &A::high, &A::low, &A::lastClose, &A::amount,
            &A::lastSettlementPrice, &A::settlementPrice, &A::iopv, &A::lastPriceAlt, &D::open, &D::high, &D::low,
            &D::lastClose, &D::lastSettlementPrice, &D::settlementPrice, &D::iopv, &D::lastPriceAlt>);
static_assert(
    kAllAre<double, &zolv::BrovanQuoterAllData::upStopPrice, &zolv::BrovanQuoterAllData::downStopPrice,
            &LevelOrderData::bidPrice, &LevelOrderData::askPrice, &QuoteAux::bidAveragePrice,
            &QuoteAux::askAveragePrice, &I::lastClose, &I::upStopPrice, &I::downStopPrice, &I::zeroPriceThreshold>);
static_assert(kAllAre<std::vector<int>, &LevelOrderData::bidQueue, &LevelOrderData::askQueue, &T::bidVolumes,
                      &T::bidNumbers, &T::askVolumes, &T::askNumbers>);
static_assert(kAllAre<std::vector<double>, &T::bidPrices, &T::askPrices>);
static_assert(kAllAre<std::string, &I::market, &I::code, &I::name, &TC::MetaCacheDataWrapper::market,
                      &TC::MetaCacheDataWrapper::stockCode>);
static_assert(kAllAre<unsigned, &I::classBits>);
static_assert(std::is_same_v<decltype(A::askPrice), double[5]> && std::is_same_v<decltype(A::bidPrice), double[5]>);
static_assert(std::is_same_v<decltype(A::askVolume), qint64[5]> && std::is_same_v<decltype(A::bidVolume), qint64[5]>);
static_assert(std::is_same_v<decltype(D::askPrice), double[10]> && std::is_same_v<decltype(D::bidPrice), double[10]>);
static_assert(std::is_same_v<decltype(D::askVolume), qint64[10]> && std::is_same_v<decltype(D::bidVolume), qint64[10]>);
static_assert(!std::is_base_of_v<QuoterBase, QuoteAux>);

TEST(Records, shouldKeepDeclaredOrderWhenLaidOut)
{
    const A a;
    EXPECT_TRUE(standInOrder(a.timetag, a.lastPrice, a.open, a.high, a.low, a.lastClose, a.amount, a.volume,
                             a.rawVolume, a.tradeStatus, a.lastSettlementPrice, a.settlementPrice, a.iopv, a.askPrice,
                             a.bidPrice, a.askVolume, a.bidVolume, a.lastPriceAlt));
    const D d;
    EXPECT_TRUE(standInOrder(d.timetag, d.lastPrice, d.open, d.high, d.low, d.volume, d.tradeStatus, d.lastClose,
                             d.lastSettlementPrice, d.settlementPrice, d.iopv, d.askPrice, d.askVolume, d.bidPrice,
                             d.bidVolume, d.lastPriceAlt));
    const OrderData o;
    EXPECT_TRUE(standInOrder(o.timetag, o.price, o.volume, o.seq, o.orderKind, o.bsFlag));
    const TransactionData t;
    EXPECT_TRUE(standInOrder(t.timetag, t.price, t.volume, t.buySeq, t.sellSeq, t.tradeFlag, t.transKind));
    const LevelOrderData q;
    EXPECT_TRUE(standInOrder(q.timetag, q.bidPrice, q.bidQueue, q.askPrice, q.askQueue));
    const T l;
    EXPECT_TRUE(
        standInOrder(l.timetag, l.bidPrices, l.bidVolumes, l.bidNumbers, l.askPrices, l.askVolumes, l.askNumbers));
    const C c;
    EXPECT_TRUE(standInOrder(c.buyOrderCount, c.buyHuge, c.buyBig, c.buyMiddle, c.buySmall, c.sellOrderCount,
                             c.sellHuge, c.sellBig, c.sellMiddle, c.sellSmall));
    const QuoteAux x;
    EXPECT_TRUE(standInOrder(x.timetag, x.bidAveragePrice, x.totalBidVolume, x.askAveragePrice, x.totalAskVolume));
    const I i;
    EXPECT_TRUE(standInOrder(i.market, i.code, i.name, i.lastClose, i.upStopPrice, i.downStopPrice,
                             i.zeroPriceThreshold, i.classBits, i.listingFlags));
    const TC::CFormulaParam p;
    EXPECT_TRUE(standInOrder(p.subscriptionId, p.market, p.stockCode, p.rangeFlags, p.dataName, p.beginTime, p.endTime,
                             p.period));
    const TC::MetaCacheDataWrapper b;
    EXPECT_TRUE(standInOrder(b.records, b.market, b.stockCode));
}

template <class Record>
bool isA(const QuoterBasePtr& record)
{
    return std::dynamic_pointer_cast<Record>(record) != nullptr;
}

TEST(Records, shouldPassAsLevelOneSnapshotWhenBrokerDelivers)
{
    const QuoterBasePtr record = std::make_shared<zolv::BrovanQuoterAllData>();
    EXPECT_TRUE(isA<A>(record));
    EXPECT_FALSE(isA<D>(record));
}

TEST(Records, shouldBeToldApartWhenTypesDiffer)
{
    EXPECT_FALSE(isA<TransactionData>(std::make_shared<OrderData>()));
    EXPECT_FALSE(isA<A>(std::make_shared<D>()));
    EXPECT_FALSE(isA<T>(std::make_shared<LevelOrderData>()));
}

TEST(Records, shouldShareOneSlotWhenTickPriceIsReadAsLastPrice)
{
    const std::shared_ptr<OrderData> order = tests::order(1).buy(10.02);
    EXPECT_EQ(order->price, 10.02);
    EXPECT_EQ(order->lastPrice, 10.02);
    static_assert(sizeof(QuoterBase) == sizeof(void*) + sizeof(__int64) + sizeof(double));
}

TEST(Records, shouldHaveNothingInThemWhenNew)
{
    const D depth;
    EXPECT_EQ(depth.timetag, 0);
    EXPECT_EQ(depth.lastPrice, 0);
    for (int level = 0; level < 10; ++level) {
        EXPECT_EQ(depth.askPrice[level], 0);
        EXPECT_EQ(depth.bidVolume[level], 0);
    }
}

TEST(TimeSeq, shouldLieBehindEveryTimeWhenOpenEnded)
{
    EXPECT_GT(TimeSeq::TIME_LASTED.time, tests::timeOf("23:59:59"));
    EXPECT_FALSE(TimeSeq::TIME_LASTED == TimeSeq{});
}

TEST(InstrumentDetail, shouldAnswerNoneWhenFieldIsUnknown)
{
    const I detail;
    EXPECT_EQ(detail.getIntField(2022), 2147483647);
    for (const int id : {2008, 2009, 0, -1})
        EXPECT_EQ(detail.getIntField(id), 0) << id;
    EXPECT_EQ(detail.getDoubleField(3016), 0);
}

} // namespace
