#include "standin/theme.h"
#include "tests/support/offscreen.h"
#include "tests/tessimodel/plateprobes.h"

#include <QPixmap>
#include <QScreen>
#include <QtGui/qtestsupport_gui.h>
#include <QVBoxLayout>
#include <QWindow>

// The plate in a window of the platform that the environment names, as the screen has it.
namespace {

using namespace tests;

class WatchPlateWindow : public OnScreen {
protected:
    WatchPlateWindow()
        : plate(new WatchPlate(&window))
    {
        auto* const layout = new QVBoxLayout(&window);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(plate);
        window.resize(340, 640);
        window.show();
    }

    void SetUp() override
    {
        ASSERT_EQ(QGuiApplication::platformName(), qgetenv("QT_QPA_PLATFORM"));
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.windowHandle()));
        settle();
    }

    static void settle()
    {
        for (int i = 0; i < 20; ++i)
            QApplication::processEvents(QEventLoop::AllEvents, 10);
    }

    // What the screen shows of the window.
    QImage onScreen()
    {
        settle();
        QScreen* const screen = window.windowHandle()->screen();
        QImage image = screen->grabWindow(window.winId()).toImage().convertToFormat(QImage::Format_RGB32);
        image.setDevicePixelRatio(window.devicePixelRatioF());
        return image;
    }

    // What is wrong with the picture on the screen: by the probes, and against the same widget rendered into an image.
    std::string wrong(const PlateState& state)
    {
        const QImage shown = onScreen();
        if (shown.size() != (QSizeF(window.size()) * window.devicePixelRatioF()).toSize())
            return "the screen shows " + std::to_string(shown.width()) + "x" + std::to_string(shown.height()) + "\n";
        const bool same = shown == pictureOf(*plate, window.devicePixelRatioF());
        return PlateProbes(shown, state).all() + (same ? "" : "the screen shows other pixels than an image\n");
    }

    QWidget window;
    WatchPlate* plate;
};

TEST_F(WatchPlateWindow, shouldShowThePictureOfAnImageWhenDataSizeAndThemeChange)
{
    plate->setTransactionCount({ordinaryCounts()});
    EXPECT_EQ(wrong(ordinaryState()), "");
    window.resize(420, 700);
    EXPECT_EQ(wrong(ordinaryState()), "");
    window.resize(280, 460);
    EXPECT_EQ(wrong(ordinaryState()), "");
    standin::setTheme(standin::Theme::Light);
    EXPECT_EQ(wrong(ordinaryState()), "");
    plate->setRegionTransaction(
        {counts().sells(150, 0, 0, 0).orders(5, 0), counts().buys(0, 0, 0, 500).sells(50, 0, 0, 0).orders(3, 4)});
    EXPECT_EQ(wrong(negativeState()), "");
    plate->setRegionTransaction({ordinaryCounts()});
    EXPECT_EQ(wrong(noVolumeState()), "");
}

// Another instrument's data take a moment: meanwhile the plate does not flicker.
TEST_F(WatchPlateWindow, shouldKeepTheOldPictureOnTheScreenWhenAnotherStockIsSet)
{
    plate->setTransactionCount({ordinaryCounts()});
    const QImage before = onScreen();
    plate->setStock("SZ000001");
    EXPECT_EQ(onScreen(), before);
    plate->setStock("");
    EXPECT_NE(onScreen(), before);
}

} // namespace
