#include "luawrapper/luamodulectrl.h"
#include "tests/tessimodel/figuredstock.h"
#include "tests/tessimodel/todayparam.h"

#include <cfloat>

namespace {

using namespace tests;
using namespace TC;

// What the signed-in user is entitled to, and an instrument. The market is "SH" unless said otherwise.
struct FlagRow {
    const char* what;
    std::set<int> types;
    const char* entitled = ""; // "module", "rules", "bonds", or several
    const char* flags = "";    // the flags that are up
    std::string market = "SH";
    unsigned classBits = 0;
    std::string gdrCode = {};
};

const FlagRow kFlags[] = {
    {"an ordinary stock", {}, "module rules bonds", ""},

    {"block-trade convertible", {135}, "module", "newRuleBond"},
    {"block-trade convertible", {10019}, "module", "newRuleBond"},
    {"without the module", {135}, "rules bonds", ""},
    {"without the module", {10019}, "rules bonds", ""},
    {"neighbouring types", {134, 136, 10018, 10020}, "module", ""},

    {"bond by its class", {}, "", "bond", "SH", kBondClass},
    {"other bits around the class", {}, "", "bond", "SH", kBondClass | 0xfc0fffff},
    {"class 0", {}, "", "", "SH", 0xfc0fffff},
    {"class 5", {}, "", "", "SH", 5U << 20},
    {"class 12", {}, "", "", "SH", 12U << 20},
    {"class 36", {}, "", "", "SH", 36U << 20},
    {"class 1", {}, "", "", "SH", 1U << 20},
    {"4 one bit lower", {}, "", "", "SH", 4U << 19},
    {"4 one bit higher", {}, "", "", "SH", 4U << 21},
    {"bond by the older types alone", {100016, 126}, "", ""},

    {"fund with a net value", {100013}, "", "iopvFund"},
    {"neighbouring types", {100012, 100014}, "", ""},

    {"after-hours trading of type A", {277}, "", "afterHoursA"},
    {"neighbouring types", {276, 278}, "", ""},

    {"options of Shanghai", {}, "", "option", "SHO"},
    {"options of Shenzhen", {}, "", "option", "SZO"},
    {"market that begins alike", {}, "", "", "SHOX"},
    {"market that ends alike", {}, "", "", "XSZO"},
    {"market in small letters", {}, "", "", "sho"},
    {"market of the stocks", {}, "", "", "SZ"},

    {"after-hours trading of type B", {10006}, "", "afterHoursB"},
    {"neighbouring types", {10005, 10007}, "", ""},

    {"registered A", {10004}, "rules", "registeredA"},
    {"registered A without the rules", {10004}, "module bonds", ""},
    {"neighbouring types", {10003, 10005}, "rules", ""},

    {"Hong Kong", {}, "", "hk", "HK"},
    {"market that only begins with HK", {}, "", "", "HKX"},
    {"market that only ends with HK", {}, "", "", "XHK"},
    {"market in small letters", {}, "", "", "hk"},
    {"first letter", {}, "", "", "H"},

    {"with a receipt", {}, "", "gdr", "SH", 0, "HTSC"},

    {"registered B of type 101", {101}, "rules", "registeredB"},
    {"type 101 without the rules", {101}, "module bonds", ""},
    {"type 101 that is of type 277", {101, 277}, "rules", "afterHoursA"},
    {"type 101 with after-hours trading of type B", {101, 10006}, "rules", "afterHoursB registeredB"},
    {"registered B of type 196", {196}, "rules", "registeredB"},
    {"type 196 without the rules", {196}, "module bonds", ""},
    {"type 196 that is of type 277", {196, 277}, "rules", "afterHoursA registeredB"},
    {"types 101 and 196", {101, 196}, "rules", "registeredB"},
    {"types 101, 196 and 277", {101, 196, 277}, "rules", "afterHoursA registeredB"},
    {"neighbouring types", {100, 102, 195, 197}, "rules", ""},

    {"everything that goes together",
     {135, 100013, 277, 10006, 10004, 196},
     "module rules bonds",
     "newRuleBond bond iopvFund afterHoursA option afterHoursB registeredA gdr registeredB",
     "SZO",
     kBondClass,
     "HTSC"},
};

class TodayParamFlagsTest : public TodayParamTest {
protected:
    void entitle(const std::string& to)
    {
        const auto isIn = [&to](const char* name) { return to.find(name) != std::string::npos; };
        terminal.answers.setModule(luawrapper::kModuleBlockTradeConvertibleBond, isIn("module"));
        terminal.answers.setBoardNewRules(isIn("rules"));
        terminal.answers.setNewBondsAuth(isIn("bonds"));
    }

    // Its code tells whether there is a receipt.
    static standin::InstrumentDescription instrument(const FlagRow& row)
    {
        auto description = stock(row.market, row.gdrCode.empty() ? "600001" : "601688", row.types);
        description.classBits = row.classBits;
        description.gdrCode = row.gdrCode;
        return description;
    }

    // Everything of the instrument kind that can be up at once, all up.
    void followEverything()
    {
        entitle("module rules bonds");
        follow(instrument({"", {135, 100013, 277, 10006, 10004, 196}, "", "", "SHO", kBondClass, "HTSC"}));
    }
};

TEST_F(TodayParamFlagsTest, shouldRaiseEveryFlagByItsOwnTestWhenInstrumentIsKnown)
{
    for (const FlagRow& row : kFlags) {
        SCOPED_TRACE(std::string(row.what) + ", expected: " + row.flags);
        entitle(row.entitled);
        const auto detail = terminal.instruments.add(instrument(row));
        TodayParam fresh;
        fresh.setStock(keyOf(detail->market, detail->code));
        EXPECT_EQ(flagsText(fresh), row.flags);
        EXPECT_EQ(fresh.m_stock, detail);
    }
}

// The flags are those of the instrument alone: what was followed before leaves no trace.
TEST_F(TodayParamFlagsTest, shouldRaiseTheSameFlagsWhenAnotherInstrumentWasFollowed)
{
    for (const FlagRow& row : kFlags) {
        SCOPED_TRACE(std::string(row.what) + ", expected: " + row.flags);
        followEverything();
        terminal.instruments.add(stock("HK", "00700"));
        model.setStock(keyOf("HK", "00700"));
        entitle(row.entitled);
        follow(instrument(row));
        EXPECT_EQ(flagsText(model), row.flags);
    }
}

TEST_F(TodayParamFlagsTest, shouldRaiseNoFlagOfTheUsersRulesWhenSignedOut)
{
    entitle("module rules bonds");
    terminal.answers.setSignedIn(false);
    follow("SH", "600001", {10004, 101, 196});
    EXPECT_EQ(flagsText(model), "");
    follow("SH", "600001", {135, 10004});
    EXPECT_EQ(flagsText(model), "newRuleBond") << "modules are not the user's";
}

TEST_F(TodayParamFlagsTest, shouldAskForTheConvertibleModuleAloneWhenOthersAreEntitled)
{
    terminal.answers.setModule("block_trade", true);
    terminal.answers.setModule("", true);
    follow("SH", "113001", {135});
    EXPECT_EQ(flagsText(model), "");
}

TEST_F(TodayParamFlagsTest, shouldTakeTickAndLastCloseFromTheInstrumentWhenKnown)
{
    auto bond = stock("SH", "113001");
    bond.priceTick = 0.005;
    bond.lastClose = 101.5;
    follow(bond);
    EXPECT_EQ(model.m_priceTick, 0.005);
    EXPECT_EQ(model.m_lastClose, 101.5);
}

TEST_F(TodayParamFlagsTest, shouldStandWithoutInstrumentWhenKeyIsUnknown)
{
    followEverything();
    ASSERT_EQ(flagsText(model), "newRuleBond bond iopvFund afterHoursA option afterHoursB registeredA gdr registeredB");
    model.setStock("nobody knows this");
    EXPECT_EQ(model.m_stock, nullptr);
    EXPECT_EQ(flagsText(model), "");
    EXPECT_EQ(model.m_priceTick, 0.001);
    EXPECT_EQ(model.m_lastClose, DBL_MAX);
    EXPECT_EQ(listInForce(model), "default");

    follow("HK", "00700");
    ASSERT_EQ(flagsText(model), "hk");
    model.setStock("");
    EXPECT_EQ(flagsText(model), "");
}

// --- hands or quantities ---------------------------------------------------------------------------------------------

struct LoanRow {
    const char* what;
    std::set<int> types;
    const char* name;
    bool isNewLoan;
};

const LoanRow kLoans[] = {
    {"of the loan type", {100016}, "22国债01", true},
    {"of the loan type whatever the name", {100016}, "中银转债", true},
    {"of the loan type with an empty name", {100016}, "", true},
    {"of the loan type, but convertible", {100016, 135}, "22国债01", false},
    {"of the loan type, but convertible", {100016, 10019}, "22国债01", false},
    {"a plain bond by its name", {100005}, "22国债01", true},
    {"a name of that character alone", {100005}, "债", true},
    {"a bond by its name, convertible by its types", {100005, 135, 10019}, "22国债01", true},
    {"both ways, one of them convertible", {100016, 100005, 135}, "22国债01", true},
    {"no bond by its name", {100005}, "贵州茅台", false},
    {"an empty name", {100005}, "", false},
    {"the name without the type", {}, "22国债01", false},
    {"neighbouring types", {100004, 100006, 100015, 100017}, "22国债01", false},

    // Convertibles are counted in hands. The first character alone makes them bonds, so the exception is needed, and it
    // looks at the name without its blanks, since names are padded to a width.
    {"a convertible by its name", {100005}, "中银转债", false},
    {"a name that is the two characters alone", {100005}, "转债", false},
    {"a convertible with a blank between", {100005}, "中银转 债", false},
    {"a convertible with blanks everywhere", {100005}, " 转  债 ", false},
    {"a convertible of both types", {100005, 100016}, "中银转债", false},
    {"a tab is no blank", {100005}, "中银转\t债", true},
    {"the wide blank is no blank", {100005}, "中银转　债", true},
    {"the two characters the other way round", {100005}, "中债转", true},
    {"the two characters apart", {100005}, "转股债", true},
};

class TodayParamLoanTest : public TodayParamFlagsTest {
protected:
    void followLoan(const LoanRow& row)
    {
        auto bond = stock("SH", "113001", row.types);
        bond.name = row.name;
        follow(bond);
    }

    // "总手 ic_clr_entrust_amount, 现手 ic_clr_modulegroup_default_text"
    std::string labels() const
    {
        const auto row = [this](ERealtimeParam id) { return labelOf(model, id) + " " + colourOf(model, id); };
        return row(RP_TOTAL_VOLUME) + ", " + row(RP_CURRENT_VOLUME);
    }

    // Labels and keys that nobody gives these rows.
    void disturbLabels()
    {
        for (const auto id : {RP_TOTAL_VOLUME, RP_CURRENT_VOLUME}) {
            model.m_params[id].label = "?";
            model.m_params[id].colorKey = "?";
        }
    }
};

constexpr const char* kHands = "总手 ic_clr_entrust_amount, 现手 ic_clr_modulegroup_default_text";
constexpr const char* kPieces = "总量 ic_clr_entrust_amount, 现量 ic_clr_modulegroup_default_text";

TEST_F(TodayParamLoanTest, shouldCountInPiecesWhenABondIsUnderTheNewRules)
{
    entitle("bonds");
    for (const LoanRow& row : kLoans) {
        SCOPED_TRACE(std::string(row.what) + ": " + row.name);
        disturbLabels();
        followLoan(row);
        EXPECT_EQ(model.m_isNewLoan, row.isNewLoan);
        EXPECT_EQ(labels(), row.isNewLoan ? kPieces : kHands);
    }
}

TEST_F(TodayParamLoanTest, shouldCountInHandsWhenUserIsNotEntitled)
{
    for (const bool signedIn : {true, false}) {
        entitle(signedIn ? "module rules" : "module rules bonds");
        terminal.answers.setSignedIn(signedIn);
        for (const LoanRow& row : kLoans) {
            SCOPED_TRACE(std::string(row.what) + ": " + row.name);
            disturbLabels();
            followLoan(row);
            EXPECT_FALSE(model.m_isNewLoan);
            EXPECT_EQ(labels(), kHands);
        }
    }
}

TEST_F(TodayParamLoanTest, shouldCountInHandsAgainWhenNextKeyIsUnknown)
{
    entitle("bonds");
    followLoan(kLoans[0]);
    ASSERT_EQ(labels(), kPieces);
    model.setStock("nobody knows this");
    EXPECT_FALSE(model.m_isNewLoan);
    EXPECT_EQ(labels(), kHands);

    disturbLabels();
    model.setStock("nobody knows this");
    EXPECT_EQ(labels(), kHands) << "also when there was none before";
}

// No other label is ever changed, and of the keys of these rows none but the two.
TEST_F(TodayParamLoanTest, shouldChangeNoOtherLabelWhenUnitChanges)
{
    entitle("bonds");
    std::map<ERealtimeParam, SRealtimeParam> before = TodayParam().m_params;
    before[RP_TOTAL_VOLUME].label = "总量";
    before[RP_CURRENT_VOLUME].label = "现量";
    followLoan(kLoans[0]);
    for (const auto& [id, row] : model.m_params) {
        EXPECT_EQ(row.label.toStdString(), before[id].label.toStdString());
        EXPECT_EQ(row.colorKey.toStdString(), before[id].colorKey.toStdString()) << id;
    }
}

} // namespace
