#pragma once

#include "standin/instrumentdescription.h"
#include "terminal_api.h"

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

// Instruments as JSON: an object with the fields of InstrumentDescription by name. Maps are objects whose names
// are the numbers ({"2008": 5}), `types` is an array. Market and code are required; a field that is left out has its
// default.
namespace standin {

// A text that is no strict JSON. Line and column count from 1, the column in bytes; the text goes without them.
class TERMINAL_API JsonError : public std::runtime_error {
public:
    JsonError(std::size_t atLine, std::size_t atColumn, const std::string& fault);
    ~JsonError() override;

    const std::size_t line;
    const std::size_t column;
};

// JSON in which no object has two fields of one name: elsewhere the later one silently replaces the earlier.
// Throws JsonError.
TERMINAL_API nlohmann::json parseStrictly(const std::string& text);

// All fields, those with their default too. Throws std::runtime_error that names a field which JSON cannot hold
// (a number that is not finite).
TERMINAL_API nlohmann::json instrumentToJson(const InstrumentDescription& instrument);

// Throws std::runtime_error that names the field which is missing, unknown, or of the wrong type or range: market
// and code are not empty and the market holds no ':', the price tick is above 0 and the zero price threshold not
// below 0.
TERMINAL_API InstrumentDescription instrumentFromJson(const nlohmann::json& json);

// A file with one description or an array of them. Throws std::runtime_error that begins with the path, followed by
// line and column of what is no strict JSON, or by the instrument's place in the array and the field at fault.
TERMINAL_API std::vector<InstrumentDescription> readInstruments(const std::string& path);

} // namespace standin
