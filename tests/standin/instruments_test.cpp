#include "datasource/datacenter.h"
#include "Formula/stockmanager.h"
#include "IndexUtils/instrumentdetails.h"
#include "standin/terminal.h"
#include "utils/stockkey.h"
#include "utils/timeutils.h"
#include "ztservice/instrumentdetail.h"
#include "ztservice/stocktypecenter.h"

#include <gtest/gtest.h>
#include <QDateTime>

#include <cfloat>
#include <stdexcept>

namespace {

using standin::InstrumentDescription;

boost::shared_ptr<TC::CStockManager> manager()
{
    return utils::CSingletonT<TC::CStockManager>::instance();
}

bool isTyped(int type, const std::string& market, const std::string& code)
{
    return utils::CSingletonT<ztservice::StockTypeCenter>::instance()->isTypedStock(type, market, code);
}

InstrumentDescription stock(const std::string& market, const std::string& code)
{
    InstrumentDescription description;
    description.market = market;
    description.code = code;
    return description;
}

int midnight(int year, int month, int day)
{
    return static_cast<int>(utils::timeToMilliseconds(year, month, day, 0, 0, 0) / 1000);
}

} // namespace

TEST(Instruments, shouldGiveSameRecordByKeyAndByMarketAndCodeWhenAdded)
{
    standin::Terminal terminal;
    const auto added = terminal.instruments.add(stock("SZ", "000001"));
    EXPECT_EQ(manager()->getInstrumentDetail("SZ", "000001"), added);
    EXPECT_EQ(manager()->getInstrumentDetail(QString::fromStdString(utils::zlStockKey("SZ", "000001"))), added);
    EXPECT_EQ(manager()->getInstrumentDetail(TC::getDetailQsKey(added)), added);
}

TEST(Instruments, shouldGiveNullWhenUnknown)
{
    standin::Terminal terminal;
    terminal.instruments.add(stock("SZ", "000001"));
    for (const auto& [market, code] : {std::pair{"SH", "000001"}, {"SZ", "000002"}, {"S", "Z000001"}, {"", ""}}) {
        EXPECT_EQ(manager()->getInstrumentDetail(market, code), nullptr) << market << " " << code;
        EXPECT_EQ(manager()->getInstrumentDetail(QString::fromStdString(utils::zlStockKey(market, code))), nullptr);
    }
    EXPECT_EQ(manager()->getInstrumentDetail(QString()), nullptr);
}

TEST(Instruments, shouldKeepKeysApartWhenMarketsAndCodesLookAlike)
{
    standin::Terminal terminal;
    const auto odd = terminal.instruments.add(stock("A", "B:C"));
    EXPECT_EQ(manager()->getInstrumentDetail("A", "B:C"), odd);
    EXPECT_EQ(manager()->getInstrumentDetail("A:B", "C"), nullptr);
    EXPECT_NE(utils::zlStockKey("S", "HA"), utils::zlStockKey("SH", "A"));
}

TEST(Instruments, shouldRefuseWhenMarketOrCodeIsUnusable)
{
    standin::Terminal terminal;
    EXPECT_THROW(terminal.instruments.add(stock("", "000001")), std::invalid_argument);
    EXPECT_THROW(terminal.instruments.add(stock("SZ", "")), std::invalid_argument);
    EXPECT_THROW(terminal.instruments.add(stock("S:Z", "000001")), std::invalid_argument);
}

TEST(Instruments, shouldCopyAllRecordFieldsWhenAdded)
{
    standin::Terminal terminal;
    InstrumentDescription description = stock("SH", "600519");
    description.name = "贵州茅台";
    description.lastClose = 1844.97;
    description.upStopPrice = 2029.47;
    description.downStopPrice = 1660.47;
    description.zeroPriceThreshold = 0.005;
    description.classBits = 4U << 20;
    description.listingFlags = 1 << 19;
    description.intFields = {{2008, 7}};
    description.doubleFields = {{3015, 1.25e9}};
    const auto detail = terminal.instruments.add(description);
    EXPECT_EQ(detail->market, "SH");
    EXPECT_EQ(detail->code, "600519");
    EXPECT_EQ(detail->name, "贵州茅台");
    EXPECT_EQ(detail->lastClose, 1844.97);
    EXPECT_EQ(detail->upStopPrice, 2029.47);
    EXPECT_EQ(detail->downStopPrice, 1660.47);
    EXPECT_EQ(detail->zeroPriceThreshold, 0.005);
    EXPECT_EQ(detail->classBits, 4U << 20);
    EXPECT_EQ(detail->listingFlags, 1 << 19);
    EXPECT_EQ(detail->getIntField(2008), 7);
    EXPECT_EQ(detail->getIntField(2009), 0);
    EXPECT_EQ(detail->getIntField(2022), 2147483647);
    EXPECT_EQ(detail->getDoubleField(3015), 1.25e9);
    EXPECT_EQ(detail->getDoubleField(3016), 0);
}

TEST(Instruments, shouldLeaveOldRecordToItsHoldersWhenDescribedAnew)
{
    standin::Terminal terminal;
    InstrumentDescription description = stock("SZ", "000001");
    description.lastClose = 10;
    const auto old = terminal.instruments.add(description);
    description.lastClose = 11;
    const auto fresh = terminal.instruments.add(description);
    EXPECT_EQ(old->lastClose, 10);
    EXPECT_EQ(manager()->getInstrumentDetail("SZ", "000001"), fresh);
    EXPECT_EQ(fresh->lastClose, 11);
}

TEST(Instruments, shouldAnswerTypesOfExactlyThatMarketAndCodeWhenAsked)
{
    standin::Terminal terminal;
    InstrumentDescription description = stock("SZ", "300446");
    description.types = {277, 10006};
    terminal.instruments.add(description);
    terminal.instruments.add(stock("SH", "300446"));
    EXPECT_TRUE(isTyped(277, "SZ", "300446"));
    EXPECT_TRUE(isTyped(10006, "SZ", "300446"));
    EXPECT_FALSE(isTyped(101, "SZ", "300446"));
    EXPECT_FALSE(isTyped(277, "SH", "300446"));
    EXPECT_FALSE(isTyped(277, "SZ", "300447"));
}

TEST(Instruments, shouldAnswerLinksAndIndexOfThatInstrumentWhenAsked)
{
    standin::Terminal terminal;
    InstrumentDescription index = stock("SH", "000001");
    index.isIndex = true;
    terminal.instruments.add(index);
    InstrumentDescription linked = stock("SZ", "000001");
    linked.hasSGT = true;
    terminal.instruments.add(linked);
    InstrumentDescription receipt = stock("SH", "601688");
    receipt.hasHGT = true;
    receipt.gdrCode = "HTSC";
    terminal.instruments.add(receipt);
    EXPECT_TRUE(se::isIndexEx("SH", "000001"));
    EXPECT_FALSE(se::isIndexEx("SZ", "000001"));
    EXPECT_FALSE(se::isIndexEx("SH", "000002"));
    EXPECT_TRUE(manager()->hasSGT("SZ", "000001"));
    EXPECT_FALSE(manager()->hasHGT("SZ", "000001"));
    EXPECT_TRUE(manager()->hasHGT("SH", "601688"));
    EXPECT_FALSE(manager()->hasSGT("SH", "601688"));
    EXPECT_FALSE(manager()->hasHGT("SH", "none"));
    EXPECT_FALSE(manager()->hasSGT("SH", "none"));
    EXPECT_EQ(manager()->getGDRCode("601688"), "HTSC");
    EXPECT_EQ(manager()->getGDRCode("000001"), "");
    EXPECT_EQ(manager()->getGDRCode("none"), "");
}

TEST(Instruments, shouldFindReceiptWhenAnotherMarketHasTheCodeWithoutOne)
{
    standin::Terminal terminal;
    terminal.instruments.add(stock("BJ", "601688"));
    InstrumentDescription receipt = stock("SH", "601688");
    receipt.gdrCode = "HTSC";
    terminal.instruments.add(receipt);
    EXPECT_EQ(manager()->getGDRCode("601688"), "HTSC");
}

TEST(InstrumentDetails, shouldGiveEmptyAnswersWhenInstrumentIsNull)
{
    EXPECT_EQ(TC::getDetailMarket(nullptr), "");
    EXPECT_EQ(TC::getDetailCode(nullptr), "");
    EXPECT_EQ(TC::getDetailKey(nullptr), "");
    EXPECT_EQ(TC::getDetailQsMarket(nullptr), "");
    EXPECT_EQ(TC::getDetailQsCode(nullptr), "");
    EXPECT_EQ(TC::getDetailQsKey(nullptr), "");
    EXPECT_EQ(TC::getDetailLastClose(nullptr), DBL_MAX);
    EXPECT_EQ(TC::getDetailPriceTick(nullptr), 0.001);
}

TEST(InstrumentDetails, shouldReadRecordAndDescriptionWhenInstrumentIsGiven)
{
    standin::Terminal terminal;
    InstrumentDescription description = stock("IF", "IF2402");
    description.lastClose = 3500.2;
    description.priceTick = 0.2;
    const auto detail = terminal.instruments.add(description);
    EXPECT_EQ(TC::getDetailMarket(detail), "IF");
    EXPECT_EQ(TC::getDetailCode(detail), "IF2402");
    EXPECT_EQ(TC::getDetailKey(detail), utils::zlStockKey("IF", "IF2402"));
    EXPECT_EQ(TC::getDetailQsMarket(detail), "IF");
    EXPECT_EQ(TC::getDetailQsCode(detail), "IF2402");
    EXPECT_EQ(TC::getDetailLastClose(detail), 3500.2);
    EXPECT_EQ(TC::getDetailPriceTick(detail), 0.2);
    EXPECT_EQ(TC::getDetailPriceTick(std::make_shared<ztservice::CInstrumentDetail>()), 0.001);
}

TEST(TradingDays, shouldPreferMarketOverAllMarketsWhenBothAreSet)
{
    standin::Terminal terminal;
    EXPECT_EQ(manager()->getLastTradingDay("SZ"), midnight(2024, 1, 2));
    terminal.instruments.setLastTradingDay(20230201);
    terminal.instruments.setLastTradingDay("HK", 20230131);
    EXPECT_EQ(manager()->getLastTradingDay("SZ"), midnight(2023, 2, 1));
    EXPECT_EQ(manager()->getLastTradingDay("HK"), midnight(2023, 1, 31));
    EXPECT_EQ(QDateTime::fromTime_t(static_cast<unsigned>(manager()->getLastTradingDay("SZ")))
                  .toString("yyyy-MM-dd hh:mm:ss"),
              "2023-02-01 00:00:00");
}

TEST(TradingDays, shouldRefuseWhenNumberIsNoDate)
{
    standin::Terminal terminal;
    for (const int noDate : {0, -1, 20230229, 20231301, 20230100, 19691231, 20380120, 675360102, INT_MAX, INT_MIN})
        EXPECT_THROW(terminal.instruments.setLastTradingDay(noDate), std::invalid_argument) << noDate;
    for (const int date : {19700101, 20240229, 20380119})
        EXPECT_NO_THROW(terminal.instruments.setLastTradingDay(date)) << date;
}

TEST(DateCloses, shouldTellDaysApartWhenAskedByKeyOrInstrument)
{
    standin::Terminal terminal;
    terminal.instruments.setLastTradingDay(20230201);
    InstrumentDescription description = stock("SH", "600519");
    description.lastClose = 1844.97;
    description.lastCloses = {{midnight(2023, 1, 31), 1802.9}};
    const auto detail = terminal.instruments.add(description);
    const QString key = TC::getDetailQsKey(detail);
    EXPECT_EQ(manager()->getCurrentDateLastClose(key, midnight(2023, 2, 1)), 1844.97);
    EXPECT_EQ(manager()->getCurrentDateLastClose(key, midnight(2023, 1, 31)), 1802.9);
    EXPECT_EQ(manager()->getCurrentDateLastClose(key, midnight(2023, 1, 30)), DBL_MAX);
    EXPECT_EQ(manager()->getCurrentDateLastClose(detail, midnight(2023, 1, 31)), 1802.9);
    EXPECT_EQ(manager()->getCurrentDateLastClose(detail, midnight(2023, 2, 1)), 1844.97);
    EXPECT_EQ(manager()->getCurrentDateLastClose("none", midnight(2023, 2, 1)), DBL_MAX);
    EXPECT_EQ(manager()->getCurrentDateLastClose(std::shared_ptr<ztservice::CInstrumentDetail>(), midnight(2023, 2, 1)),
              DBL_MAX);
}

TEST(DateCloses, shouldPreferDatedCloseWhenLastTradingDayHasOne)
{
    standin::Terminal terminal;
    terminal.instruments.setLastTradingDay(20230201);
    InstrumentDescription description = stock("SH", "600519");
    description.lastClose = 10;
    description.lastCloses = {{midnight(2023, 2, 1), 11}};
    EXPECT_EQ(manager()->getCurrentDateLastClose(terminal.instruments.add(description), midnight(2023, 2, 1)), 11);
}
