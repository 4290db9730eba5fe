#include "tests/tessimodel/entruststatus.h"

#include <optional>
#include <utility>

// What a clear leaves, and what copies share.
namespace {

using namespace tests;

class EntrustCopyTest : public EntrustStatusTest {
protected:
    // Gives every member something that a new model does not have.
    EntrustCopyTest()
    {
        standin::InstrumentDescription description = stock("SH", "688001", {277, 10006});
        description.priceTick = 0.25;
        follow(description);
        model.setNewLoan(true);
        terminal.answers.setNewLoanFactor(10);
        model.live({level1().alternativeLast(10).volume(100).ask(12, 6).bid(10, 5)});
        model.live({level2().alternativeLast(10).volume(100).asks({{11, 6}, {12, 3}}).bids({{10, 5}, {9, 1}})});
        model.live({level2().alternativeLast(10.5).lastClose(9.9).volume(103).ask(11, 8).bid(10, 4)});
        model.live({level2().alternativeLast(10.5).lastClose(9.9).volume(7).status(22).asks({{11, 9}}).bid(10, 6)});
    }

    std::string followed() const
    {
        return fmt::format("stock {} types true true step 0.25 new loan true\n", fmt::ptr(model.m_stock.get()));
    }
};

TEST_F(EntrustCopyTest, shouldHaveSomethingEverywhereWhenTheTestsBegin)
{
    EXPECT_EQ(rowsText(model), "ask1 11 9 +1\nbid1 10 6 +2\n");
    EXPECT_EQ(figuresText(model), "tick 70, kept 30, last 10.5, close 9.9");
    EXPECT_NE(model.m_closingData, nullptr);
    EXPECT_NE(model.m_closingPrevData, nullptr);
    EXPECT_NE(model.m_lastAllData, nullptr);
    EXPECT_NE(model.m_lastDepthData, nullptr);
    EXPECT_NE(memberText(model).find(followed()), std::string::npos);
}

// --- clear ----------------------------------------------------------------------------------------------------

TEST_F(EntrustCopyTest, shouldKeepInstrumentStepTypesAndFormAloneWhenCleared)
{
    model.clear();
    const std::string cleared = ".......... ..........\ntick 0, kept 0, last DBL_MAX, close DBL_MAX\n" + followed() +
                                "level1 0x0 level2 0x0 closing 0x0 after 0x0\n";
    EXPECT_EQ(memberText(model), cleared);
    EXPECT_EQ(model.m_askRows.size(), 10);
    EXPECT_EQ(model.m_bidRows.size(), 10);
    model.clear();
    EXPECT_EQ(memberText(model), cleared);
}

TEST_F(EntrustCopyTest, shouldZeroEveryRowWhenCleared)
{
    for (auto* side : {&model.m_askRows, &model.m_bidRows})
        side->fill({true, 10, 20, 30});
    model.clear();
    EXPECT_EQ(rowsText(model), "");
    EXPECT_EQ(usedText(model), ".......... ..........");
}

TEST_F(EntrustCopyTest, shouldClearWhenThereIsNoInstrument)
{
    model.setStock("nobody");
    model.clear();
    model.setNewLoan(false);
    EXPECT_EQ(memberText(model), memberText(EntrustStatus()));
}

TEST_F(EntrustCopyTest, shouldBeUsableAsBeforeWhenCleared)
{
    model.clear();
    model.live({level2().alternativeLast(10).volume(100).asks({{11, 6}}).bids({{10, 5}})});
    EXPECT_EQ(rowsText(model), "ask1 11 6\nbid1 10 5\n");
    EXPECT_EQ(figuresText(model), "tick 0, kept 0, last 10, close DBL_MAX");
    model.live({level2().alternativeLast(10).volume(7).status(22)});
    EXPECT_EQ(figuresText(model), "tick 70, kept 0, last 10, close DBL_MAX");
}

TEST_F(EntrustCopyTest, shouldLetGoOfItsSnapshotsWhenClearedOrDestroyed)
{
    std::optional<EntrustStatus> owner;
    for (const bool destroys : {false, true}) {
        owner.emplace();
        owner->setStock(keyOf("SH", "688001"));
        quoter::QuoterBasePtr record = level1().alternativeLast(10).volume(100);
        const std::weak_ptr<quoter::QuoterBase> watched = record;
        owner->live({std::exchange(record, nullptr)});
        ASSERT_FALSE(watched.expired());
        if (destroys)
            owner.reset();
        else
            owner->clear();
        EXPECT_TRUE(watched.expired());
    }
}

// --- copies ---------------------------------------------------------------------------------------------------

TEST_F(EntrustCopyTest, shouldCopyEveryMemberWhenCopied)
{
    const EntrustStatus copy = model;
    EXPECT_EQ(memberText(copy), memberText(model));
    EntrustStatus assigned;
    ASSERT_NE(memberText(assigned), memberText(model));
    EntrustStatus& result = assigned = model;
    EXPECT_EQ(&result, &assigned);
    EXPECT_EQ(memberText(assigned), memberText(model));

    const EntrustStatus& itself = model;
    const std::string before = memberText(model);
    model = itself;
    EXPECT_EQ(memberText(model), before);
}

TEST_F(EntrustCopyTest, shouldCopyEachFlagAloneWhenItAloneIsUp)
{
    for (bool EntrustStatus::*up : {static_cast<bool EntrustStatus::*>(&EntrustStatus::m_hasAfterHours),
                                    static_cast<bool EntrustStatus::*>(&EntrustStatus::m_hasAfterHoursSz),
                                    static_cast<bool EntrustStatus::*>(&EntrustStatus::m_isNewLoan)}) {
        model.m_hasAfterHours = model.m_hasAfterHoursSz = model.m_isNewLoan = false;
        model.*up = true;
        const EntrustStatus copy = model;
        EXPECT_EQ(memberText(copy), memberText(model));
    }
}

TEST_F(EntrustCopyTest, shouldShareRowsUntilOneChangesWhenCopied)
{
    const EntrustStatus copy = model;
    EXPECT_EQ(copy.m_askRows.constData(), model.m_askRows.constData());
    EXPECT_EQ(copy.m_bidRows.constData(), model.m_bidRows.constData());
    const std::string before = memberText(model);

    model.live({level2().alternativeLast(10.75).lastClose(9.75).volume(9).status(22).ask(11, 1).bid(10, 1)});
    EXPECT_NE(copy.m_askRows.constData(), model.m_askRows.constData());
    EXPECT_NE(copy.m_bidRows.constData(), model.m_bidRows.constData());
    EXPECT_EQ(memberText(copy), before);
    EXPECT_EQ(rowsText(model), "ask1 11 1 -8\nbid1 10 1 -5\n");
}

TEST_F(EntrustCopyTest, shouldLeaveTheCopyAloneWhenTheSourceIsClearedOrGone)
{
    std::optional<EntrustStatus> source(model);
    const std::string before = memberText(model);
    const EntrustStatus copy = *source;
    source->clear();
    EXPECT_EQ(memberText(copy), before);
    EXPECT_EQ(memberText(model), before);
    source = copy;
    source.reset();
    EXPECT_EQ(memberText(copy), before);
    {
        const EntrustStatus another = model;
    }
    EXPECT_EQ(memberText(model), before);
}

// They share the records: what one writes there the other reads.
TEST_F(EntrustCopyTest, shouldSeeTheSameRecordsWhenCopied)
{
    model.setNewLoan(false);
    const auto close = std::dynamic_pointer_cast<quoter::QuoterDepthData>(model.m_closingData);
    ASSERT_EQ(close->lastPrice, 0);
    EntrustStatus copy = model;
    copy.live({level2().last(10).volume(12).status(23)});
    EXPECT_EQ(close->lastPrice, 9.9);
    EXPECT_EQ(copy.m_lastPrice, 9.9);
    EXPECT_EQ(model.m_lastPrice, 10.5);
    model.live({level2().last(10).volume(12).status(23)});
    EXPECT_EQ(model.m_lastPrice, 9.9);
}

} // namespace
