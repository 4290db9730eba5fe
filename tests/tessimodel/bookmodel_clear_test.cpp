#include "tests/tessimodel/bookmodels.h"
#include "utils/stockkey.h"

#include <boost/weak_ptr.hpp>

namespace {

using namespace tests;

// What a clear drops, keeps and leaves with the models' manager.
template <class Model>
class BookModelClearTest : public BookModelTest<Model> {
protected:
    // Level-2 snapshots, all figures set, and rows as if they had been read.
    void givenBusyModel()
    {
        this->feed.snapshots(live, {level2("09:30:00").volume(30).bid(10.00)});
        this->feed.snapshots(live, {level2("09:30:03").last(10.02).volume(70).bid(10.00, 2).ask(10.02, 4)});
        this->model.m_bidRows = rowsAt(10.00, 2);
        this->model.m_askRows = rowsAt(10.02, 4);
        this->model.m_reserved = 5;
        this->model.m_afterHoursVolume = 5;
        this->model.m_tickLastPrice = 5;
        this->model.m_tickLastVolume = 5;
        this->model.m_loadedHistory = 3;
        this->model.m_dataReady = 3;
        this->model.m_updateFlags = 6;
        this->model.m_dealVolumes[1] = 5;
    }

    // What the manager holds of an instrument.
    static std::string left(const std::string& code = "000001")
    {
        TC::EntrustRows asks;
        TC::EntrustRows bids;
        const bool kept = bookManager()->getData(utils::zlStockKey("SZ", code), asks, bids);
        return kept ? bookText(bids, asks) : "nothing";
    }

    static constexpr const char* kRows = "bid 10.00 2h x1 (0)\nask 10.02 4h x1 (0)\n";
};

TYPED_TEST_SUITE(BookModelClearTest, BookModels, BookModelNames);

TYPED_TEST(BookModelClearTest, shouldDropSnapshotsAndFiguresWhenCleared)
{
    this->givenBusyModel();
    this->model.clear();
    EXPECT_EQ(this->model.m_updateFlags, 1);
    EXPECT_EQ(this->model.m_loadedHistory, 0);
    EXPECT_EQ(this->model.m_dataReady, 0);
    EXPECT_EQ(bookText(this->model.m_bidRows, this->model.m_askRows), "");
    EXPECT_EQ(bookText(this->model.m_snapshotBids, this->model.m_snapshotAsks), "");
    EXPECT_TRUE(this->model.m_dealVolumes.empty());
    EXPECT_EQ(this->model.m_askFloor, 10000000000.0);
    EXPECT_EQ(this->model.m_bidCeiling, 0.0);
    EXPECT_EQ(this->model.m_reserved, 0);
    EXPECT_EQ(this->model.m_quoterTimetag, 0);
    EXPECT_FALSE(this->model.m_continuous);
    EXPECT_EQ(this->model.m_tickLastPrice, DBL_MAX);
    EXPECT_EQ(this->model.m_tickLastVolume, 0);
    EXPECT_EQ(this->model.m_quoterLastPrice, DBL_MAX);
    EXPECT_EQ(this->model.m_quoterLastVolume, 0);
    EXPECT_EQ(this->model.m_quoterVolumeTime, 0);
    EXPECT_EQ(this->model.m_afterHoursVolume, 0);
    EXPECT_EQ(this->model.m_quoter, nullptr);
}

TYPED_TEST(BookModelClearTest, shouldKeepInstrumentAndSettingsWhenCleared)
{
    this->givenBusyModel();
    this->model.setNewLoan(true);
    this->model.clear();
    EXPECT_EQ(this->model.getStockKey(), keyOf("SZ", "000001"));
    EXPECT_TRUE(this->model.m_isNewLoan);
    EXPECT_FALSE(this->model.m_suppressTickFlags);
    EXPECT_EQ(this->model.m_priceTick, 0.01) << "taken from the instrument anew";
    EXPECT_EQ(this->model.m_lastClose, 10.0);
    EXPECT_EQ(this->model.m_volumeUnit, 100);
    EXPECT_EQ(this->model.m_book.m_stock, this->model.m_stock);
    EXPECT_EQ(this->model.m_book.m_priceTick, 0.01);
}

TYPED_TEST(BookModelClearTest, shouldKeepWhatItWasMadeWithWhenClearedWithoutAnInstrument)
{
    TypeParam quiet(true, 3);
    quiet.clear();
    EXPECT_TRUE(quiet.m_suppressTickFlags);
    EXPECT_EQ(quiet.m_modelId, 3);
    EXPECT_EQ(quiet.m_updateFlags, 1);
    EXPECT_EQ(quiet.m_priceTick, 0.001);
    EXPECT_EQ(quiet.m_volumeUnit, 1);
}

TYPED_TEST(BookModelClearTest, shouldTakeTheSameSnapshotAgainWhenCleared)
{
    this->givenBusyModel();
    this->model.clear();
    this->feed.snapshots(live, {level2("09:30:03").last(10.02).volume(70).bid(10.00, 2)});
    EXPECT_EQ(this->model.m_quoterLastPrice, 10.02);
    EXPECT_EQ(this->model.m_quoterLastVolume, 0) << "there is no step from before";
    EXPECT_EQ(bookText(this->model.m_snapshotBids, {}), "bid 10.00 2h x? (0)\n");
}

// --- rows for the next view -----------------------------------------------------------------------------------

TYPED_TEST(BookModelClearTest, shouldLeaveTheRowObjectsWithTheManagerWhenCleared)
{
    this->givenBusyModel();
    const auto row = this->model.m_bidRows.at(1000);
    this->model.clear();
    EXPECT_EQ(this->left(), this->kRows);
    TC::EntrustRows bids;
    ASSERT_TRUE(bookManager()->getBids(utils::zlStockKey("SZ", "000001"), bids));
    EXPECT_EQ(bids.at(1000), row);
}

TYPED_TEST(BookModelClearTest, shouldKeepRowsOfOneSideWhenTheOtherIsEmpty)
{
    this->model.m_bidRows = rowsAt(10.00, 1);
    this->model.clear();
    EXPECT_EQ(this->left(), "bid 10.00 1h x1 (0)\n");
    this->model.m_askRows = rowsAt(10.03, 1);
    this->model.clear();
    EXPECT_EQ(this->left(), "ask 10.03 1h x1 (0)\n");
}

TYPED_TEST(BookModelClearTest, shouldKeepWhatWasLeftWhenAnEmptyModelIsCleared)
{
    this->givenBusyModel();
    this->model.clear();
    this->model.clear();
    EXPECT_EQ(this->left(), this->kRows);
}

TYPED_TEST(BookModelClearTest, shouldLeaveNothingWhenTheModelHasNoInstrumentAnyMore)
{
    this->givenBusyModel();
    this->model.setStock("nobody knows this");
    this->model.clear();
    EXPECT_EQ(this->left(), "nothing");
    EXPECT_EQ(bookText(this->model.m_bidRows, this->model.m_askRows), "");
}

// The instrument of that moment names the rows: a change of instrument needs a clear before it.
TYPED_TEST(BookModelClearTest, shouldLeaveTheRowsUnderTheNewNameWhenTheInstrumentChangedFirst)
{
    this->givenBusyModel();
    this->model.setStock(keyOf("SZ", "000002"));
    this->model.clear();
    EXPECT_EQ(this->left(), "nothing");
    EXPECT_EQ(this->left("000002"), this->kRows);
}

TYPED_TEST(BookModelClearTest, shouldLeaveItsRowsWhenAModelDies)
{
    {
        TypeParam shortLived;
        shortLived.setStock(keyOf("SZ", "000001"));
        shortLived.m_bidRows = rowsAt(10.00, 1);
    }
    EXPECT_EQ(this->left(), "bid 10.00 1h x1 (0)\n");
}

TYPED_TEST(BookModelClearTest, shouldFreeSnapshotRowsOnTheReleaseStrandWhenCleared)
{
    this->givenBusyModel();
    const boost::weak_ptr<TC::EntrustData> row = this->model.m_snapshotBids.at(1000);
    this->model.clear();
    EXPECT_TRUE(this->model.m_snapshotBids.empty());
    EXPECT_FALSE(row.expired());
    EXPECT_TRUE(this->terminal.strands.drain("data_release"));
    EXPECT_TRUE(row.expired());
}

} // namespace
