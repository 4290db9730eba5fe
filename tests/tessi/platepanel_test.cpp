// The watch plate over days made by hand: its table, and its picture.

#include "standin/theme.h"
#include "tests/tessi/handmadeday.h"
#include "tests/tessi/paneltest.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <QImage>

#include <set>

#include <sys/stat.h>

namespace {

using namespace tests;

struct Sizes {
    __int64 orders, huge, big, middle, small;
};

std::shared_ptr<quoter::TransactionCount> counts(const char* clock, const Sizes& buys, const Sizes& sells)
{
    auto record = std::make_shared<quoter::TransactionCount>();
    record->timetag = timeOf(clock);
    record->buyOrderCount = buys.orders;
    record->buyHuge = buys.huge;
    record->buyBig = buys.big;
    record->buyMiddle = buys.middle;
    record->buySmall = buys.small;
    record->sellOrderCount = sells.orders;
    record->sellHuge = sells.huge;
    record->sellBig = sells.big;
    record->sellMiddle = sells.middle;
    record->sellSmall = sells.small;
    return record;
}

// In shares; the last record is of 1,000 hands.
HandmadeDay smallDay()
{
    HandmadeDay day;
    day.instrument().name = "样本";
    day << counts("09:20:00", {}, {}) << counts("09:30:00", {2, 0, 0, 0, 5000}, {1, 0, 0, 3000, 199})
        << counts("10:00:00.500", {5, 20000, 0, 10000, 6000}, {4, 0, 8000, 3000, 900})
        << counts("10:30:00", {16, 40000, 0, 12500, 7500}, {9, 10000, 20000, 9000, 1000});
    return day;
}

const char kTableAfterTheDay[] = "龙虎看盘（逐笔）  SZ 000001 样本  10:30:00\n"
                                 "\n"
                                 "direction  class  hands  share  orders  average\n"
                                 "主动买入   合计     600  60.0%      16     37.5\n"
                                 "主动买入   特大     400  40.0%\n"
                                 "主动买入   大单       0   0.0%\n"
                                 "主动买入   中单     125  12.5%\n"
                                 "主动买入   小单      75   7.5%\n"
                                 "主动卖出   合计     400  40.0%       9     44.4\n"
                                 "主动卖出   特大     100  10.0%\n"
                                 "主动卖出   大单     200  20.0%\n"
                                 "主动卖出   中单      90   9.0%\n"
                                 "主动卖出   小单      10   1.0%\n";

class PlatePanelTest : public PanelTest {
protected:
    PlatePanelTest()
        : PanelTest("plate", smallDay().recorded())
    {}

    // The picture of the plate with these options.
    QImage picture(const std::string& options) const
    {
        const Outcome run = shown("--png plate.png " + options);
        EXPECT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(run.err, "");
        return QImage(QString::fromStdString(m_scratch.path("plate.png")));
    }
};

std::set<QRgb> coloursOf(const QImage& image)
{
    std::set<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    }
    return colours;
}

QRgb panelColour(standin::Theme theme)
{
    return standin::themeTokens(theme, standin::Palette::RedUp).panel.rgb();
}

TEST_F(PlatePanelTest, shouldShowBothSidesBySizeWhenTheDayIsOver)
{
    for (const char* history :
         {"", "--history-until 09:20:00", "--history-until 10:00:00", "--history-until 23:00:00"}) {
        const Outcome run = shown(history);
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.out, kTableAfterTheDay) << history;
        EXPECT_EQ(run.err, "");
    }
}

// Small sells are 199 shares first and 900 then: one hand and nine, for the terminal counts in whole ones.
TEST_F(PlatePanelTest, shouldShowWhatWasGainedWhenATimeRangeIsGiven)
{
    EXPECT_EQ(shown("--from 09:21:00 --to 10:00:00").out, "龙虎看盘（逐笔）  SZ 000001 样本  09:30:00 to 10:00:00\n"
                                                          "\n"
                                                          "direction  class  hands  share  orders  average\n"
                                                          "主动买入   合计     310  77.9%       3    103.3\n"
                                                          "主动买入   特大     200  50.3%\n"
                                                          "主动买入   大单       0   0.0%\n"
                                                          "主动买入   中单     100  25.1%\n"
                                                          "主动买入   小单      10   2.5%\n"
                                                          "主动卖出   合计      88  22.1%       3     29.3\n"
                                                          "主动卖出   特大       0   0.0%\n"
                                                          "主动卖出   大单      80  20.1%\n"
                                                          "主动卖出   中单       0   0.0%\n"
                                                          "主动卖出   小单       8   2.0%\n");
}

TEST_F(PlatePanelTest, shouldCountBothEndsOfTheRangeWhenOneIsLeftOut)
{
    const auto total = [this](const std::string& range) {
        const auto rows = nlohmann::json::parse(shown("--format json " + range).out);
        return rows.at(0).at("hands").get<int>() + rows.at(5).at("hands").get<int>();
    };
    EXPECT_EQ(total("--from 09:20:00"), 1000) << "the first record is all zeros";
    EXPECT_EQ(total("--to 10:30:00"), 1000);
    EXPECT_EQ(total("--from 10:00:00"), 1000 - 360 - 119);
    EXPECT_EQ(total("--from 10:00:01"), 0) << "of one record nothing was gained";
    EXPECT_EQ(total("--to 10:29:59"), 360 + 119);
    EXPECT_EQ(total("--from 09:20:00 --until 10:30:00"), 360 + 119);
}

TEST_F(PlatePanelTest, shouldGiveNumbersWhenFormatIsForPrograms)
{
    const Outcome run = shown("--format csv");
    const std::string& csv = run.out;
    EXPECT_EQ(csv.substr(0, csv.find("主动买入,大单")), "direction,class,hands,share,orders,average\n"
                                                        "主动买入,合计,600,0.6,16,37.5\n"
                                                        "主动买入,特大,400,0.4,,\n");
    EXPECT_EQ(run.err, "tessi: note: 龙虎看盘（逐笔）  SZ 000001 样本  10:30:00\n");
    const auto rows = nlohmann::json::parse(shown("--format json").out);
    ASSERT_EQ(rows.size(), 10U);
    EXPECT_EQ(rows[5].dump(), R"({"average":44.4,"class":"合计","direction":"主动卖出","hands":400,"orders":9,)"
                              R"("share":0.4})");
    EXPECT_EQ(rows[9].dump(), R"({"average":null,"class":"小单","direction":"主动卖出","hands":10,"orders":null,)"
                              R"("share":0.01})");
}

TEST_F(PlatePanelTest, shouldGiveNoShareWhenNothingWasTraded)
{
    const char kRange[] = "--from 10:00:01";
    EXPECT_NE(shown(kRange).out.find("主动买入   特大       0  非法值\n"), std::string::npos) << shown(kRange).out;
    EXPECT_NE(shown(std::string("--format csv ") + kRange).out.find("\n主动买入,特大,0,,,\n"), std::string::npos);
    const Outcome json = shown(std::string("--format json ") + kRange);
    for (const auto& row : nlohmann::json::parse(json.out))
        EXPECT_TRUE(row.at("share").is_null()) << row;
    EXPECT_EQ(json.err, "tessi: note: 龙虎看盘（逐笔）  SZ 000001 样本  10:30:00 to 10:30:00\n");
}

TEST_F(PlatePanelTest, shouldColourTheBlocksWhenStdoutIsATerminal)
{
    if (!m_scratch.canHaveATerminal())
        GTEST_SKIP() << "no pseudo-terminal can be had here";
    const std::string coloured = m_scratch.onATerminal("env -u NO_COLOR", "replay day --panel plate 2>/dev/null").out;
    EXPECT_NE(coloured.find("\033[31m主动买入   特大     400  40.0%\033[0m"), std::string::npos) << coloured;
    EXPECT_NE(coloured.find("\033[32m主动卖出   小单      10   1.0%\033[0m"), std::string::npos) << coloured;
}

TEST_F(PlatePanelTest, shouldSayWhyInOneLineWhenThereAreNoCounts)
{
    HandmadeDay none;
    none << order(1).buy(10.0);
    write(none.recorded(), "none");
    const Outcome without = shownOf("none", "--png none.png");
    EXPECT_EQ(without.exitCode, 0);
    EXPECT_EQ(without.out, "direction  class  hands  share  orders  average\n");
    EXPECT_EQ(without.err, "tessi: note: the day has no stream counts\n");
    EXPECT_FALSE(QImage(QString::fromStdString(m_scratch.path("none.png"))).isNull()) << "an empty plate";

    EXPECT_EQ(shown("--until 09:20:00").err, "tessi: note: no counts had come\n");
    EXPECT_EQ(shown("--from 11:00:00").err, "tessi: note: no counts had come in that time\n");
}

TEST_F(PlatePanelTest, shouldDrawThePlateWhenAPictureIsAskedFor)
{
    struct Case {
        const char* options;
        int width, height;
    };
    for (const Case& size : {Case{"", 340, 460}, Case{"--size 400x700", 400, 700}, Case{"--scale 2", 680, 920},
                             Case{"--size 301x401 --scale 1.5", 452, 602}, Case{"--size 1x1 --scale 0.5", 1, 1}}) {
        const QImage image = picture(size.options);
        EXPECT_EQ(image.width(), size.width) << size.options;
        EXPECT_EQ(image.height(), size.height) << size.options;
        if (size.width > 1) {
            EXPECT_GT(coloursOf(image).size(), 20U) << size.options;
        }
    }
    EXPECT_EQ(shown("--png again.png").out, kTableAfterTheDay);
}

TEST_F(PlatePanelTest, shouldDrawInTheThemesColoursWhenOneIsChosen)
{
    const QImage dark = picture("");
    EXPECT_EQ(dark.pixel(1, 30), panelColour(standin::Theme::Dark)) << "beside the pie";
    EXPECT_EQ(picture("--theme dark"), dark);
    const QImage light = picture("--theme light");
    EXPECT_EQ(light.pixel(1, 30), panelColour(standin::Theme::Light));
    // The largest sector of the pie begins to the right of the top: huge buys, drawn last, stand to the right of it.
    const QRgb rise = standin::themeTokens(standin::Theme::Light, standin::Palette::RedUp).rise.rgb();
    const QRgb fall = standin::themeTokens(standin::Theme::Light, standin::Palette::RedUp).fall.rgb();
    EXPECT_EQ(light.pixel(170 + 30, 70), rise);
    EXPECT_EQ(light.pixel(170 - 12, 45), fall);

    const QImage sharp = picture("--theme light --scale 2");
    EXPECT_EQ(sharp.pixel(2 * (170 + 30), 2 * 70), rise);
    EXPECT_EQ(sharp.pixel(2 * (170 - 12), 2 * 45), fall);
    EXPECT_EQ(sharp.pixel(679, 919), panelColour(standin::Theme::Light)) << "to the last pixel";
}

TEST_F(PlatePanelTest, shouldDrawTheRangeWhenATimeRangeIsGiven)
{
    const QImage whole = picture("--from 09:20:00");
    EXPECT_EQ(whole, picture("")) << "the first record is all zeros";
    EXPECT_NE(whole, picture("--from 10:00:00"));
    EXPECT_NE(picture("--from 10:00:01"), picture("--from 10:00:00")) << "without volume there is no pie";
}

// The picture is never shown, so what a desktop chooses for its windows does not count.
TEST_F(PlatePanelTest, shouldDrawTheSamePictureWhenTheDesktopChoosesAPlatformOrAScale)
{
    ASSERT_EQ(shown("--png plate.png").exitCode, 0);
    const std::string expected = readFile(m_scratch.path("plate.png"));
    for (const char* desktop :
         {"env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM", "QT_QPA_PLATFORM=nosuch", "QT_QPA_PLATFORM=wayland",
          "env -u DISPLAY QT_QPA_PLATFORM=xcb", "QT_SCALE_FACTOR=2", "QT_SCREEN_SCALE_FACTORS=3", "QT_FONT_DPI=200"}) {
        std::filesystem::remove(m_scratch.path("plate.png"));
        const Outcome run = m_scratch.tessi("replay day --panel plate --png plate.png", desktop);
        EXPECT_EQ(run.exitCode, 0) << desktop;
        EXPECT_EQ(run.err, "") << desktop;
        EXPECT_TRUE(readFile(m_scratch.path("plate.png")) == expected) << desktop;
    }
}

TEST_F(PlatePanelTest, shouldNameTheFileWhenThePictureCannotBeWritten)
{
    std::filesystem::create_directory(m_scratch.path("folder"));
    for (const char* file : {"no/such/plate.png", "folder"}) {
        const Outcome run = shown(std::string("--png ") + file);
        EXPECT_EQ(run.exitCode, 3) << file;
        EXPECT_EQ(run.out, "") << file;
        EXPECT_EQ(run.err.find(std::string("tessi: ") + file + ": "), 0U) << run.err;
        EXPECT_EQ(run.err.find('\n'), run.err.size() - 1) << run.err;
    }
}

TEST_F(PlatePanelTest, shouldReplaceNothingButARegularFileWhenThePictureIsWritten)
{
    const std::string pipe = m_scratch.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_symlink("pipe", m_scratch.path("link"));
    for (const char* file : {"pipe", "link"}) {
        const Outcome run = shown(std::string("--png ") + file);
        EXPECT_EQ(run.exitCode, 3) << file;
        EXPECT_EQ(run.out, "") << file;
        EXPECT_EQ(run.err, std::string("tessi: ") + file + ": is no regular file\n");
        EXPECT_TRUE(std::filesystem::is_fifo(pipe)) << file;
    }
    EXPECT_TRUE(std::filesystem::is_symlink(m_scratch.path("link")));

    writeFile(m_scratch.path("old.png"), "old");
    EXPECT_EQ(shown("--png old.png").exitCode, 0);
    EXPECT_NE(readFile(m_scratch.path("old.png")), "old");
}

TEST_F(PlatePanelTest, shouldFailWithUsageWhenOptionsDoNotFit)
{
    struct Case {
        const char* arguments;
        const char* fault;
    };
    const char kSize[] = "is no size WIDTHxHEIGHT, each from 1 to 2000";
    const Case cases[] = {{"--png p.png --size 340", kSize},
                          {"--png p.png --size 340x", kSize},
                          {"--png p.png --size x460", kSize},
                          {"--png p.png --size 0x460", kSize},
                          {"--png p.png --size -1x460", kSize},
                          {"--png p.png --size 340x2001", kSize},
                          {"--png p.png --size 340x460x2", kSize},
                          {"--png p.png --size '340 x460'", kSize},
                          {"--png p.png --size 99999999999x1", kSize},
                          {"--png p.png --scale 0.4", "0.4 is no scale from 0.5 to 4"},
                          {"--png p.png --scale 5", "5 is no scale from 0.5 to 4"},
                          {"--png p.png --scale big", "--scale"},
                          {"--png p.png --scale 2x", "--scale"},
                          {"--png p.png --theme blue", "--theme"},
                          {"--png ''", "--png"},
                          {"--size 340x460", "--size, --theme and --scale need --png"},
                          {"--theme light", "need --png"},
                          {"--scale 2", "need --png"},
                          {"--at 10:00:00", "--panel plate takes no --at"},
                          {"--from 10:00:01 --to 10:00:00", "--from is later than --to"}};
    for (const auto& [arguments, fault] : cases) {
        const Outcome run = shown(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments;
        EXPECT_EQ(run.out, "") << arguments;
        EXPECT_NE(run.err.find(fault), std::string::npos) << arguments << "\n" << run.err;
    }
    EXPECT_FALSE(std::filesystem::exists(m_scratch.path("p.png")));
    EXPECT_NE(m_scratch.tessi("replay day --panel book --png p.png").err.find("--panel book takes no --png"),
              std::string::npos);
    EXPECT_NE(m_scratch.tessi("replay day --theme light").err.find("a summary takes no --size, --theme and --scale"),
              std::string::npos);
}

} // namespace
