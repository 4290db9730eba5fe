// Everything that is switched, added or written while others ask.

#include "datasource/datacenter.h"
#include "Env/appconfig.h"
#include "Formula/formulamanager.h"
#include "Formula/stockmanager.h"
#include "IndexUtils/instrumentdetails.h"
#include "luawrapper/luamodulectrl.h"
#include "standin/terminal.h"
#include "User/userconfig.h"
#include "utils/logger.h"
#include "ztservice/instrumentdetail.h"
#include "ztservice/stocktypecenter.h"

#include <gtest/gtest.h>
#include <log4cxx/level.h>

#include <atomic>
#include <functional>
#include <latch>
#include <set>
#include <thread>
#include <vector>

namespace {

constexpr int kRounds = 2000;

// Runs all jobs at the same time, each on a thread of its own.
void atOnce(const std::vector<std::function<void()>>& jobs)
{
    std::latch start(static_cast<std::ptrdiff_t>(jobs.size()));
    std::vector<std::thread> threads;
    for (const auto& job : jobs) {
        threads.emplace_back([&start, &job] {
            start.arrive_and_wait();
            job();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

template <class Service>
boost::shared_ptr<Service> service()
{
    return utils::CSingletonT<Service>::instance();
}

standin::InstrumentDescription stock(int close)
{
    standin::InstrumentDescription description;
    description.market = "SZ";
    description.code = "000001";
    description.lastClose = close;
    description.types = {close};
    description.doubleFields = {{3002, static_cast<double>(close)}};
    return description;
}

} // namespace

TEST(ConcurrentAnswers, shouldAnswerWhenSwitchedAtTheSameTime)
{
    standin::Terminal terminal;
    const auto flip = [&] {
        for (int i = 0; i < kRounds; ++i) {
            const bool on = i % 2 == 0;
            terminal.answers.setSignedIn(on);
            terminal.answers.setUserBrovanQuoteMode(on);
            terminal.answers.setBoardNewRules(on);
            terminal.answers.setNewBondsAuth(on);
            terminal.answers.setDataCenterBrovanQuoteMode(on);
            terminal.answers.setClientType(i % 4);
            terminal.answers.setModule("m", on);
            terminal.answers.setOwnIndexMarket(on ? "CICC" : "a market with a longer name");
        }
    };
    const auto ask = [] {
        int yes = 0;
        for (int i = 0; i < kRounds; ++i) {
            if (const TC::CUserConfig* const config = TC::getUserConfig())
                yes += config->isBrovanQuoteMode() + config->isBoardNewRules() + config->hasNewBondsAuth();
            yes += se::DataCenter::isBrovanQuoteMode() + se::isCICCIndex("CICC") +
                   luawrapper::LuaModuleCtrl::checkModule("m") + TC::CAppConfig::isClientType(TC::CLIENT_TYPE_SDK);
        }
        EXPECT_LE(yes, 7 * kRounds);
    };
    atOnce({flip, ask, ask, flip});
    EXPECT_EQ(TC::getUserConfig(), nullptr);
    EXPECT_FALSE(luawrapper::LuaModuleCtrl::checkModule("m"));
}

TEST(ConcurrentInstruments, shouldGiveWholeRecordsWhenReplacedAtTheSameTime)
{
    standin::Terminal terminal;
    terminal.instruments.add(stock(1));
    const auto replace = [&] {
        for (int i = 1; i <= kRounds; ++i) {
            terminal.instruments.add(stock(i));
            terminal.instruments.setLastTradingDay("SZ", 20230101 + i % 28);
        }
    };
    const auto ask = [] {
        for (int i = 0; i < kRounds; ++i) {
            const auto detail = service<TC::CStockManager>()->getInstrumentDetail("SZ", "000001");
            ASSERT_TRUE(detail);
            ASSERT_EQ(detail->getDoubleField(3002), detail->lastClose);
            ASSERT_EQ(TC::getDetailPriceTick(detail), 0.01);
            service<ztservice::StockTypeCenter>()->isTypedStock(1, "SZ", "000001");
            ASSERT_GT(service<TC::CStockManager>()->getLastTradingDay("SZ"), 0);
        }
    };
    atOnce({replace, ask, ask});
}

TEST(ConcurrentLog, shouldKeepEveryLineWhenWrittenFromSeveralThreads)
{
    standin::Terminal terminal;
    const auto write = [](int writer) {
        const log4cxx::LoggerPtr logger = utils::g_ZTStdLogger;
        for (int i = 0; i < kRounds; ++i) {
            if (logger->getEffectiveLevel()->toInt() <= 20000)
                logger->forcedLog(log4cxx::Level::toLevel(20000), std::to_string(writer * kRounds + i),
                                  LOG4CXX_LOCATION);
        }
    };
    atOnce({[&write] { write(0); }, [&write] { write(1); }, [&write] { write(2); },
            [&terminal] {
                for (int i = 0; i < 20; ++i)
                    EXPECT_LE(terminal.log.lines().size(), 3U * kRounds);
            }});
    std::set<std::string> texts;
    for (const auto& line : terminal.log.lines())
        texts.insert(line.text);
    EXPECT_EQ(texts.size(), 3U * kRounds);
}

TEST(ConcurrentSingletons, shouldBeOneObjectWhenAskedForAtOnce)
{
    utils::CSingletonT<ztservice::StockTypeCenter>::release();
    std::vector<boost::shared_ptr<ztservice::StockTypeCenter>> seen(4);
    std::vector<std::function<void()>> jobs;
    for (auto& slot : seen)
        jobs.emplace_back([&slot] { slot = service<ztservice::StockTypeCenter>(); });
    atOnce(jobs);
    for (const auto& one : seen)
        EXPECT_EQ(one, seen.front());
}

TEST(ConcurrentTradeData, shouldReachDirectReceiversWhenChangedFromSeveralThreads)
{
    standin::Terminal terminal;
    std::atomic<int> heard{0};
    const auto manager = service<TC::CFormulaManager>();
    const auto connection = QObject::connect(manager.get(), &TC::CFormulaManager::sigTradeDataChange,
                                             [&heard](const QString&) { ++heard; });
    const auto change = [&terminal] {
        for (int i = 0; i < 200; ++i)
            terminal.changeTradeData("day");
    };
    atOnce({change, change, change});
    QObject::disconnect(connection);
    EXPECT_EQ(heard, 600);
}
