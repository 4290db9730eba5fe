#include "standin/answers.h"
#include "tests/support/offscreen.h"
#include "tests/tessimodel/platelayout.h"
#include "tests/tessimodel/platenotes.h"
#include "tests/tessimodel/platestate.h"

#include <gmock/gmock.h>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <future>
#include <ostream>
#include <string>
#include <vector>

namespace {

using namespace tests;

constexpr char kNormal[] = "fnt_default_normal";
constexpr char kHeavy[] = "fnt_default_normal_heavy";
constexpr char kGround[] = "ic_clr_watchplate_bg";
constexpr char kText[] = "ic_clr_entrust_default_text";

// Keys of text colours that depend on the edition of the client.
struct EditionKeys {
    std::string heading = kText;
    std::string blockTitle = kText;
};

// A plate of one size with one state of the day.
struct Case {
    std::string name;
    QSize size;
    int textHeight;
    PlateState state;
    EditionKeys keys = {};
};

std::ostream& operator<<(std::ostream& out, const Case& plate)
{
    return out << plate.name;
}

QString lineKey(int line)
{
    return QStringLiteral("ic_clr_watchplate_line%1").arg(line);
}

// The notes of a plate that begins at `origin`, one after the other as its layout rules have them.
class Expected {
public:
    Expected(const Case& plate, const QPoint& origin)
        : m_plate(plate)
        , m_layout(QRect(origin, plate.size), plate.textHeight, plate.state.traded)
    {
        fill(m_layout.title, kGround);
        centred(QStringLiteral("龙虎看盘（逐笔） "), m_layout.title, kNormal, kText);
        if (m_layout.drawsPie)
            pie();
        table();
    }

    const std::vector<std::string>& notes() const { return m_notes; }

private:
    void add(const std::string& note) { m_notes.push_back(note); }
    void fill(const QRect& rect, const std::string& key) { add(fillNote(rect, key)); }

    void centred(const QString& text, const QRect& rect, const std::string& font, const std::string& key)
    {
        const QSizeF size = noteTextSize(text, font);
        add(textNote(text, QRectF(rect).center() - QPointF(size.width() / 2, size.height() / 2), font, key));
    }

    // Beginning at `left` when `right` is no column, else ending in the column `right`.
    void inLine(const QString& text, const QRect& line, int left, int right = -1)
    {
        const QSizeF size = noteTextSize(text, kHeavy);
        const double x = right < 0 ? left : right + 1 - size.width();
        add(textNote(text, {x, QRectF(line).center().y() - size.height() / 2}, kHeavy, kText));
    }

    void pie()
    {
        add(fillNote(m_layout.pie, kGround) + " smooth");
        double from = 90;
        for (const PlateSector& sector : m_plate.state.sectors) {
            const double drawn = std::clamp(sector.degrees, -360.0, 360.0);
            add(sectorNote(m_layout.centre, m_layout.radius, from, drawn, lineKey(sector.line).toStdString()) +
                " smooth");
            from = std::fmod(from + sector.degrees, 360);
        }
    }

    void table()
    {
        fill(m_layout.table, kGround);
        const QPointF heading(m_layout.table.x(), m_layout.table.top() + (m_layout.row - m_layout.text) / 2.0);
        add(textNote(QStringLiteral("逐笔成交成交量统计"), heading, kHeavy, m_plate.keys.heading));
        block(0, QStringLiteral("主动买入"), m_plate.state.buys);
        block(1, QStringLiteral("主动卖出"), m_plate.state.sells);
    }

    void block(int number, const QString& title, const PlateBlock& shown)
    {
        add(frameNote(m_layout.titleCell(number), "ic_clr_watchplate_splitter"));
        add(frameNote(m_layout.bodyCell(number), "ic_clr_watchplate_splitter"));
        blockTitle(m_layout.titleCell(number), title);
        inLine(shown.sum, m_layout.line(number, 0), m_layout.bodyLeft());
        const QStringList names = {"特大", "大单", "中单", "小单"};
        for (int c = 0; c < 4; ++c) {
            const QRect line = m_layout.line(number, 1 + c);
            fill(m_layout.square(number, c), lineKey(number * 4 + c).toStdString());
            inLine(names[c], line, m_layout.nameLeft());
            inLine(shown.volumes[c], line, 0, m_layout.volumeRight());
            inLine(shown.ratios[c], line, 0, m_layout.ratioRight());
        }
    }

    void blockTitle(const QRect& cell, const QString& title)
    {
        const int character = m_layout.text + 2;
        const int free = cell.height() - 4 * character;
        for (int i = 0; i < 4; ++i) {
            const int top = cell.top() + (free > 0 ? free / 2 : 0) + i * character;
            centred(title.mid(i, 1), {cell.x(), top, cell.width(), character}, kHeavy, m_plate.keys.blockTitle);
        }
    }

    const Case& m_plate;
    const PlateLayout m_layout;
    std::vector<std::string> m_notes;
};

const Case kCases[] = {
    {"AsHighAsThePieIsWide", {300, 480}, 10, ordinaryState()},
    {"Wide", {640, 400}, 14, ordinaryState()},
    {"Narrow", {120, 600}, 10, ordinaryState()},
    {"AsHighAsThirteenRowsAndAPixel", {300, 170}, 10, ordinaryState()},
    {"AsHighAsThirteenRows", {300, 169}, 10, ordinaryState()},
    {"LowerThanThirteenRows", {300, 150}, 10, ordinaryState()},
    // No heading, number or share has room in its line.
    {"NarrowerThanItsTexts", {60, 480}, 10, ordinaryState()},
    {"OddSize", {301, 467}, 13, ordinaryState()},
    {"TextOfTheHeightOfALargeFont", {417, 900}, 27, ordinaryState()},
    // Four characters of 4 pixels do not fit a block of 15, and four of 3 do not fit one of 5.
    {"BlockALittleLowerThanItsTitle", {300, 200}, 2, ordinaryState()},
    {"BlockFarLowerThanItsTitle", {300, 200}, 1, ordinaryState()},
    {"SharesThatAreNoWholePercents", {300, 480}, 10, thirdsState()},
    {"WithoutVolume", {300, 480}, 10, noVolumeState()},
    {"OneSector", {300, 480}, 10, oneSectorState()},
    {"NegativeVolumes", {300, 480}, 10, negativeState()},
    {"NegativeVolumesOnly", {300, 480}, 10, takenBackState()},
    {"VolumesThatCancelOut", {300, 480}, 10, cancelledOutState()},
    {"VolumesThatNearlyCancelOut", {300, 480}, 10, nearlyCancelledOutState()},
    {"SideAboveTheRangeOfAVolume", {300, 480}, 10, sideAboveTheRangeOfAVolumeState()},
    {"AverageOfFloats", {300, 480}, 10, averageOfFloatsState()},
    {"ShareTooSmallForASector", {300, 480}, 10, tinySharesState()},
};

class WatchPlateLayout : public Offscreen, public testing::WithParamInterface<Case> {};

// What is drawn otherwise than expected of a plate that fills its widget.
std::string wrongOn(WatchPlate& plate, const Case& expected)
{
    plate.resize(expected.size);
    NotedDrawing drawing(expected.size);
    plate.render(&drawing, {}, {}, QWidget::RenderFlags());
    std::vector<std::string> notes = Expected(expected, {0, 0}).notes();
    notes.insert(notes.begin(), fillNote(QRect({0, 0}, expected.size), kGround));
    return differences(drawing.notes(), notes);
}

TEST_P(WatchPlateLayout, shouldDrawEachThingAtItsPlaceWhenPainted)
{
    const Case& shown = GetParam();
    setHeavyTextHeight(shown.textHeight);
    WatchPlate plate;
    plate.setTransactionCount({shown.state.counts});
    EXPECT_EQ(wrongOn(plate, shown), "");
    EXPECT_THAT(unknownKeys(), testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Sizes, WatchPlateLayout, testing::ValuesIn(kCases),
                         [](const auto& instance) { return instance.param.name; });

class WatchPlateEdition : public Offscreen {};

// Only the embedded edition has text colours of its own, and only for the heading and the titles of the blocks.
TEST_F(WatchPlateEdition, shouldColourHeadingAndBlockTitlesByTheEditionWhenItIsTheEmbeddedOne)
{
    standin::Answers answers;
    for (const int type : {standin::Answers::kNoClientType, 0, 1, 2, 3, 4}) {
        answers.setClientType(type);
        Case shown = {"Edition", {300, 480}, 10, ordinaryState()};
        if (type == 3)
            shown.keys = {"ic_clr_entrust_sdk_text", "ic_clr_entrust_sdk_title_text"};
        setHeavyTextHeight(shown.textHeight);
        WatchPlate plate;
        plate.setTransactionCount({shown.state.counts});
        EXPECT_EQ(wrongOn(plate, shown), "") << "edition " << type;
    }
    answers.setClientType(standin::Answers::kNoClientType);
    EXPECT_THAT(unknownKeys(), testing::IsEmpty());
}

// Before the first record there is nothing to count, whatever counts of orders there are.
TEST_F(WatchPlateEdition, shouldShowZerosWhenThereAreNoItems)
{
    setHeavyTextHeight(10);
    WatchPlate plate;
    const Case empty = {"Empty", {300, 480}, 10, {counts(), false, {}, zeroBlock(), zeroBlock()}};
    EXPECT_EQ(wrongOn(plate, empty), "");
    plate.m_data.m_buyOrderCount = 7;
    plate.m_data.m_sellOrderCount = 8;
    EXPECT_EQ(wrongOn(plate, empty), "");
}

// Numbers and names of the lines stand on one line whatever is in them; what is above them may be folded.
TEST_F(WatchPlateEdition, shouldDrawNamesAndNumbersAsOneLineWhenPainted)
{
    setHeavyTextHeight(10);
    WatchPlate plate;
    plate.setTransactionCount({ordinaryCounts()});
    NotedDrawing drawing({300, 480});
    plate.resize(300, 480);
    plate.render(&drawing, {}, {}, QWidget::RenderFlags());
    for (const QString& text : drawing.foldableTexts) {
        EXPECT_FALSE(text.endsWith('%') || text.toInt() != 0) << text.toStdString();
        EXPECT_FALSE(text.size() == 2) << text.toStdString();
    }
}

// The sectors are of one state of the data; a whole picture would keep who sets data waiting.
TEST_F(WatchPlateEdition, shouldHoldTheLockForThePieAndNotForTheTableWhenDrawn)
{
    setHeavyTextHeight(10);
    WatchPlate plate;
    plate.setTransactionCount({ordinaryCounts()});
    const auto isFree = [&plate] {
        boost::recursive_mutex& mutex = plate.m_data.m_mutex;
        return std::async(std::launch::async, [&mutex] { return mutex.try_lock() && (mutex.unlock(), true); }).get();
    };
    int lockedSectors = 0;
    int lockedBorders = 0;
    setColorListener([&](const QString& key) {
        lockedSectors += key.startsWith("ic_clr_watchplate_line") && !isFree();
        lockedBorders += key == "ic_clr_watchplate_splitter" && !isFree();
    });
    EXPECT_EQ(wrongOn(plate, {"Locked", {300, 480}, 10, ordinaryState()}), "");
    setColorListener(nullptr);
    EXPECT_GE(lockedSectors, 8);
    EXPECT_EQ(lockedBorders, 0);
}

TEST_F(WatchPlateEdition, shouldHandEventsOfTheBusOnToTheBaseWhenTheyCome)
{
    WatchPlate plate;
    int payload = 5;
    EXPECT_TRUE(plate.handleEvent(7, 2, 3, "text", &payload));
    EXPECT_EQ(lastBusEvent().text, "7 2 3 text");
    EXPECT_EQ(lastBusEvent().payload, &payload);
    EXPECT_FALSE(plate.handleEvent(8, -2, -3, "", nullptr));
    EXPECT_EQ(lastBusEvent().text, "8 -2 -3 ");
    EXPECT_EQ(lastBusEvent().payload, nullptr);
}

// A panel may draw the plate into a part of its own picture.
TEST_F(WatchPlateEdition, shouldDrawEachThingInsideTheRectangleWhenItIsAPartOfAPicture)
{
    const QRect rect(20, 30, 300, 480);
    for (const PlateState& state : {ordinaryState(), noVolumeState()}) {
        const Case part = {"Part", rect.size(), 10, state};
        setHeavyTextHeight(part.textHeight);
        WatchPlate plate;
        plate.setTransactionCount({state.counts});
        NotedDrawing drawing({400, 600});
        QPainter painter(&drawing);
        plate.m_data.draw(painter, rect);
        EXPECT_EQ(differences(drawing.notes(), Expected(part, rect.topLeft()).notes()), "");
    }
}

// What follows on the same painter is not to look other than it would.
TEST_F(WatchPlateEdition, shouldLeaveThePainterAsItWasWhenDrawn)
{
    setHeavyTextHeight(10);
    WatchPlate plate;
    plate.setTransactionCount({ordinaryCounts()});
    NotedDrawing drawing({300, 480});
    QPainter painter(&drawing);
    const QPen pen(Qt::magenta, 3, Qt::DashLine);
    painter.setPen(pen);
    painter.setBrush(Qt::yellow);
    const QFont font = painter.font();
    const QPainter::RenderHints hints = painter.renderHints();
    plate.m_data.draw(painter, {0, 0, 300, 480});
    EXPECT_EQ(painter.pen(), pen);
    EXPECT_EQ(painter.brush(), QBrush(Qt::yellow));
    EXPECT_EQ(painter.font(), font);
    EXPECT_EQ(painter.renderHints(), hints);
    EXPECT_TRUE(painter.transform().isIdentity());
    EXPECT_FALSE(painter.hasClipping());
}

} // namespace
