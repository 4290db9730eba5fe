#include "standin/instrumentjson.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>

namespace standin {

using nlohmann::json;

namespace {

// Walks a text and tells how far the parser has come, which the parser itself tells only of syntax errors.
class WatchedIterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    WatchedIterator(const char* at, const char*& reached)
        : m_at(at)
        , m_reached(&reached)
    {}
    reference operator*() const { return *m_at; }
    WatchedIterator& operator++()
    {
        *m_reached = ++m_at;
        return *this;
    }
    bool operator==(const WatchedIterator& other) const { return m_at == other.m_at; }

private:
    const char* m_at;
    const char** m_reached;
};

JsonError errorAt(std::string_view text, std::size_t at, const std::string& fault)
{
    const std::string_view before = text.substr(0, at);
    const std::size_t lineBegin = before.rfind('\n') + 1; // 0 on the first line, as npos + 1 is
    const auto newlines = std::count(before.begin(), before.end(), '\n');
    return {static_cast<std::size_t>(newlines) + 1, before.size() - lineBegin + 1, fault};
}

// Where the name begins whose closing quote is the last character of `text`.
std::size_t beginOfName(std::string_view text)
{
    std::size_t quote = text.rfind('"', text.size() - 2);
    while (quote > 0 && text[quote - 1] == '\\')
        quote = text.rfind('"', quote - 1);
    return quote;
}

// The library's own text, without the kind of exception and the place that stand before it.
std::string faultOf(const json::exception& error, std::string_view before)
{
    const std::string what = error.what();
    const std::size_t end = what.find(before);
    return end == what.npos ? what : what.substr(end + before.size());
}

} // namespace

JsonError::JsonError(std::size_t atLine, std::size_t atColumn, const std::string& fault)
    : std::runtime_error(fault)
    , line(atLine)
    , column(atColumn)
{}

JsonError::~JsonError() = default;

json parseStrictly(const std::string& text)
{
    const char* const begin = text.data();
    const char* reached = begin;
    const auto position = [&] { return static_cast<std::size_t>(reached - begin); };
    std::vector<std::set<std::string>> names;
    const auto watch = [&](int, json::parse_event_t event, const json& parsed) {
        if (event == json::parse_event_t::object_start)
            names.emplace_back();
        else if (event == json::parse_event_t::object_end)
            names.pop_back();
        else if (event == json::parse_event_t::key && !names.back().insert(parsed.get<std::string>()).second)
            throw errorAt(text, beginOfName(std::string_view(text).substr(0, position())),
                          "field \"" + parsed.get<std::string>() + "\" stands twice");
        return true;
    };
    try {
        return json::parse(WatchedIterator(begin, reached), WatchedIterator(begin + text.size(), reached), watch);
    } catch (const json::parse_error& error) {
        throw errorAt(text, error.byte > 0 ? error.byte - 1 : 0, faultOf(error, ": "));
    } catch (const json::exception& error) {
        throw errorAt(text, position() > 0 ? position() - 1 : 0, faultOf(error, "] "));
    }
}

} // namespace standin
