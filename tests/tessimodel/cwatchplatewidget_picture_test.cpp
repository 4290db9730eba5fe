#include "standin/theme.h"
#include "tests/support/offscreen.h"
#include "tests/tessimodel/plateprobes.h"

#include <ostream>
#include <string>

namespace {

using namespace tests;

struct Picture {
    std::string name;
    QSize size;
    PlateState state;
};

std::ostream& operator<<(std::ostream& out, const Picture& picture)
{
    return out << picture.name;
}

const Picture kPictures[] = {
    {"Ordinary", {340, 640}, ordinaryState()},
    {"Wide", {900, 480}, ordinaryState()},
    {"Narrow", {210, 560}, ordinaryState()},
    // No room for the pie, and the end of the table is below the widget's.
    {"TooLow", {340, 250}, ordinaryState()},
    {"WithoutVolume", {340, 640}, noVolumeState()},
    {"OneSector", {341, 641}, oneSectorState()},
    {"NegativeVolumes", {340, 640}, negativeState()},
};

class WatchPlatePicture : public Offscreen, public testing::WithParamInterface<Picture> {};

// A screen's device pixels for one of the widget's: 1.5 puts most edges between two of them.
TEST_P(WatchPlatePicture, shouldBeCrispAndAtItsPlaceWhenRenderedForAnyScreen)
{
    WatchPlate plate;
    plate.resize(GetParam().size);
    plate.setTransactionCount({GetParam().state.counts});
    for (const standin::Theme theme : {standin::Theme::Dark, standin::Theme::Light}) {
        standin::setTheme(theme);
        for (const double ratio : {1.0, 1.5, 2.0}) {
            const QImage picture = pictureOf(plate, ratio);
            EXPECT_EQ(PlateProbes(picture, GetParam().state).all(), "") << "ratio " << ratio;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, WatchPlatePicture, testing::ValuesIn(kPictures),
                         [](const auto& instance) { return instance.param.name; });

class WatchPlatePixels : public Offscreen {};

// A picture that was drawn for a ratio of 1 and enlarged has four equal pixels everywhere.
TEST_F(WatchPlatePixels, shouldDrawTextInEachDevicePixelWhenTheScreenHasTwoForOne)
{
    WatchPlate plate;
    plate.resize(340, 640);
    plate.setTransactionCount({ordinaryCounts()});
    const QImage picture = pictureOf(plate, 2);
    const QRect line = themeLayout(plate.size(), true).line(0, 0);
    int uneven = 0;
    for (int y = line.top(); y <= line.bottom(); ++y) {
        for (int x = line.left(); x <= line.right(); ++x)
            uneven += picture.pixel(2 * x, 2 * y) != picture.pixel(2 * x + 1, 2 * y);
    }
    EXPECT_GT(uneven, 100);
}

// All that is to be seen comes from the widget: nothing of what was there before shows through.
TEST_F(WatchPlatePixels, shouldPaintEveryPixelWhenRendered)
{
    WatchPlate plate;
    for (const QSize& size : {QSize(340, 640), QSize(340, 250), QSize(60, 60), QSize(1, 1)}) {
        plate.resize(size);
        for (const double ratio : {1.0, 1.5, 2.0}) {
            const QImage picture = pictureOf(plate, ratio);
            int unpainted = 0;
            for (int y = 0; y < picture.height(); ++y) {
                for (int x = 0; x < picture.width(); ++x)
                    unpainted += picture.pixelColor(x, y) == QColor(Qt::magenta);
            }
            EXPECT_EQ(unpainted, 0) << size.width() << 'x' << size.height() << " at " << ratio;
        }
    }
}

// The huge sectors, one of each side, lie on either side of the top.
TEST_F(WatchPlatePixels, shouldPutTheHugeSectorsBesideTheTopWhenBothSidesTrade)
{
    WatchPlate plate;
    plate.resize(340, 640);
    plate.setTransactionCount({ordinaryCounts()});
    const QImage picture = pictureOf(plate);
    const PlateLayout layout = themeLayout(plate.size(), true);
    const QPoint top = (layout.centre - QPointF(0, 0.8 * layout.radius)).toPoint();
    const standin::ThemeTokens tokens = standin::currentTokens();
    EXPECT_EQ(picture.pixelColor(top - QPoint(6, 0)), tokens.fall); // selling
    EXPECT_EQ(picture.pixelColor(top + QPoint(6, 0)), tokens.rise); // buying
}

} // namespace
