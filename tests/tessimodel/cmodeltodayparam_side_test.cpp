#include "tests/tessimodel/todayparam.h"

#include <algorithm>
#include <cfloat>
#include <climits>

namespace {

using namespace tests;
using namespace TC;

// What comes in beside the quotes: inner and outer volume, the average, listing facts, phases in words.
class TodayParamSideTest : public TodayParamTest {
protected:
    // "10.00 ic_clr_entrust_default_text"
    std::string row(ERealtimeParam id) const { return textOf(model, id) + " " + colourOf(model, id); }
};

// --- inner and outer volume ---------------------------------------------------------------------------------------

TEST_F(TodayParamSideTest, shouldShorten100000AndMoreWhenInnerAndOuterAreSet)
{
    const std::pair<qint64, const char*> volumes[] = {
        {0, "0"},
        {1, "1"},
        {9999, "9999"},
        {12345, "12345"},
        {99999, "99999"},
        {100000, "10.00万"},
        {100001, "10.00万"},
        {123456, "12.35万"},
        {123456789, "1.23亿"},
        {5000000000, "50.00亿"},
        {LLONG_MAX, "9223372.04万亿"},
        {-1, "-1"},
        {-123456, "-123456"},
        {LLONG_MIN, "-9223372036854775808"},
    };
    for (const auto& [volume, text] : volumes) {
        EXPECT_TRUE(model.setDishData(volume, 7));
        EXPECT_EQ(row(RP_INNER), text + (" " + kFall));
        EXPECT_EQ(row(RP_OUTER), "7 " + kRise);
        EXPECT_TRUE(model.setDishData(8, volume));
        EXPECT_EQ(row(RP_INNER), "8 " + kFall);
        EXPECT_EQ(row(RP_OUTER), text + (" " + kRise));
    }
    EXPECT_TRUE(model.setDishData(99999, 100000));
    EXPECT_EQ(filledText(model), "24 99999\n25 10.00万\n");
}

// --- the average --------------------------------------------------------------------------------------------------

TEST_F(TodayParamSideTest, shouldColourTheAverageByTheLastCloseWhenSet)
{
    follow("SH", "600001");
    const std::pair<double, std::string> averages[] = {
        {10.126, "10.13 " + kRise}, {9.99, "9.99 " + kFall}, {10, "10.00 " + kEqual},  {10.000005, "10.00 " + kEqual},
        {0, "0.00 " + kFall},       {-1, "-1.00 " + kFall},  {DBL_MAX, "-- " + kRise}, {-DBL_MAX, "-- " + kFall},
    };
    for (const auto& [average, text] : averages) {
        model.setAveragePrice(average);
        EXPECT_EQ(row(RP_AVERAGE), text) << average;
    }
    model.setLastClose(9);
    model.setAveragePrice(9.5);
    EXPECT_EQ(row(RP_AVERAGE), "9.50 " + kRise) << "against the base of now";
}

TEST_F(TodayParamSideTest, shouldShowTheAverageWhenWithoutInstrument)
{
    model.setAveragePrice(10.126);
    EXPECT_EQ(row(RP_AVERAGE), "10.126 " + kFall);
    EXPECT_EQ(filledText(model), "1 10.126\n");
}

TEST_F(TodayParamSideTest, shouldLeaveTheAverageWhenValueIsNotFinite)
{
    follow("SH", "600001");
    for (const double value : {kNaN, kInfinity, -kInfinity}) {
        model.setAveragePrice(10.5);
        const std::string before = tableText(model);
        model.setAveragePrice(value);
        EXPECT_EQ(tableText(model), before) << value;
    }
    EXPECT_EQ(row(RP_AVERAGE), "10.50 " + kRise);
}

// A snapshot brings no average: the panel works it out and uses the other overload.
TEST_F(TodayParamSideTest, shouldWriteNothingWhenAverageIsToComeFromASnapshot)
{
    follow("SH", "600001");
    model.history({level1("09:30:00").last(10).volume(5)});
    const auto quoter = level1("09:30:03").last(10.5).volume(500).amount(5250).iopv(10.4);
    std::shared_ptr<quoter::QuoterAllData>(quoter)->rawVolume = 500;
    const Records records = {nullptr, order(1).buy(10), quoter, level2("09:30:03").last(10.5).volume(500).amount(5250),
                             brokerLevel1("09:30:03").last(10.5).volume(500).amount(5250).limits(11, 9)};
    for (const char* average : {"", "10.10"}) {
        model.m_params[RP_AVERAGE].text = average;
        const std::string before = tableText(model);
        const auto last = model.m_lastAll;
        for (const auto& record : records)
            model.setAveragePrice(record);
        EXPECT_EQ(tableText(model), before);
        EXPECT_EQ(model.m_lastAll, last);
        EXPECT_EQ(model.m_lastDepth, nullptr);
        EXPECT_EQ(model.m_lastContinuous, nullptr);
        EXPECT_EQ(model.m_tradeCount, 1);
        EXPECT_EQ(model.m_history.size(), 1U);
        EXPECT_TRUE(model.m_pendingAux.empty());
        EXPECT_EQ(model.m_lastClose, 10);
    }
}

// --- listing facts ------------------------------------------------------------------------------------------------

struct ListingRow {
    const char* name;
    ParamList list;
    const char* without; // what is left of kMixed
    const char* added;   // what is put behind it
};

// All listing rows twice, in between, first and last; and their like without the mark and next to them.
const QList<int> kMixed = {1038, 0,    1036, 1037, 1047, 36,   37, 38,   47,
                           1036, 1035, 1039, 1046, 1048, 1047, -1, 1038, 1037};

using M = CModelTodayParam;
const ListingRow kListings[] = {
    {"afterHoursA", &M::m_afterHoursParamsA, "0 1047 36 37 38 47 1035 1039 1046 1048 1047 -1", " 1036 1037 1038"},
    {"afterHoursB", &M::m_afterHoursParamsB, "0 36 37 38 47 1035 1039 1046 1048 -1", " 1036 1037 1038 1047"},
    {"registeredA", &M::m_registeredParamsA, "0 1036 36 37 38 47 1036 1035 1039 1046 1048 -1", " 1037 1038 1047"},
    {"registeredB", &M::m_registeredParamsB, "0 1036 1047 36 37 38 47 1036 1035 1039 1046 1048 1047 -1", " 1038 1037"},
};

bool hasListingRows(ParamList list)
{
    return std::any_of(std::begin(kListings), std::end(kListings),
                       [list](const auto& row) { return row.list == list; });
}

TEST_F(TodayParamSideTest, shouldTakeOutEveryListingRowAndAppendThemWhenRegistered)
{
    follow("SH", "688001");
    for (const auto& [name, list] : kParamLists)
        model.*list = kMixed;
    for (const bool registered : {true, true, false, false, true}) {
        model.doRegistParams(registered);
        for (const ListingRow& row : kListings)
            EXPECT_EQ(listText(model.*row.list), std::string(row.without) + (registered ? row.added : "")) << row.name;
    }
    for (const auto& [name, list] : kParamLists) {
        if (!hasListingRows(list)) {
            EXPECT_EQ(model.*list, kMixed) << name;
        }
    }
}

TEST_F(TodayParamSideTest, shouldEndInListingRowsWhenInstrumentIsUnderRegistrationRules)
{
    const auto ends = [this](bool registered) {
        auto instrument = stock("SH", "688001");
        instrument.listingFlags = registered ? 1 << 19 : ~(1 << 19);
        follow(instrument);
        std::string text;
        for (const ListingRow& row : kListings) {
            const QList<int>& list = model.*row.list;
            text += std::string(row.name) + " " + listText(list.mid(list.indexOf(1029))) + "; ";
        }
        return text;
    };
    const std::string without = "afterHoursA 1029; afterHoursB 1029; registeredA 1029; registeredB 1029; ";
    EXPECT_EQ(ends(false), without);
    EXPECT_EQ(ends(true), "afterHoursA 1029 1036 1037 1038; afterHoursB 1029 1036 1037 1038 1047; "
                          "registeredA 1029 1037 1038 1047; registeredB 1029 1038 1037; ");
    EXPECT_EQ(ends(true), "afterHoursA 1029 1036 1037 1038; afterHoursB 1029 1036 1037 1038 1047; "
                          "registeredA 1029 1037 1038 1047; registeredB 1029 1038 1037; ");
    EXPECT_EQ(ends(false), without);
}

TEST_F(TodayParamSideTest, shouldAppendListingRowsAndTellNothingWhenThereIsNoInstrument)
{
    for (const ListingRow& row : kListings)
        model.*row.list = kMixed;
    model.doRegistParams(true);
    for (const ListingRow& row : kListings)
        EXPECT_EQ(listText(model.*row.list), std::string(row.without) + row.added) << row.name;
    EXPECT_EQ(filledText(model), "");
    model.doRegistParams(false);
    EXPECT_EQ(filledText(model), "");
}

// The opposite of the other lists.
TEST_F(TodayParamSideTest, shouldShowVotingRightsBeforeProfitWhenRegisteredB)
{
    follow("SH", "688001");
    model.doRegistParams(true);
    EXPECT_LT(model.m_registeredParamsB.indexOf(1038), model.m_registeredParamsB.indexOf(1037));
    for (const ParamList list : {&M::m_afterHoursParamsA, &M::m_afterHoursParamsB, &M::m_registeredParamsA})
        EXPECT_LT((model.*list).indexOf(1037), (model.*list).indexOf(1038));
}

TEST_F(TodayParamSideTest, shouldTellListingFactsWhenRegistered)
{
    struct Row {
        int flags;
        const char* votingRights;
        const char* profitable;
    };
    const Row rows[] = {
        {0, "无差异", "未盈利"},
        {1 << 1, "无差异", "已盈利"},
        {1 << 4, "存在差异", "未盈利"},
        {1 << 1 | 1 << 4, "存在差异", "已盈利"},
        {~(1 << 1 | 1 << 4), "无差异", "未盈利"},
        {-1, "存在差异", "已盈利"},
    };
    for (const Row& expected : rows) {
        auto instrument = stock("SH", "688001");
        instrument.listingFlags = expected.flags | 1 << 19;
        follow(instrument);
        EXPECT_EQ(row(RP_VOTING_RIGHTS), expected.votingRights + (" " + kPlain)) << expected.flags;
        EXPECT_EQ(row(RP_PROFITABLE), expected.profitable + (" " + kPlain)) << expected.flags;

        instrument.listingFlags = ~instrument.listingFlags & ~(1 << 19);
        follow(instrument);
        EXPECT_EQ(row(RP_VOTING_RIGHTS), expected.votingRights + (" " + kPlain)) << "the old text stays";
        EXPECT_EQ(row(RP_PROFITABLE), expected.profitable + (" " + kPlain));
    }
}

// --- phases in words ----------------------------------------------------------------------------------------------

TEST(QuoteStatus, shouldBeToldInWordsWhenAnyNumberIsGiven)
{
    const std::pair<int, const char*> phases[] = {
        {INT_MIN, "未知"}, {-2, "未知"},         {-1, "未知"},         {0, "未知"},
        {1, "停牌"},       {2, "未知"},          {3, "未知"},          {4, "未知"},
        {5, "未知"},       {6, "未知"},          {7, "未知"},          {8, "未知"},
        {9, "未知"},       {10, "未知"},         {11, "开盘前"},       {12, "开盘集合竞价"},
        {13, "连续交易"},  {14, "休市"},         {15, "竞价交易收盘"}, {16, "波动性中断"},
        {17, "临时停牌"},  {18, "收盘集合竞价"}, {19, "盘中集合竞价"}, {20, "暂停交易至闭市"},
        {21, "状态异常"},  {22, "盘后定价交易"}, {23, "收盘"},         {24, "收盘"},
        {25, "收盘"},      {26, "收盘"},         {27, "收盘"},         {28, "收盘"},
        {29, "收盘"},      {30, "收盘"},         {123456, "收盘"},     {INT_MAX, "收盘"},
    };
    for (const auto& [status, text] : phases)
        EXPECT_EQ(quoteStatusToQString(status).toStdString(), text) << status;
}

} // namespace
