#include "standin/instrumentjson.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace standin {

using nlohmann::json;

namespace {

[[noreturn]] void fail(const std::string& field, const std::string& what)
{
    throw std::runtime_error("field \"" + field + "\" " + what);
}

std::string memberName(std::string field, const std::string& name)
{
    return field.append(".").append(name);
}

// All fields by name, for reading and writing alike.
template <class Description, class Visitor>
void visitFields(Description& instrument, Visitor& visit)
{
    visit("market", instrument.market);
    visit("code", instrument.code);
    visit("name", instrument.name);
    visit("lastClose", instrument.lastClose);
    visit("upStopPrice", instrument.upStopPrice);
    visit("downStopPrice", instrument.downStopPrice);
    visit("priceTick", instrument.priceTick);
    visit("zeroPriceThreshold", instrument.zeroPriceThreshold);
    visit("classBits", instrument.classBits);
    visit("listingFlags", instrument.listingFlags);
    visit("types", instrument.types);
    visit("isIndex", instrument.isIndex);
    visit("hasHGT", instrument.hasHGT);
    visit("hasSGT", instrument.hasSGT);
    visit("gdrCode", instrument.gdrCode);
    visit("intFields", instrument.intFields);
    visit("doubleFields", instrument.doubleFields);
    visit("lastCloses", instrument.lastCloses);
}

template <class Value>
json numbered(const std::map<int, Value>& values)
{
    json object = json::object();
    for (const auto& [id, value] : values)
        object[std::to_string(id)] = value;
    return object;
}

struct FieldWriter {
    json object = json::object();

    template <class Value>
    void operator()(const char* name, const Value& value)
    {
        object[name] = value;
    }

    void operator()(const char* name, double value)
    {
        if (!std::isfinite(value))
            fail(name, "is not finite");
        object[name] = value;
    }

    void operator()(const char* name, const std::map<int, int>& values) { object[name] = numbered(values); }

    void operator()(const char* name, const std::map<int, double>& values)
    {
        for (const auto& [id, value] : values) {
            if (!std::isfinite(value))
                fail(memberName(name, std::to_string(id)), "is not finite");
        }
        object[name] = numbered(values);
    }
};

void readValue(const std::string& field, const json& from, std::string& to)
{
    if (!from.is_string())
        fail(field, "must be a text");
    to = from.get<std::string>();
}

void readValue(const std::string& field, const json& from, bool& to)
{
    if (!from.is_boolean())
        fail(field, "must be true or false");
    to = from.get<bool>();
}

void readValue(const std::string& field, const json& from, double& to)
{
    if (!from.is_number() || !std::isfinite(from.get<double>()))
        fail(field, "must be a finite number");
    to = from.get<double>();
}

template <class Integer>
void readInteger(const std::string& field, const json& from, Integer& to)
{
    if (!from.is_number_integer())
        fail(field, "must be a whole number");
    const bool inRange = from.is_number_unsigned() ? std::in_range<Integer>(from.get<json::number_unsigned_t>())
                                                   : std::in_range<Integer>(from.get<json::number_integer_t>());
    if (!inRange)
        fail(field, "is out of range: " + from.dump());
    to = from.get<Integer>();
}

void readValue(const std::string& field, const json& from, int& to)
{
    readInteger(field, from, to);
}

void readValue(const std::string& field, const json& from, unsigned& to)
{
    readInteger(field, from, to);
}

void readValue(const std::string& field, const json& from, std::set<int>& to)
{
    if (!from.is_array())
        fail(field, "must be an array of whole numbers");
    for (const json& element : from) {
        int value = 0;
        readInteger(field, element, value);
        to.insert(value);
    }
}

int readId(const std::string& field, const std::string& text)
{
    int id = 0;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, id);
    // "007" and "7" would be one id under two names.
    if (error != std::errc() || last != end || std::to_string(id) != text)
        fail(field, "has a name that is no whole number: \"" + text + "\"");
    return id;
}

template <class Value>
void readValue(const std::string& field, const json& from, std::map<int, Value>& to)
{
    if (!from.is_object())
        fail(field, "must be an object");
    for (const auto& [name, element] : from.items())
        readValue(memberName(field, name), element, to[readId(field, name)]);
}

struct FieldReader {
    const json& object;
    std::set<std::string> known = {};

    template <class Value>
    void operator()(const char* name, Value& value)
    {
        known.insert(name);
        const auto field = object.find(name);
        if (field != object.end())
            readValue(name, *field, value);
    }
};

void checkRanges(const InstrumentDescription& instrument)
{
    if (instrument.market.empty())
        fail("market", "must not be empty");
    if (instrument.market.find(':') != std::string::npos)
        fail("market", "must not hold a ':'");
    if (instrument.code.empty())
        fail("code", "must not be empty");
    if (instrument.priceTick <= 0)
        fail("priceTick", "must be above 0");
    if (instrument.zeroPriceThreshold < 0)
        fail("zeroPriceThreshold", "must not be below 0");
}

} // namespace

json instrumentToJson(const InstrumentDescription& instrument)
{
    FieldWriter writer;
    visitFields(instrument, writer);
    return writer.object;
}

InstrumentDescription instrumentFromJson(const json& from)
{
    if (!from.is_object())
        throw std::runtime_error("an instrument must be an object");
    for (const char* name : {"market", "code"}) {
        if (!from.contains(name))
            fail(name, "is missing");
    }
    InstrumentDescription instrument;
    FieldReader reader{from};
    visitFields(instrument, reader);
    for (const auto& [name, value] : from.items()) {
        if (!reader.known.contains(name))
            fail(name, "is unknown");
    }
    checkRanges(instrument);
    return instrument;
}

} // namespace standin
