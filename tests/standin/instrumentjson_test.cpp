#include "Formula/stockmanager.h"
#include "standin/instrumentjson.h"
#include "standin/terminal.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <rapidcheck.h>

#include <cfloat>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <stdexcept>

namespace {

using nlohmann::json;
using standin::InstrumentDescription;
using standin::instrumentFromJson;
using standin::instrumentToJson;
using testing::HasSubstr;
using testing::StartsWith;

std::string errorOf(const json& from)
{
    try {
        instrumentFromJson(from);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "no error";
}

json minimal()
{
    return {{"market", "SZ"}, {"code", "000001"}};
}

json with(const std::string& field, const json& value)
{
    json from = minimal();
    from[field] = value;
    return from;
}

bool knows(const std::string& market, const std::string& code)
{
    return utils::CSingletonT<TC::CStockManager>::instance()->getInstrumentDetail(market, code) != nullptr;
}

// A file in a folder of its own, gone with the test.
class InstrumentFile : public testing::Test {
protected:
    void SetUp() override
    {
        const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
        m_folder = std::filesystem::temp_directory_path() / ("instruments-" + std::string(test->name()));
        std::filesystem::create_directories(m_folder);
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    std::string write(const std::string& text)
    {
        const std::string path = m_folder / "instruments.json";
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    // What is said after the path.
    std::string loadError(const std::string& text)
    {
        const std::string path = write(text);
        try {
            terminal.instruments.load(path);
        } catch (const std::runtime_error& error) {
            EXPECT_THAT(error.what(), StartsWith(path));
            return std::string(error.what()).substr(path.size());
        }
        return "no error";
    }

    standin::Terminal terminal;
    std::filesystem::path m_folder;
};

} // namespace

TEST(InstrumentJson, shouldGiveDefaultsWhenOnlyMarketAndCodeAreThere)
{
    InstrumentDescription expected;
    expected.market = "SZ";
    expected.code = "000001";
    EXPECT_EQ(instrumentFromJson(minimal()), expected);
}

TEST(InstrumentJson, shouldReadEveryFieldWhenWrittenByHand)
{
    const InstrumentDescription read = instrumentFromJson(json::parse(R"({
        "market": "SH", "code": "600519", "name": "贵州茅台", "lastClose": 10, "upStopPrice": 11.5,
        "downStopPrice": 9.5, "priceTick": 0.2, "zeroPriceThreshold": 0.005, "classBits": 4294967295,
        "listingFlags": -2147483648, "types": [126, 277], "isIndex": true, "hasHGT": true, "hasSGT": true,
        "gdrCode": "GDR", "intFields": {"2008": 5, "-1": 2}, "doubleFields": {"3002": 1.5},
        "lastCloses": {"1675180800": 9.9}})"));
    InstrumentDescription expected;
    expected.market = "SH";
    expected.code = "600519";
    expected.name = "贵州茅台";
    expected.lastClose = 10;
    expected.upStopPrice = 11.5;
    expected.downStopPrice = 9.5;
    expected.priceTick = 0.2;
    expected.zeroPriceThreshold = 0.005;
    expected.classBits = 4294967295;
    expected.listingFlags = std::numeric_limits<int>::min();
    expected.types = {126, 277};
    expected.isIndex = true;
    expected.hasHGT = true;
    expected.hasSGT = true;
    expected.gdrCode = "GDR";
    expected.intFields = {{2008, 5}, {-1, 2}};
    expected.doubleFields = {{3002, 1.5}};
    expected.lastCloses = {{1675180800, 9.9}};
    EXPECT_EQ(read, expected);
}

TEST(InstrumentJson, shouldGiveTheSameInstrumentWhenWrittenAndRead)
{
    const auto finite = [](double value) { return std::isfinite(value) ? value : 0.1; };
    EXPECT_TRUE(rc::check([&finite](unsigned bits, int flags, const std::set<int>& types, bool isIndex,
                                    const std::map<int, int>& ints, std::map<int, double> doubles, double price) {
        InstrumentDescription written;
        written.market = "SZ";
        written.code = "000001";
        written.lastClose = finite(price);
        written.classBits = bits;
        written.listingFlags = flags;
        written.types = types;
        written.isIndex = isIndex;
        written.intFields = ints;
        for (auto& [id, value] : doubles)
            value = finite(value);
        written.doubleFields = doubles;
        RC_ASSERT(instrumentFromJson(json::parse(instrumentToJson(written).dump())) == written);
    }));
}

TEST(InstrumentJson, shouldNameFieldWhenItCannotBeRead)
{
    const std::vector<std::pair<json, std::string>> cases = {
        {json::array(), "an instrument must be an object"},
        {{{"code", "1"}}, "field \"market\" is missing"},
        {{{"market", "SZ"}}, "field \"code\" is missing"},
        {with("market", ""), "field \"market\" must not be empty"},
        {with("market", "S:Z"), "field \"market\" must not hold a ':'"},
        {with("code", ""), "field \"code\" must not be empty"},
        {with("code", 1), "field \"code\" must be a text"},
        {with("lastclose", 1), "field \"lastclose\" is unknown"},
        {with("lastClose", "1"), "field \"lastClose\" must be a finite number"},
        {with("lastClose", nullptr), "field \"lastClose\" must be a finite number"},
        {with("lastClose", INFINITY), "field \"lastClose\" must be a finite number"},
        {with("priceTick", 0), "field \"priceTick\" must be above 0"},
        {with("priceTick", -0.01), "field \"priceTick\" must be above 0"},
        {with("zeroPriceThreshold", -0.1), "field \"zeroPriceThreshold\" must not be below 0"},
        {with("isIndex", 1), "field \"isIndex\" must be true or false"},
        {with("classBits", -1), "field \"classBits\" is out of range: -1"},
        {with("classBits", 4294967296), "field \"classBits\" is out of range: 4294967296"},
        {with("listingFlags", 2147483648), "field \"listingFlags\" is out of range: 2147483648"},
        {with("listingFlags", std::numeric_limits<std::uint64_t>::max()),
         "field \"listingFlags\" is out of range: 18446744073709551615"},
        {with("listingFlags", 1.5), "field \"listingFlags\" must be a whole number"},
        {with("types", 277), "field \"types\" must be an array of whole numbers"},
        {with("types", {"277"}), "field \"types\" must be a whole number"},
        {with("intFields", json::array()), "field \"intFields\" must be an object"},
        {with("intFields", {{"x", 1}}), "field \"intFields\" has a name that is no whole number: \"x\""},
        {with("intFields", {{"07", 1}}), "field \"intFields\" has a name that is no whole number: \"07\""},
        {with("intFields", {{"7", 1.5}}), "field \"intFields.7\" must be a whole number"},
        {with("doubleFields", {{"3002", true}}), "field \"doubleFields.3002\" must be a finite number"},
    };
    for (const auto& [from, message] : cases)
        EXPECT_EQ(errorOf(from), message) << from;
}

TEST(InstrumentJson, shouldNameFieldWhenItCannotBeWritten)
{
    InstrumentDescription description;
    description.upStopPrice = INFINITY;
    EXPECT_THROW(instrumentToJson(description), std::runtime_error);
    description.upStopPrice = DBL_MAX;
    EXPECT_NO_THROW(instrumentToJson(description));
    description.doubleFields[3002] = NAN;
    try {
        instrumentToJson(description);
        ADD_FAILURE() << "NaN was written";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "field \"doubleFields.3002\" is not finite");
    }
}

TEST_F(InstrumentFile, shouldAddAllWhenFileHoldsOneOrSeveral)
{
    terminal.instruments.load(write(minimal().dump()));
    EXPECT_TRUE(knows("SZ", "000001"));
    terminal.instruments.load(write(R"([{"market": "SH", "code": "1"}, {"market": "SH", "code": "2"}])"));
    EXPECT_TRUE(knows("SH", "1"));
    EXPECT_TRUE(knows("SH", "2"));
    EXPECT_NO_THROW(terminal.instruments.load(write("[]")));
}

TEST_F(InstrumentFile, shouldNameLineAndColumnWhenSyntaxIsWrong)
{
    EXPECT_THAT(loadError("[\n  {\"market\": \"SH\",\n   \"code\" 1}\n]"), StartsWith(":3:11: "));
    EXPECT_THAT(loadError("x"), StartsWith(":1:1: "));
    EXPECT_THAT(loadError("[]\n]"), StartsWith(":2:1: "));
    EXPECT_THAT(loadError("{\"market\": \"S\xff\"}"), StartsWith(":1:14: "));
    EXPECT_THAT(loadError("[\n"), StartsWith(":2:1: "));
}

TEST_F(InstrumentFile, shouldNamePlaceAndFieldAndAddNoneWhenOneIsWrong)
{
    EXPECT_EQ(loadError(R"([{"market": "SH", "code": "1"}, {"market": "SH"}])"),
              ": instrument 2: field \"code\" is missing");
    EXPECT_FALSE(knows("SH", "1"));
    EXPECT_EQ(loadError(R"([{"market": "SH", "code": "1"}, {"market": "SH", "code": "1"}])"),
              ": instrument 2: SH 1 stands twice");
    EXPECT_EQ(loadError(R"({"market": "SH", "code": "1", "code": "2"})"), ":1:31: field \"code\" stands twice");
    EXPECT_EQ(loadError("{\"market\": \"SH\",\n \"a\\\"b\": 1,\n \"a\\\"b\": 2}"), ":3:2: field \"a\"b\" stands twice");
    EXPECT_THAT(loadError(R"({"market": "SH", "code": "1", "lastClose": 1e999})"),
                StartsWith(":1:49: number overflow"));
}

TEST_F(InstrumentFile, shouldNameFileWhenItCannotBeRead)
{
    EXPECT_EQ(loadError(""), ": cannot be read, or is empty");
    EXPECT_THROW(terminal.instruments.load("/no/such/file.json"), std::runtime_error);
    EXPECT_THROW(terminal.instruments.load(m_folder), std::runtime_error);
}
