#include "Common/strings.h"
#include "datasource/datacenter.h"
#include "Formula/stockmanager.h"
#include "net/rpcengine.h"
#include "standin/terminal.h"
#include "utils/logger.h"
#include "utils/stockkey.h"
#include "ztservice/stocktypecenter.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <future>
#include <stdexcept>

namespace {

template <class Service>
boost::shared_ptr<Service> service()
{
    return utils::CSingletonT<Service>::instance();
}

} // namespace

TEST(Terminal, shouldRefuseASecondOneWhenOneExists)
{
    standin::Terminal first;
    EXPECT_THROW(standin::Terminal(), std::logic_error);
    standin::InstrumentDescription stock;
    stock.market = "SZ";
    stock.code = "000001";
    first.instruments.add(stock);
    EXPECT_THROW(standin::Terminal(), std::logic_error);
    EXPECT_TRUE(service<TC::CStockManager>()->getInstrumentDetail("SZ", "000001"));
}

TEST(Terminal, shouldLeaveNothingWhenGone)
{
    {
        standin::Terminal terminal;
        standin::InstrumentDescription stock;
        stock.market = "SZ";
        stock.code = "000001";
        stock.types = {277};
        stock.isIndex = true;
        terminal.instruments.add(stock);
        terminal.instruments.setLastTradingDay(20230201);
        terminal.instruments.setLastTradingDay("HK", 20230131);
        terminal.strands.runByHand();
    }
    EXPECT_FALSE(service<TC::CStockManager>()->getInstrumentDetail("SZ", "000001"));
    EXPECT_FALSE(service<ztservice::StockTypeCenter>()->isTypedStock(277, "SZ", "000001"));
    EXPECT_FALSE(se::isIndexEx("SZ", "000001"));
    const int day = service<TC::CStockManager>()->getLastTradingDay("SZ");
    EXPECT_EQ(service<TC::CStockManager>()->getLastTradingDay("HK"), day);
    {
        standin::Terminal terminal;
        EXPECT_EQ(service<TC::CStockManager>()->getLastTradingDay("SZ"), day);
        EXPECT_THROW(terminal.strands.drain("s"), std::logic_error);
    }
}

TEST(Terminal, shouldAnswerAsOneWithoutInstrumentsWhenThereIsNone)
{
    EXPECT_FALSE(utils::g_ZTStdLogger);
    EXPECT_FALSE(
        service<TC::CStockManager>()->getInstrumentDetail(QString::fromStdString(utils::zlStockKey("SZ", "000001"))));
    EXPECT_GT(service<TC::CStockManager>()->getLastTradingDay("SZ"), 0);
    EXPECT_EQ(service<TC::CStockManager>()->getCurrentDateLastClose("key", 0), DBL_MAX);
    std::promise<void> ran;
    service<net::RPCEngine>()->getStrand("s")->post([&ran] { ran.set_value(); });
    ran.get_future().wait();
    standin::Strands().waitIdle();
}

TEST(Terminal, shouldKeepServicesWhenHeldAcrossARelease)
{
    const auto held = service<TC::CStockManager>();
    EXPECT_EQ(held, service<TC::CStockManager>());
    utils::CSingletonT<TC::CStockManager>::release();
    EXPECT_NE(held, service<TC::CStockManager>());
    standin::Terminal terminal;
    standin::InstrumentDescription stock;
    stock.market = "SZ";
    stock.code = "000001";
    const auto added = terminal.instruments.add(stock);
    EXPECT_EQ(held->getInstrumentDetail("SZ", "000001"), added);
}

TEST(Strings, shouldReadUtf8WhenGiven)
{
    EXPECT_EQ(ZP::sToQs("贵州茅台"), QString::fromUtf16(u"贵州茅台"));
    EXPECT_EQ(ZP::sToQs(""), "");
    EXPECT_EQ(ZP::sToQs("a\xff"), QString("a") + QChar(QChar::ReplacementCharacter));
    EXPECT_EQ(ZP::sToQs(std::string("a\0b", 3)).size(), 3);
}
