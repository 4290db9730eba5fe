#include "tests/support/offscreen.h"
#include "tests/tessimodel/encounter.h"
#include "tests/tessimodel/plateprobes.h"

#include <boost/thread/locks.hpp>
#include <QImage>
#include <QPainter>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace {

using namespace tests;

constexpr int kPictures = 50; // while the data change
constexpr int kAhead = 500;   // batches to a picture
constexpr int kBatches = 400; // that differ

class WatchPlateConcurrent : public Offscreen {
protected:
    WatchPlateConcurrent() { plate.resize(240, 460); }

    WatchPlate plate;
};

// All volumes of a batch are multiples of its number, so that items of two batches are told apart.
Records dayOf(int number)
{
    return {counts().buys(number, 2 * number, 3 * number, 4 * number).sells(number, 0, 0, 0).orders(number, number)};
}

Records rangeOf(int number)
{
    return {counts().buys(1, 1, 1, 1).sells(1, 1, 1, 1).orders(1, 1),
            counts()
                .buys(1 + number, 1 + 2 * number, 1 + 3 * number, 1 + 4 * number)
                .sells(1 + number, 1, 1, 1)
                .orders(1 + number, 1 + number)};
}

// Whether the items are those of one batch, as both builders above make them.
bool ofOneBatch(const TC::WatchPlateData& data)
{
    const boost::unique_lock<boost::recursive_mutex> lock(data.m_mutex);
    if (data.m_items.empty())
        return true;
    const int number = data.m_items[0].volume;
    const int factors[] = {1, 0, 0, 0, 4, 3, 2, 1};
    for (std::size_t i = 0; i < std::size(factors); ++i) {
        if (data.m_items.size() != std::size(factors) || data.m_items[i].volume != factors[i] * number)
            return false;
    }
    return true;
}

TEST_F(WatchPlateConcurrent, shouldHoldItemsOfOneBatchWhenTwoThreadsSetDataAndItIsPainted)
{
    plate.show();
    QApplication::processEvents();
    std::atomic<int> painted = 0;
    // So far ahead that data are set all through a picture, and no farther: each asks for a repaint.
    const auto repeat = [&painted](const std::function<void(int)>& set) {
        for (int i = 0; painted < kPictures; ++i) {
            set(1 + i % kBatches);
            while (painted < kPictures && i > kAhead * (painted + 1))
                std::this_thread::yield();
        }
    };
    std::thread days([&] { repeat([&](int number) { plate.setTransactionCount(dayOf(number)); }); });
    std::thread ranges([&] { repeat([&](int number) { plate.setRegionTransaction(rangeOf(kBatches + number)); }); });
    int torn = 0;
    while (painted < kPictures) {
        QApplication::processEvents();
        pictureOf(plate);
        torn += !ofOneBatch(plate.m_data);
        ++painted;
    }
    days.join();
    ranges.join();
    EXPECT_EQ(torn, 0);
}

// What the last one set is shown in the end, whoever was faster.
TEST_F(WatchPlateConcurrent, shouldShowTheLastDataWhenThreadsHaveEnded)
{
    plate.show();
    std::thread([this] {
        for (int i = 1; i <= kBatches; ++i)
            plate.setTransactionCount(dayOf(i));
        plate.setRegionTransaction({counts(), ordinaryCounts()});
    }).join();
    for (int i = 0; i < 5; ++i)
        QApplication::processEvents();
    const QImage shown = plate.grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(PlateProbes(shown, ordinaryState()).all(), "");
}

TEST_F(WatchPlateConcurrent, shouldWaitForTheLockWhenDataAreSetEmptiedOrDrawn)
{
    plate.setTransactionCount({ordinaryCounts()});
    TC::WatchPlateData& data = plate.m_data;
    QImage image(240, 460, QImage::Format_RGB32);
    expectToWait(data.m_mutex, {[&] { data.setItems({{}}); }, [&] { data.recalculate(); }, [&] { data.clear(); },
                                [&] { plate.setTransactionCount({ordinaryCounts()}); },
                                [&] {
                                    plate.setRegionTransaction({counts(), ordinaryCounts()});
                                },
                                [&] { plate.setStock("SZ000001"); },
                                [&] {
                                    QPainter painter(&image);
                                    data.draw(painter, image.rect());
                                }});
}

// A panel may hold the lock while it sets several things at once.
TEST_F(WatchPlateConcurrent, shouldTakeTheLockAgainWhenItsOwnThreadHoldsIt)
{
    const boost::unique_lock<boost::recursive_mutex> lock(plate.m_data.m_mutex);
    plate.setTransactionCount({ordinaryCounts()});
    EXPECT_EQ(PlateProbes(pictureOf(plate), ordinaryState()).all(), "");
    plate.setStock("");
    EXPECT_TRUE(plate.m_data.m_items.empty());
}

} // namespace
