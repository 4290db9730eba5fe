#include "recording/instrumentfile.h"

#include "recording/errors.h"
#include "recording/textfile.h"
#include "standin/instrumentjson.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <cstdint>
#include <set>
#include <stdexcept>
#include <utility>

namespace recording {

namespace {

using nlohmann::json;
using standin::InstrumentDescription;

// The days whose seconds since the epoch fit into an int, wherever on earth they are read.
constexpr int kFirstDay = 1970'01'02;
constexpr int kLastDay = 2038'01'18;

const json& required(const json& object, const char* key)
{
    const auto it = object.find(key);
    if (it == object.end())
        throw std::runtime_error(std::string("field \"") + key + "\" is missing");
    return *it;
}

int tradingDayFrom(const json& value)
{
    // Unsigned numbers: what is below 0 is no date, and what is above all dates stays so in 64 bits.
    if (!value.is_number_unsigned() || value.get<std::uint64_t>() > kLastDay || !isTradingDay(value.get<int>()))
        throw std::runtime_error("field \"tradingDay\": not a date from 19700102 to 20380118: " + value.dump());
    return value.get<int>();
}

std::map<std::string, std::size_t> rowsFrom(const json& value)
{
    if (!value.is_object())
        throw std::runtime_error("field \"rows\": not an object");
    std::map<std::string, std::size_t> rows;
    for (const auto& [name, count] : value.items()) {
        if (!count.is_number_unsigned())
            throw std::runtime_error("field \"rows\": not a number of rows: \"" + name + "\": " + count.dump());
        rows[name] = count.get<std::size_t>();
    }
    return rows;
}

// The place of one of the related instruments, counted from 1.
std::string placeInRelated(std::size_t index)
{
    return "field \"related\": instrument " + std::to_string(index + 1) + ": ";
}

// What `convert` makes of each instrument, read or written. A fault names the place too.
template <class To, class From, class Convert>
To convertedRelated(const From& from, Convert convert)
{
    To to;
    for (const auto& instrument : from) {
        try {
            to.push_back(convert(instrument));
        } catch (const std::runtime_error& fault) {
            throw std::runtime_error(placeInRelated(to.size()) + fault.what());
        }
    }
    return to;
}

std::vector<InstrumentDescription> relatedFrom(const json& value)
{
    if (!value.is_array())
        throw std::runtime_error("field \"related\": not an array");
    return convertedRelated<std::vector<InstrumentDescription>>(value, standin::instrumentFromJson);
}

// A second description would silently take the first one's place in the terminal.
void refuseTwice(const InstrumentFile& content)
{
    std::set<std::pair<std::string, std::string>> seen{{content.instrument.market, content.instrument.code}};
    for (std::size_t i = 0; i < content.related.size(); ++i) {
        const InstrumentDescription& instrument = content.related[i];
        if (!seen.emplace(instrument.market, instrument.code).second) {
            throw std::runtime_error(placeInRelated(i) + instrument.market + " " + instrument.code + " stands twice");
        }
    }
}

InstrumentFile contentFrom(const json& object)
{
    if (!object.is_object())
        throw std::runtime_error("not a JSON object");
    for (const auto& [key, value] : object.items()) {
        if (key != "tradingDay" && key != "instrument" && key != "rows" && key != "related")
            throw std::runtime_error("unknown field \"" + key + "\"");
    }
    InstrumentFile content;
    content.tradingDay = tradingDayFrom(required(object, "tradingDay"));
    content.instrument = standin::instrumentFromJson(required(object, "instrument"));
    if (object.contains("rows"))
        content.rows = rowsFrom(object["rows"]);
    if (object.contains("related"))
        content.related = relatedFrom(object["related"]);
    refuseTwice(content);
    return content;
}

} // namespace

InstrumentFile readInstrumentFile(const std::filesystem::path& file)
{
    const std::string text = readFile(file);
    try {
        return contentFrom(standin::parseStrictly(text));
    } catch (const standin::JsonError& fault) {
        throw ReadError({file, fault.line, "", fault.column}, fault.what());
    } catch (const std::exception& fault) {
        throw ReadError({file}, fault.what());
    }
}

std::string instrumentFileText(const InstrumentFile& content)
{
    refuseTwice(content);
    json object;
    object["tradingDay"] = content.tradingDay;
    object["instrument"] = standin::instrumentToJson(content.instrument);
    if (content.rows)
        object["rows"] = *content.rows;
    if (!content.related.empty())
        object["related"] = convertedRelated<json::array_t>(content.related, standin::instrumentToJson);
    return object.dump(2) + "\n";
}

bool isTradingDay(int yyyymmdd)
{
    using namespace std::chrono;
    if (yyyymmdd < kFirstDay || yyyymmdd > kLastDay)
        return false;
    const auto part = [yyyymmdd](int divisor, int modulus) {
        return static_cast<unsigned>(yyyymmdd / divisor % modulus);
    };
    return year_month_day{year{yyyymmdd / 10000}, month{part(100, 100)}, day{part(1, 100)}}.ok();
}

} // namespace recording
