#pragma once

#include "recording/columns.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

// One slot per CSV column of a record: an array field has one for each element. The reader and the writer walk
// the same table, so that what is written is what is read.
namespace recording {

template <class Record>
struct Slot {
    std::string name;

    // Reads a value at `p`, which must stand before a separator that ends it; moves `p` behind what was read.
    // False when there is no value of the field's type.
    bool (*parse)(const char*& p, const char* end, Record& record);

    void (*append)(std::string& line, const Record& record);

    // Why the format cannot hold the record's value, which parse refuses too; null when it can.
    const char* (*fault)(const Record& record);
};

// `arrival` too is a column, the first one, though no field of the record.
inline constexpr char kArrivalColumn[] = "arrival";

template <class Number>
bool parseValue(const char*& p, const char* end, Number& value)
{
    const auto [next, fault] = std::from_chars(p, end, value);
    p = next;
    return fault == std::errc{};
}

// A list without elements is an empty field.
template <class Number>
bool parseValue(const char*& p, const char* end, std::vector<Number>& values)
{
    if (*p == ',' || *p == '\n')
        return true;
    while (true) {
        Number value{};
        if (!parseValue(p, end, value))
            return false;
        values.push_back(value);
        if (*p != '|')
            return true;
        ++p;
    }
}

// Shortest text that reads back to the same bits.
template <class Number>
void appendValue(std::string& line, Number value)
{
    std::array<char, 32> text;
    const auto [end, fault] = std::to_chars(text.data(), text.data() + text.size(), value);
    line.append(text.data(), fault == std::errc{} ? end : text.data());
}

template <class Number>
void appendValue(std::string& line, const std::vector<Number>& values)
{
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i > 0)
            line += '|';
        appendValue(line, values[i]);
    }
}

// Prices and amounts are finite (DBL_MAX stands for none), volumes not below 0; a list holds only such.
template <bool IsVolume, class Number>
const char* faultOfValue(Number value)
{
    if constexpr (std::is_floating_point_v<Number>)
        return std::isfinite(value) ? nullptr : "not finite";
    else
        return IsVolume && value < 0 ? "a volume below 0" : nullptr;
}

template <bool IsVolume, class Number>
const char* faultOfValue(const std::vector<Number>& values)
{
    for (const Number value : values) {
        if (const char* fault = faultOfValue<IsVolume>(value))
            return fault;
    }
    return nullptr;
}

template <bool IsVolume, class Value>
bool parseHeld(const char*& p, const char* end, Value& value)
{
    return parseValue(p, end, value) && !faultOfValue<IsVolume>(value);
}

namespace detail {

template <class Record, std::size_t Index>
inline constexpr bool kIsVolume = std::get<Index>(Columns<Record>::kAll).isVolume;

template <class Record, std::size_t Index>
using FieldType =
    std::remove_reference_t<decltype(std::declval<Record&>().*std::get<Index>(Columns<Record>::kAll).member)>;

template <class Record, std::size_t Index>
Slot<Record> fieldSlot()
{
    return {std::get<Index>(Columns<Record>::kAll).name,
            [](const char*& p, const char* end, Record& record) {
                return parseHeld<kIsVolume<Record, Index>>(p, end,
                                                           record.*std::get<Index>(Columns<Record>::kAll).member);
            },
            [](std::string& line, const Record& record) {
                appendValue(line, record.*std::get<Index>(Columns<Record>::kAll).member);
            },
            [](const Record& record) {
                return faultOfValue<kIsVolume<Record, Index>>(record.*std::get<Index>(Columns<Record>::kAll).member);
            }};
}

template <class Record, std::size_t Index, std::size_t Element>
Slot<Record> elementSlot()
{
    return {std::get<Index>(Columns<Record>::kAll).name + std::to_string(Element),
            [](const char*& p, const char* end, Record& record) {
                return parseHeld<kIsVolume<Record, Index>>(
                    p, end, (record.*std::get<Index>(Columns<Record>::kAll).member)[Element]);
            },
            [](std::string& line, const Record& record) {
                appendValue(line, (record.*std::get<Index>(Columns<Record>::kAll).member)[Element]);
            },
            [](const Record& record) {
                return faultOfValue<kIsVolume<Record, Index>>(
                    (record.*std::get<Index>(Columns<Record>::kAll).member)[Element]);
            }};
}

template <class Record, std::size_t Index, std::size_t... Elements>
void addElements(std::vector<Slot<Record>>& slots, std::index_sequence<Elements...>)
{
    (slots.push_back(elementSlot<Record, Index, Elements>()), ...);
}

template <class Record, std::size_t Index>
void addColumn(std::vector<Slot<Record>>& slots)
{
    using Type = FieldType<Record, Index>;
    if constexpr (std::is_array_v<Type>)
        addElements<Record, Index>(slots, std::make_index_sequence<std::extent_v<Type>>{});
    else
        slots.push_back(fieldSlot<Record, Index>());
}

template <class Record, std::size_t... Indices>
std::vector<Slot<Record>> makeSlots(std::index_sequence<Indices...>)
{
    std::vector<Slot<Record>> slots;
    (addColumn<Record, Indices>(slots), ...);
    return slots;
}

} // namespace detail

// The slots of a record in declared order, without `arrival`.
template <class Record>
const std::vector<Slot<Record>>& slotsOf()
{
    constexpr std::size_t kFields = std::tuple_size_v<decltype(Columns<Record>::kAll)>;
    static const std::vector<Slot<Record>> slots = detail::makeSlots<Record>(std::make_index_sequence<kFields>{});
    return slots;
}

} // namespace recording
