#include "tests/tessimodel/todayparam.h"

namespace {

using namespace tests;
using namespace TC;

// --- the fifteen lists, number by number --------------------------------------------------------------------------

// A list, when it is so ('y', 'n', '*' for either) by: level-2 rows wanted, the data centre's broker mode, the user's.
struct ListRow {
    const char* name;
    char level2, dataCentre, user;
    const char* entries;
};

const ListRow kLists[] = {
    {"default", '*', '*', '*', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13"},
    {"index", '*', '*', '*', "0 1 2 7 4 9 14 10 16 11 6 12"},
    {"ciccIndex", '*', '*', '*', "0 2 7 4 9 14 10 16 11 6 12"},
    {"future", '*', '*', '*', "0 1 3 2 5 4 6 9 15 10 14 11 16 12 21 22 -1 19 8 20 7"},
    {"option", '*', '*', '*', "0 1 3 2 5 4 6 9 15 10 14 11 16 12 21 22 -1 19 8 20 7"},
    {"newRuleBond", '*', '*', '*', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 -1 1052 1053"},
    {"bond", '*', '*', '*', "0 1 2 30 4 9 14 10 15 11 16 7 12 13 -1 1052 1053"},
    {"hk", '*', '*', '*', "0 1 2 4 9 14 10 15 11 16 7 12 13"},

    {"fund", 'n', '*', '*', "0 1 2 30 4 9 14 10 15 11 23 16 7 21 22 12 13"},
    {"fund", 'y', '*', '*', "0 1 2 30 4 9 14 10 15 11 23 16 7 21 22 12 13 -1 33 34 -1 31 32"},

    {"stock", 'n', 'n', '*', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 26 27 1028 1029"},
    {"stock", 'n', 'y', '*', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 -1 26 27 1028 1029"},
    {"stock", 'y', 'n', '*', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 -1 26 27 1028 1029"},
    {"stock", 'y', 'y', '*', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 -1 33 34 -1 31 32 -1 26 27 1028 1029"},

    {"registeredA", 'n', 'n', '*', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 26 27 1028 1029"},
    {"registeredA", 'n', 'y', '*', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 -1 26 27 1028 1029"},
    {"registeredA", 'y', 'n', '*',
     "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 -1 26 27 1028 1029"},
    {"registeredA", 'y', 'y', '*', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 -1 33 34 -1 31 32 -1 26 27 1028 1029"},

    {"registeredB", 'n', 'n', '*', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 26 27 1028 1029"},
    {"registeredB", 'n', 'y', '*', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 -1 26 27 1028 1029"},
    {"registeredB", 'y', 'n', '*',
     "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 -1 26 27 1028 1029"},
    {"registeredB", 'y', 'y', '*', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 -1 33 34 -1 31 32 -1 26 27 1028 1029"},

    {"afterHoursA", 'n', 'n', 'n',
     "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 1042 -1 40 39 -1 26 27 1028 1029"},
    {"afterHoursA", 'n', 'n', 'y', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 26 27 1028 1029"},
    {"afterHoursA", 'n', 'y', 'n', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 -1 1042 -1 40 39 -1 26 27 1028 1029"},
    {"afterHoursA", 'n', 'y', 'y', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 -1 26 27 1028 1029"},
    {"afterHoursA", 'y', 'n', 'n',
     "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 -1 1042 -1 40 39 -1 26 27 1028 1029"},
    {"afterHoursA", 'y', 'n', 'y',
     "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 -1 26 27 1028 1029"},
    {"afterHoursA", 'y', 'y', 'n',
     "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 -1 33 34 -1 31 32 -1 1042 -1 40 39 -1 26 27 1028 1029"},
    {"afterHoursA", 'y', 'y', 'y', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 -1 33 34 -1 31 32 -1 26 27 1028 1029"},

    {"afterHoursB", 'n', '*', 'n',
     "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 1042 -1 -1 40 39 -1 26 27 1028 1029"},
    {"afterHoursB", 'n', '*', 'y', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 26 27 1028 1029"},
    {"afterHoursB", 'y', '*', 'n',
     "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 -1 1042 -1 -1 40 39 -1 26 27 1028 1029"},
    {"afterHoursB", 'y', '*', 'y',
     "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 -1 26 27 1028 1029"},

    {"gdr", 'n', '*', '*', "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 26 27 1028 1029 -1 48 49 50 51"},
    {"gdr", 'y', '*', '*',
     "0 1 2 30 4 9 14 10 15 11 16 7 21 22 12 13 24 25 -1 33 34 -1 31 32 -1 26 27 1028 1029 -1 48 49 50 51"},
};

struct Wishes {
    bool level2, dataCentre, user;
};

bool applies(const ListRow& row, const Wishes& wishes)
{
    const auto fits = [](char wanted, bool is) { return wanted == '*' || wanted == (is ? 'y' : 'n'); };
    return fits(row.level2, wishes.level2) && fits(row.dataCentre, wishes.dataCentre) && fits(row.user, wishes.user);
}

class TodayParamListsTest : public TodayParamTest {
protected:
    void answer(const Wishes& wishes)
    {
        terminal.answers.setDataCenterBrovanQuoteMode(wishes.dataCentre);
        terminal.answers.setUserBrovanQuoteMode(wishes.user);
    }

    // Does it for every combination.
    template <class Check>
    void inEveryCase(const Check& check)
    {
        for (const bool level2 : {false, true}) {
            for (const bool dataCentre : {false, true}) {
                for (const bool user : {false, true}) {
                    SCOPED_TRACE(testing::Message() << "level2 " << level2 << ", broker's quotes by the data centre "
                                                    << dataCentre << ", by the user " << user);
                    const Wishes wishes{level2, dataCentre, user};
                    answer(wishes);
                    check(wishes);
                }
            }
        }
    }

    // That every one of the fifteen lists is as it is written above.
    void expectLists(const TodayParam& of, const Wishes& wishes)
    {
        int lists = 0;
        for (const ListRow& row : kLists) {
            if (!applies(row, wishes))
                continue;
            ++lists;
            EXPECT_EQ(listText(of.*listNamed(row.name)), row.entries) << row.name;
        }
        EXPECT_EQ(lists, 15);
    }

    template <class Use>
    void withEveryList(const TodayParam& of, const Use& use)
    {
        for (const auto& [name, list] : kParamLists) {
            SCOPED_TRACE(name);
            use(of.*list);
        }
    }
};

TEST_F(TodayParamListsTest, shouldBuildEveryListAsWrittenWhenAnswersAndLevelAreAnyhow)
{
    inEveryCase([this](const Wishes& wishes) {
        TodayParam fresh;
        fresh.setLevel2(wishes.level2);
        expectLists(fresh, wishes);

        model.m_level2 = wishes.level2;
        model.initParams();
        expectLists(model, wishes);
        model.initParams();
        expectLists(model, wishes); // each list is emptied first
    });
}

TEST_F(TodayParamListsTest, shouldTakeTheAnswersOfItsTimeWhenConstructed)
{
    inEveryCase([this](const Wishes& wishes) {
        if (!wishes.level2)
            expectLists(TodayParam(), wishes);
    });
}

TEST_F(TodayParamListsTest, shouldKeepListsWhenAnswersChangeAfterwards)
{
    answer({false, true, true});
    expectLists(model, {false, false, false});
    model.initParams();
    expectLists(model, {false, true, true});
}

TEST_F(TodayParamListsTest, shouldKeepAfterHoursRowsWhenUserIsSignedOut)
{
    terminal.answers.setUserBrovanQuoteMode(true);
    terminal.answers.setSignedIn(false);
    model.initParams();
    expectLists(model, {false, false, false});
}

// --- rules that look as if they wanted repair ---------------------------------------------------------------------

TEST_F(TodayParamListsTest, shouldHideInnerAndOuterByTheDataCentreAndAfterHoursByTheUserWhenTheyAnswerDifferently)
{
    answer({false, true, false});
    model.initParams();
    EXPECT_FALSE(model.m_afterHoursParamsA.contains(24));
    EXPECT_TRUE(model.m_afterHoursParamsA.contains(1042));
    answer({false, false, true});
    model.initParams();
    EXPECT_TRUE(model.m_afterHoursParamsA.contains(24));
    EXPECT_FALSE(model.m_afterHoursParamsA.contains(1042));
}

TEST_F(TodayParamListsTest, shouldKeepInnerAndOuterInAfterHoursBAndReceiptListsWhenBrokerQuotesAreOn)
{
    answer({false, true, true});
    model.initParams();
    for (const auto* list : {&model.m_afterHoursParamsB, &model.m_gdrParams}) {
        EXPECT_EQ(list->indexOf(24), 16);
        EXPECT_EQ(list->indexOf(25), 17);
    }
    for (const auto* list :
         {&model.m_stockParams, &model.m_afterHoursParamsA, &model.m_registeredParamsA, &model.m_registeredParamsB}) {
        EXPECT_FALSE(list->contains(24) || list->contains(25));
    }
}

TEST_F(TodayParamListsTest, shouldKeepTwoSeparatorsBeforeAfterHoursVolumeWhenTypeIsB)
{
    const auto before40 = [](const QList<int>& list) { return listText(list.mid(list.indexOf(1042), 4)); };
    EXPECT_EQ(before40(model.m_afterHoursParamsA), "1042 -1 40 39");
    EXPECT_EQ(before40(model.m_afterHoursParamsB), "1042 -1 -1 40");
}

TEST_F(TodayParamListsTest, shouldShowNoAfterHoursRowsWhenBothAnswersAreYes)
{
    answer({false, true, true});
    model.initParams();
    EXPECT_FALSE(model.m_stockParams.contains(24) || model.m_stockParams.contains(25));
    for (const int id : {1042, 42, 39, 40})
        EXPECT_FALSE(model.m_afterHoursParamsA.contains(id)) << id;
}

TEST_F(TodayParamListsTest, shouldHoldNoBookTotalsWhenLevelTwoIsOff)
{
    inEveryCase([this](const Wishes& wishes) {
        TodayParam fresh;
        fresh.setLevel2(wishes.level2);
        fresh.setLevel2(false);
        withEveryList(fresh, [](const QList<int>& list) {
            for (const int id : {31, 32, 33, 34})
                EXPECT_FALSE(list.contains(id)) << id;
        });
    });
}

TEST_F(TodayParamListsTest, shouldMakeRegisteredListsEqualToStockListWhenBuilt)
{
    inEveryCase([this](const Wishes& wishes) {
        model.setLevel2(wishes.level2);
        EXPECT_EQ(model.m_registeredParamsA, model.m_stockParams);
        EXPECT_EQ(model.m_registeredParamsB, model.m_stockParams);
    });
}

// Market values, status and listing facts are shown in a manner of their own; three rows are in no list.
TEST_F(TodayParamListsTest, shouldNameRowsOfTheTableWhenMarkIsTakenOff)
{
    const std::pair<int, ERealtimeParam> marked[] = {
        {1028, RP_TOTAL_MARKET_VALUE},
        {1029, RP_FLOAT_MARKET_VALUE},
        {1036, RP_REGISTERED_CAPITAL},
        {1037, RP_PROFITABLE},
        {1038, RP_VOTING_RIGHTS},
        {1042, RP_TRADE_STATUS},
        {1047, RP_VIE},
        {1052, RP_ACCRUED_INTEREST},
        {1053, RP_DIRTY_SETTLE},
    };
    for (const auto& [entry, id] : marked)
        EXPECT_EQ(entry - kParamMark, static_cast<int>(id));
    EXPECT_EQ(kParamSeparator, -1);

    std::set<int> shown;
    inEveryCase([&](const Wishes& wishes) {
        model.setLevel2(wishes.level2);
        model.m_stock = terminal.instruments.add(stock("SH", "688001"));
        model.doRegistParams(true);
        withEveryList(model, [&shown](const QList<int>& list) {
            for (const int entry : list)
                shown.insert(entry >= kParamMark ? entry - kParamMark : entry);
        });
    });
    std::set<int> all = {kParamSeparator};
    for (const auto& [id, row] : model.m_params)
        all.insert(id);
    all.erase(RP_COMMISSION_RATIO);
    all.erase(RP_SAME_RIGHTS);
    all.erase(RP_IS_REGISTERED);
    EXPECT_EQ(shown, all);
}

// --- switching the level ------------------------------------------------------------------------------------------

TEST_F(TodayParamListsTest, shouldTellWhetherTheLevelChangedWhenSwitched)
{
    EXPECT_FALSE(model.setLevel2(false));
    EXPECT_TRUE(model.setLevel2(true));
    EXPECT_TRUE(model.m_level2);
    expectLists(model, {true, false, false});
    EXPECT_FALSE(model.setLevel2(true));
    EXPECT_TRUE(model.setLevel2(false));
    EXPECT_FALSE(model.m_level2);
    expectLists(model, {false, false, false});
}

TEST_F(TodayParamListsTest, shouldKeepTheListInForceAndEveryRowWhenLevelIsSwitched)
{
    follow("SZ", "000001", {100003});
    const std::string before = tableText(model);
    model.setLevel2(true);
    EXPECT_EQ(listInForce(model), "stock");
    EXPECT_TRUE(model.m_paramList->contains(33));
    EXPECT_EQ(tableText(model), before);
}

// The listing rows are gone until the next setStock, also when the level was the same already.
TEST_F(TodayParamListsTest, shouldDropListingRowsWhenLevelIsSwitchedEvenToTheSame)
{
    auto registered = stock("SH", "688001", {277});
    registered.listingFlags = 1 << 19;
    follow(registered);
    ASSERT_EQ(model.m_paramList->last(), 1038);
    EXPECT_FALSE(model.setLevel2(false));
    expectLists(model, {false, false, false});
    EXPECT_EQ(textOf(model, RP_VOTING_RIGHTS), "无差异") << "the rows keep their texts";
    model.setStock(keyOf("SH", "688001"));
    EXPECT_EQ(listText(model.m_paramList->mid(model.m_paramList->size() - 3)), "1036 1037 1038");
}

} // namespace
