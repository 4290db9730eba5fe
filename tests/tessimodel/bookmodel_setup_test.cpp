#include "tests/tessimodel/bookmodels.h"
#include "tests/tessimodel/handcases.h"
#include "utils/stockkey.h"

#include <type_traits>

namespace {

using namespace tests;

template <class Model>
class BookModelSetUpTest : public BookModelTest<Model> {
protected:
    Model fresh; // has never had an instrument
};

TYPED_TEST_SUITE(BookModelSetUpTest, BookModels, BookModelNames);

static_assert(!std::is_polymorphic_v<TC::CModelDepthThousand> && !std::is_polymorphic_v<TC::CModelQuoterDepthThousand>);

// --- construction ---------------------------------------------------------------------------------------------

TYPED_TEST(BookModelSetUpTest, shouldHoldNothingWhenNew)
{
    EXPECT_EQ(this->fresh.m_modelId, -1);
    EXPECT_FALSE(this->fresh.m_suppressTickFlags);
    EXPECT_EQ(this->fresh.m_stock, nullptr);
    EXPECT_EQ(this->fresh.m_priceTick, 0.001);
    EXPECT_EQ(this->fresh.m_lastClose, DBL_MAX);
    EXPECT_EQ(this->fresh.m_volumeUnit, 1);
    EXPECT_EQ(this->fresh.m_askFloor, 10000000000.0);
    EXPECT_EQ(this->fresh.m_bidCeiling, 0.0);
    EXPECT_EQ(this->fresh.m_tickLastPrice, DBL_MAX);
    EXPECT_EQ(this->fresh.m_quoterLastPrice, DBL_MAX);
    EXPECT_EQ(this->fresh.m_updateFlags, 0);
    EXPECT_EQ(this->fresh.m_loadedHistory, 0);
    EXPECT_EQ(this->fresh.m_dataReady, 0);
    EXPECT_EQ(this->fresh.m_quoterVolumeTime, 0);
    EXPECT_EQ(this->fresh.m_quoter, nullptr);
    EXPECT_FALSE(this->fresh.m_isNewLoan || this->fresh.m_continuous || this->fresh.m_hasAfterHours);
    EXPECT_EQ(this->fresh.getStockKey(), QString());
    EXPECT_EQ(bookText(this->fresh), "no update");
}

TYPED_TEST(BookModelSetUpTest, shouldTakeFlagAndIdWhenGiven)
{
    const TypeParam quiet(true, 12);
    EXPECT_TRUE(quiet.m_suppressTickFlags);
    EXPECT_EQ(quiet.m_modelId, 12);
}

// --- the instrument -------------------------------------------------------------------------------------------

TYPED_TEST(BookModelSetUpTest, shouldTakeSharesPerHandFromTheTypesWhenSetUp)
{
    expectHandsByType(this->terminal, this->model);
}

TYPED_TEST(BookModelSetUpTest, shouldTakeTheAfterHoursPhaseFromTheTypesWhenSetUp)
{
    const struct {
        const char* market;
        std::set<int> types;
        bool hasAfterHours;
    } cases[] = {{"SH", {}, false},
                 {"SH", {277}, true},
                 {"SZ", {10006}, true},
                 {"SSE", {277, 10006, 100016}, true},
                 {"SH", {100016, 126}, false}};
    for (const auto& c : cases) {
        this->follow(c.market, "600001", c.types);
        EXPECT_EQ(this->model.m_hasAfterHours, c.hasAfterHours) << c.market;
    }
    this->terminal.instruments.add(stock("SZ", "600002", {277, 10006}));
    this->follow("SH", "600002");
    EXPECT_FALSE(this->model.m_hasAfterHours) << "the types of another market's instrument";
}

TYPED_TEST(BookModelSetUpTest, shouldGiveTheBookItsSettingsWhenInstrumentIsKnown)
{
    auto bond = stock("SH", "113001", {126});
    bond.priceTick = 0.005;
    bond.lastClose = 101.5;
    this->terminal.instruments.add(bond);
    this->model.setStock(keyOf("SH", "113001"));
    EXPECT_EQ(this->model.m_priceTick, 0.005);
    EXPECT_EQ(this->model.m_lastClose, 101.5);
    EXPECT_EQ(this->model.m_book.m_stock, this->model.m_stock);
    EXPECT_EQ(this->model.m_book.m_priceTick, 0.005);
    EXPECT_EQ(this->model.m_book.m_volumeUnit, 10);
    EXPECT_EQ(this->model.getStockKey(), keyOf("SH", "113001"));
    EXPECT_EQ(this->model.m_updateFlags, 0);
}

TYPED_TEST(BookModelSetUpTest, shouldFallBackWhenKeyIsUnknown)
{
    this->follow("SH", "688001", {277, 126});
    this->model.setStock("nobody knows this");
    EXPECT_EQ(this->model.m_stock, nullptr);
    EXPECT_EQ(this->model.m_priceTick, 0.001);
    EXPECT_EQ(this->model.m_volumeUnit, 1);
    EXPECT_FALSE(this->model.m_hasAfterHours);
    EXPECT_EQ(this->model.m_lastClose, DBL_MAX);
    EXPECT_EQ(this->model.m_book.m_stock, nullptr);
    EXPECT_EQ(this->model.m_book.m_priceTick, 0.001);
    EXPECT_EQ(this->model.m_book.m_volumeUnit, 1);
    EXPECT_EQ(this->model.getStockKey(), QString());
}

TYPED_TEST(BookModelSetUpTest, shouldRaiseAnUpdateWhenTheManagerHoldsRowsOfTheInstrument)
{
    const std::string key = utils::zlStockKey("SZ", "000001");
    bookManager()->setData(key, {}, {});
    this->follow("SZ", "000002");
    EXPECT_EQ(this->model.m_updateFlags, 0) << "rows of another instrument";
    this->model.m_updateFlags = 4;
    this->follow("SZ", "000001");
    EXPECT_EQ(this->model.m_updateFlags, 1) << "in place of what was there";
}

TYPED_TEST(BookModelSetUpTest, shouldTakeTheNewLoanSwitchWhenSet)
{
    this->model.setNewLoan(true);
    EXPECT_TRUE(this->model.m_isNewLoan);
    EXPECT_EQ(this->model.m_updateFlags, 0);
    this->model.setNewLoan(false);
    EXPECT_FALSE(this->model.m_isNewLoan);
}

TYPED_TEST(BookModelSetUpTest, shouldWorkOutTheSettingsAnewWhenAsked)
{
    this->model.m_priceTick = 7;
    this->model.m_lastClose = 7;
    this->model.m_volumeUnit = 7;
    this->model.m_hasAfterHours = true;
    this->model.initStockParams();
    EXPECT_EQ(this->model.m_priceTick, 0.01);
    EXPECT_EQ(this->model.m_lastClose, 10.0);
    EXPECT_EQ(this->model.m_volumeUnit, 100);
    EXPECT_FALSE(this->model.m_hasAfterHours);
    EXPECT_EQ(this->model.m_book.m_volumeUnit, 100);
}

// --- continuous trading ---------------------------------------------------------------------------------------

TYPED_TEST(BookModelSetUpTest, shouldTellAuctionsFromContinuousTradingWhenBestPricesAreSeen)
{
    EXPECT_TRUE(this->model.isContinousStatus(level2().bid(10.00).ask(10.01)));
    EXPECT_TRUE(this->model.isContinousStatus(level2().bid(10.00)));
    EXPECT_TRUE(this->model.isContinousStatus(level2().ask(10.01)));
    EXPECT_TRUE(this->model.isContinousStatus(level2().bid(10.02).ask(10.01))) << "crossed";
    EXPECT_FALSE(this->model.isContinousStatus(level2().bid(10.00).ask(10.00)));
    EXPECT_FALSE(this->model.isContinousStatus(level2().bid(10.00).ask(10.000005)));
    EXPECT_TRUE(this->model.isContinousStatus(level2().bid(10.00).ask(10.00002)));
    EXPECT_FALSE(this->model.isContinousStatus(level2()));
    EXPECT_FALSE(this->model.isContinousStatus(level2().bid(0.00001).ask(-0.00001)));
}

} // namespace
