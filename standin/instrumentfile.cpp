#include "standin/instrumentjson.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <utility>

namespace standin {

using nlohmann::json;

namespace {

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    // A folder opens, but does not read.
    if (!file.is_open() || file.bad() || text.empty())
        throw std::runtime_error(path + ": cannot be read, or is empty");
    return text;
}

json parseFile(const std::string& path)
{
    try {
        return parseStrictly(readFile(path));
    } catch (const JsonError& error) {
        throw std::runtime_error(path + ":" + std::to_string(error.line) + ":" + std::to_string(error.column) + ": " +
                                 error.what());
    }
}

} // namespace

std::vector<InstrumentDescription> readInstruments(const std::string& path)
{
    json file = parseFile(path);
    if (!file.is_array())
        file = json::array({std::move(file)});

    std::vector<InstrumentDescription> instruments;
    std::set<std::pair<std::string, std::string>> seen;
    int place = 0;
    for (const json& element : file) {
        ++place;
        try {
            instruments.push_back(instrumentFromJson(element));
            if (!seen.emplace(instruments.back().market, instruments.back().code).second)
                throw std::runtime_error(instruments.back().market + " " + instruments.back().code + " stands twice");
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(path + ": instrument " + std::to_string(place) + ": " + error.what());
        }
    }
    return instruments;
}

} // namespace standin
