#include "tests/tessimodel/todayparam.h"

#include <optional>
#include <vector>

namespace {

using namespace tests;
using namespace TC;

// Every member but the list in force and the source of dates, one a line.
std::string memberText(const TodayParam& m)
{
    std::ostringstream text;
    text << tableText(m);
    for (const auto& [name, list] : kParamLists)
        text << name << ' ' << listText(m.*list) << '\n';
    text << m.m_level2 << '\n' << m.m_stock << '\n' << m.m_gdrStock << '\n' << m.m_lastClose << '\n';
    text << m.m_priceTick << '\n' << flagsText(m) << '\n' << m.m_isNewLoan << '\n' << m.m_tradeCount << '\n';
    text << m.m_lastAll << '\n' << m.m_lastDepth << '\n' << m.m_lastContinuous << '\n';
    for (const auto& [time, e] : m.m_history) {
        text << time << ' ' << e.high << ' ' << e.low << ' ' << e.bidAveragePrice << ' ' << e.totalBidVolume << ' '
             << e.askAveragePrice << ' ' << e.totalAskVolume << ' ' << e.curVolume << ' ' << e.tradeCount << '\n';
    }
    for (const auto& [time, aux] : m.m_pendingAux)
        text << time << ' ' << aux << '\n';
    return text.str();
}

class TodayParamCopyTest : public TodayParamTest {
protected:
    // Gives every member something that a new table does not have.
    TodayParamCopyTest()
    {
        follow("SZ", "000001", {100003});
        model.setLevel2(true);
        model.m_gdrStock = terminal.instruments.add(stock("LSE", "HTSC"));
        model.m_lastClose = 9.5;
        int number = 1000;
        for (const auto& [name, list] : kParamLists)
            (model.*list).append(++number);
        for (bool* flag : flags(model))
            *flag = true;
        model.m_tradeCount = 77;
        model.m_lastAll = std::make_shared<quoter::QuoterAllData>();
        model.m_lastDepth = std::make_shared<quoter::QuoterDepthData>();
        model.m_lastContinuous = model.m_lastAll;
        model.m_history[5] = {1, 2, 3, 4, 5, 6, 7, 8};
        model.m_pendingAux[6] = std::make_shared<quoter::QuoteAux>();
        for (auto& [id, row] : model.m_params) {
            row.label += "+";
            row.text = QString::number(id);
            row.colorKey += "+";
        }
    }

    static std::vector<bool*> flags(TodayParam& m)
    {
        return {&m.m_isNewRuleBond, &m.m_isBond,        &m.m_isIopvFund, &m.m_isAfterHoursA,
                &m.m_isOption,      &m.m_isAfterHoursB, &m.m_hasGdr,     &m.m_isRegisteredA,
                &m.m_isHk,          &m.m_isRegisteredB, &m.m_isNewLoan};
    }
};

TEST_F(TodayParamCopyTest, shouldCopyEveryMemberWhenCopied)
{
    ASSERT_EQ(model.m_priceTick, 0.01);
    const TodayParam copy = model;
    EXPECT_EQ(memberText(copy), memberText(model));
    TodayParam assigned;
    ASSERT_NE(memberText(assigned), memberText(model));
    TodayParam& result = assigned = model;
    EXPECT_EQ(&result, &assigned);
    EXPECT_EQ(memberText(assigned), memberText(model));

    const TodayParam& itself = model;
    const std::string before = memberText(model);
    model = itself;
    EXPECT_EQ(memberText(model), before);
    EXPECT_EQ(listInForce(model), "stock");
}

TEST_F(TodayParamCopyTest, shouldCopyEachFlagAloneWhenItAloneIsUp)
{
    for (std::size_t up = 0; up < flags(model).size(); ++up) {
        for (std::size_t i = 0; i < flags(model).size(); ++i)
            *flags(model)[i] = i == up;
        const TodayParam copy = model;
        TodayParam assigned;
        assigned = model;
        for (const TodayParam* m : {&copy, static_cast<const TodayParam*>(&assigned)}) {
            EXPECT_EQ(flagsText(*m), flagsText(model));
            EXPECT_EQ(m->m_isNewLoan, model.m_isNewLoan);
        }
    }
}

TEST_F(TodayParamCopyTest, shouldShareRecordsAndNothingElseWhenCopied)
{
    TodayParam copy = model;
    const std::string before = memberText(model);
    copy.m_params[RP_LAST].text = "?";
    copy.m_history.clear();
    copy.m_pendingAux.clear();
    for (const auto& [name, list] : kParamLists)
        (copy.*list).clear();
    EXPECT_EQ(memberText(model), before);

    TodayParam assigned;
    assigned = model;
    model.m_params.clear();
    model.m_history.clear();
    model.m_pendingAux.clear();
    for (const auto& [name, list] : kParamLists)
        (model.*list).clear();
    EXPECT_EQ(memberText(assigned), before);
}

// The list in force is copied as the bare pointer: it leads into the source until the copy's own setStock.
TEST_F(TodayParamCopyTest, shouldPointIntoTheSourceWhenCopiedUntilItFollowsItself)
{
    TodayParam copy = model;
    TodayParam assigned;
    assigned = model;
    for (TodayParam* m : {&copy, &assigned}) {
        EXPECT_EQ(m->m_paramList, &model.m_stockParams);
        EXPECT_EQ(listInForce(*m), "none of its own");
        m->clear();
        m->setLevel2(false);
        EXPECT_EQ(m->m_paramList, &model.m_stockParams);
        EXPECT_TRUE(m->setStock(keyOf("SZ", "000001"))) << "its own list is another one";
        EXPECT_EQ(m->m_paramList, &m->m_stockParams);
        EXPECT_FALSE(m->setStock(keyOf("SZ", "000001")));
    }
}

// A read through the old pointer is for AddressSanitizer to find.
TEST_F(TodayParamCopyTest, shouldNotFollowTheOldListWhenSourceIsGone)
{
    std::optional<TodayParam> source(model);
    source->setStock(keyOf("SZ", "000001"));
    TodayParam copy = *source;
    const TodayParam neverSetUp = *source;
    const void* const ofSource = &source->m_stockParams;
    source.reset();
    copy.history({level1().last(10).volume(5)});
    copy.connectTickData(level1().last(10).volume(5));
    copy.clear();
    EXPECT_EQ(copy.m_paramList, ofSource) << "the bare address stays";
    EXPECT_TRUE(copy.setStock(keyOf("SZ", "000001")));
    EXPECT_EQ(copy.m_paramList, &copy.m_stockParams);
}

struct CountingSource {
    int asked = 0;
    int operator()() { return ++asked; }
};

TEST_F(TodayParamCopyTest, shouldCloneTheSourceOfDatesWhenCopied)
{
    model.m_historyDateSource = CountingSource();
    ASSERT_EQ(model.m_historyDateSource(), 1);
    TodayParam copy = model;
    TodayParam assigned;
    assigned = model;
    EXPECT_EQ(copy.m_historyDateSource(), 2);
    EXPECT_EQ(copy.m_historyDateSource(), 3);
    EXPECT_EQ(assigned.m_historyDateSource(), 2);
    EXPECT_EQ(model.m_historyDateSource(), 2) << "each has a count of its own";

    model.m_historyDateSource.clear();
    EXPECT_EQ(copy.m_historyDateSource(), 4);
    copy = model;
    EXPECT_TRUE(copy.m_historyDateSource.empty());
}

TEST_F(TodayParamCopyTest, shouldLeaveTheSourceAloneWhenACopyIsDestroyed)
{
    const std::string before = memberText(model);
    {
        const TodayParam copy = model;
    }
    EXPECT_EQ(memberText(model), before);
}

} // namespace
