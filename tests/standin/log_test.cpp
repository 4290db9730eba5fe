#include "standin/terminal.h"
#include "utils/logger.h"

#include <gtest/gtest.h>
#include <log4cxx/level.h>
#include <log4cxx/spi/location/locationinfo.h>

#include <clocale>
#include <stdexcept>

using utils::g_ZTStdLogger;

namespace {

void write(int level, const std::string& text, const char* function = "int TC::Model::callback(int, int)")
{
    g_ZTStdLogger->forcedLog(log4cxx::Level::toLevel(level), text,
                             log4cxx::spi::LocationInfo("dir/model.cpp", "model.cpp", function, 42));
}

} // namespace

TEST(Log, shouldKeepAllOfALineWhenWritten)
{
    standin::Terminal terminal;
    write(20000, "[0x1] [f] data return");
    write(40000, "second");
    const auto lines = terminal.log.lines();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].level, 20000);
    EXPECT_EQ(lines[0].text, "[0x1] [f] data return");
    EXPECT_EQ(lines[0].file, "dir/model.cpp");
    EXPECT_EQ(lines[0].function, "TC::Model::callback");
    EXPECT_EQ(lines[0].line, 42);
    EXPECT_EQ(lines[1].level, 40000);
    EXPECT_EQ(lines[1].text, "second");
}

TEST(Log, shouldNameFunctionWhenItHasNoClassOrNoArguments)
{
    standin::Terminal terminal;
    write(20000, "", "void release()");
    write(20000, "", "TC::Model::callback");
    write(20000, "", "callback");
    const auto lines = terminal.log.lines();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].function, "release");
    EXPECT_EQ(lines[1].function, "TC::Model::callback");
    EXPECT_EQ(lines[2].function, "callback");
}

TEST(Log, shouldKeepChineseTextWhenLocaleIsUtf8)
{
    standin::Terminal terminal;
    const std::string before = std::setlocale(LC_CTYPE, nullptr);
    ASSERT_TRUE(std::setlocale(LC_CTYPE, "C.UTF-8"));
    write(20000, "贵州茅台");
    std::setlocale(LC_CTYPE, before.c_str());
    EXPECT_EQ(terminal.log.lines().at(0).text, "贵州茅台");
}

TEST(Log, shouldBeOnAtInfoThroughItsParentWhenNew)
{
    standin::Terminal terminal;
    ASSERT_TRUE(g_ZTStdLogger);
    EXPECT_FALSE(g_ZTStdLogger->getLevel());
    EXPECT_EQ(g_ZTStdLogger->getEffectiveLevel()->toInt(), 20000);
    EXPECT_TRUE(terminal.log.lines().empty());
}

TEST(Log, shouldShowLevelWhenSet)
{
    standin::Terminal terminal;
    for (const int level : {5000, 10000, 20000, 30000, 40000, 50000}) {
        terminal.log.setLevel(level);
        EXPECT_EQ(g_ZTStdLogger->getEffectiveLevel()->toInt(), level);
        EXPECT_EQ(g_ZTStdLogger->isInfoEnabled(), level <= 20000);
        EXPECT_FALSE(g_ZTStdLogger->getLevel());
    }
    EXPECT_THROW(terminal.log.setLevel(20001), std::invalid_argument);
}

TEST(Log, shouldBeNullWhenUnsetAndBackWhenSet)
{
    standin::Terminal terminal;
    write(20000, "before");
    terminal.log.unset();
    EXPECT_FALSE(g_ZTStdLogger);
    terminal.log.set();
    write(20000, "after");
    EXPECT_EQ(terminal.log.lines().size(), 2U);
    terminal.log.forget();
    EXPECT_TRUE(terminal.log.lines().empty());
}

TEST(Log, shouldBeNullAndForgottenWhenTerminalIsGone)
{
    {
        standin::Terminal terminal;
        terminal.log.setLevel(40000);
        write(20000, "old");
    }
    EXPECT_FALSE(g_ZTStdLogger);
    standin::Terminal terminal;
    EXPECT_TRUE(terminal.log.lines().empty());
    EXPECT_EQ(g_ZTStdLogger->getEffectiveLevel()->toInt(), 20000);
}
