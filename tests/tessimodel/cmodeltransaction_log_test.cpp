#include "indexui/tessimodel/cmodeltransaction.h"
#include "standin/terminal.h"
#include "tests/support/instruments.h"
#include "tests/support/logtext.h"
#include "tests/support/records.h"

#include <gtest/gtest.h>

namespace {

using namespace tests;

std::string line(const TC::CModelTransaction& model, const std::string& function, const std::string& message)
{
    return logLine(&model, "[" + function + "] " + message);
}

class TransactionLogTest : public ::testing::Test {
protected:
    TransactionLogTest() { terminal.instruments.add(stock("SZ", "000001")); }

    std::vector<std::string> lines() const { return logTexts(terminal); }

    standin::Terminal terminal;
};

TEST_F(TransactionLogTest, shouldWriteSizeBeforeEmptyingWhenHistoryBegins)
{
    TC::CModelTransaction model;
    model.setStock(keyOf("SZ", "000001"));
    model.quoterCallBack(0, 0, {level1().last(10).volume(5), level1().last(10).volume(6)});
    model.quoterCallBack(0, 0, {});
    model.quoterCallBack(0, 3, {level1().last(10).volume(5), level1().last(10).volume(6)});
    model.quoterCallBack(0, 1, {level1().last(10).volume(7)});

    const std::string key = keyOf("SZ", "000001").toStdString();
    const std::string function = "TC::CModelTransaction::quoterCallBack";
    EXPECT_EQ(lines(),
              (std::vector<std::string>{line(model, function, function + " " + key + " data clear, m_datas size:0"),
                                        line(model, function, function + " " + key + " data clear, m_datas size:2")}));
}

TEST_F(TransactionLogTest, shouldWriteWhenClearedAlsoWithoutInstrument)
{
    TC::CModelTransaction model;
    model.clear();
    const std::string function = "TC::CModelTransaction::clear";
    EXPECT_EQ(lines(), std::vector<std::string>{line(model, function, function + "  data clear, m_datas size:0")});
}

TEST_F(TransactionLogTest, shouldWriteAsInClearWhenDestroyed)
{
    std::string expected;
    {
        TC::CModelTransaction model;
        model.setStock(keyOf("SZ", "000001"));
        model.quoterCallBack(0, 3, {level1().last(10).volume(5)});
        const std::string function = "TC::CModelTransaction::clear";
        expected =
            line(model, function, function + " " + keyOf("SZ", "000001").toStdString() + " data clear, m_datas size:1");
        EXPECT_TRUE(lines().empty());
    }
    EXPECT_EQ(lines(), std::vector<std::string>{expected});
}

TEST_F(TransactionLogTest, shouldTellSourceAndLevelWhenLineIsWritten)
{
    TC::CModelTransaction model;
    model.clear();
    ASSERT_EQ(terminal.log.lines().size(), 1u);
    const auto written = terminal.log.lines().front();
    EXPECT_EQ(written.level, 20000);
    EXPECT_NE(written.file.find("cmodeltransaction.cpp"), std::string::npos) << written.file;
    EXPECT_NE(written.function.find("CModelTransaction::clear"), std::string::npos) << written.function;
    EXPECT_GT(written.line, 0);
}

TEST_F(TransactionLogTest, shouldWriteNothingWhenLogIsOffOrUnset)
{
    terminal.log.setLevel(30000);
    {
        TC::CModelTransaction model;
        model.clear();
    }
    terminal.log.setLevel(20000);
    terminal.log.unset();
    {
        TC::CModelTransaction model;
        model.clear();
    }
    terminal.log.set();
    EXPECT_TRUE(lines().empty());
}

} // namespace
