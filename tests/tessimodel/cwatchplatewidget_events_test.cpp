#include "standin/theme.h"
#include "tests/support/offscreen.h"
#include "tests/tessimodel/watchplate.h"

#include <QEvent>
#include <QResizeEvent>

#include <functional>
#include <memory>
#include <thread>

namespace {

using namespace tests;

// Counts what a widget is told.
class Events : public QObject {
public:
    explicit Events(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        paints += event->type() == QEvent::Paint;
        calls += event->type() == QEvent::MetaCall;
        return false;
    }

    int paints = 0;
    int calls = 0; // handed over from another thread
};

class WatchPlateEvents : public Offscreen {
protected:
    WatchPlateEvents()
    {
        plate.resize(300, 480);
        plate.show();
        settle();
    }

    // Deals with all events, those that the dealing posts as well.
    static void settle()
    {
        for (int i = 0; i < 5; ++i)
            QApplication::processEvents();
    }

    // Paints that follow what `act` does.
    int paintsAfter(const std::function<void()>& act)
    {
        settle();
        const Events events(plate);
        act();
        EXPECT_EQ(events.paints, 0) << "painted before the event loop runs";
        settle();
        return events.paints;
    }

    WatchPlate plate;
};

TEST_F(WatchPlateEvents, shouldRepaintOnceWhenCountsAreTaken)
{
    const Records one = {counts().buys(1, 2, 3, 4)};
    const Records two = {counts(), counts().buys(1, 2, 3, 4)};
    EXPECT_EQ(paintsAfter([&] { plate.setTransactionCount(one); }), 1);
    EXPECT_EQ(paintsAfter([&] { plate.setTransactionCount(one); }), 1); // also when nothing is new
    EXPECT_EQ(paintsAfter([&] { plate.setRegionTransaction(one); }), 1);
    EXPECT_EQ(paintsAfter([&] { plate.setRegionTransaction(two); }), 1);
}

TEST_F(WatchPlateEvents, shouldNotRepaintWhenABatchIsIgnored)
{
    for (const Records& batch : {Records{}, Records{nullptr}, Records{counts(), level1()}}) {
        EXPECT_EQ(paintsAfter([&] { plate.setTransactionCount(batch); }), 0);
        EXPECT_EQ(paintsAfter([&] { plate.setRegionTransaction(batch); }), 0);
    }
    EXPECT_EQ(paintsAfter([&] { plate.setRegionTransaction({level1(), counts()}); }), 0);
}

TEST_F(WatchPlateEvents, shouldRepaintAtOnceOnlyWhenTheStockIsNone)
{
    plate.setTransactionCount({counts().buys(1, 2, 3, 4)});
    EXPECT_EQ(paintsAfter([&] { plate.setStock("SZ000001"); }), 0);
    EXPECT_EQ(paintsAfter([&] { plate.setStock(""); }), 1);
    EXPECT_EQ(paintsAfter([&] { plate.setStock(QString()); }), 1);
    EXPECT_EQ(paintsAfter([&] { plate.setStock(" "); }), 0);
}

TEST_F(WatchPlateEvents, shouldRepaintWhenLayoutOrThemeChanges)
{
    EXPECT_EQ(paintsAfter([&] { plate.resizeLayout(); }), 1);
    EXPECT_EQ(paintsAfter([&] { plate.themeChanged(); }), 1);
    EXPECT_EQ(paintsAfter([] { standin::setTheme(standin::Theme::Light); }), 1);
}

TEST_F(WatchPlateEvents, shouldRepaintWhenResizedWhateverTheSize)
{
    plate.setAttribute(Qt::WA_StaticContents); // Qt itself asks for no more than what has appeared
    EXPECT_EQ(paintsAfter([&] { plate.resize(280, 400); }), 1);
    EXPECT_EQ(paintsAfter([&] {
                  QResizeEvent event(plate.size(), plate.size());
                  plate.resizeEvent(&event);
              }),
              1);
}

TEST_F(WatchPlateEvents, shouldLeaveEventsOfTheBusToTheBaseWhenHandedOn)
{
    int payload = 5;
    for (const int event : {0, 1, 7, -1})
        EXPECT_FALSE(plate.handleEvent(event, 2, 3, "text", &payload)); // as the base answers
    EXPECT_EQ(payload, 5);
    EXPECT_EQ(paintsAfter([&] { plate.handleEvent(1, 2, 3, "text", nullptr); }), 0);
}

TEST_F(WatchPlateEvents, shouldAskForTheRepaintAtOnceWhenSetOnItsOwnThread)
{
    const Events events(plate);
    plate.setTransactionCount({counts().buys(1, 2, 3, 4)});
    settle();
    EXPECT_EQ(events.paints, 1);
    EXPECT_EQ(events.calls, 0);
}

TEST_F(WatchPlateEvents, shouldQueueTheRepaintWhenSetOnAnotherThread)
{
    const Events events(plate);
    std::thread([this] { plate.setTransactionCount({counts().buys(1, 2, 3, 4)}); }).join();
    EXPECT_EQ(plate.m_data.m_items.size(), 8U); // the data are there at once
    EXPECT_EQ(events.paints, 0);
    settle();
    EXPECT_EQ(events.calls, 1);
    EXPECT_EQ(events.paints, 1);
    std::thread([this] { plate.setRegionTransaction({counts(), counts().buys(1, 2, 3, 4)}); }).join();
    EXPECT_EQ(events.paints, 1);
    settle();
    EXPECT_EQ(events.calls, 2);
    EXPECT_EQ(events.paints, 2);
    // One record is shown as a state and then as a range: two repaints are asked for, and one is enough.
    std::thread([this] { plate.setRegionTransaction({counts().buys(1, 2, 3, 4)}); }).join();
    settle();
    EXPECT_EQ(events.calls, 4);
    EXPECT_EQ(events.paints, 3);
}

TEST_F(WatchPlateEvents, shouldForgetQueuedRepaintsWhenDestroyed)
{
    auto gone = std::make_unique<WatchPlate>();
    gone->show();
    settle();
    std::thread([&gone] { gone->setTransactionCount({counts().buys(1, 2, 3, 4)}); }).join();
    gone.reset();
    EXPECT_EQ(paintsAfter([] {}), 0);
}

} // namespace
