#include "recording/errors.h"

#include <system_error>
#include <utility>

namespace recording {

namespace {

std::string placed(const Place& place, const std::string& fault)
{
    std::string text = place.file.string();
    if (place.line > 0)
        text.append(":").append(std::to_string(place.line));
    if (place.position > 0 && place.column.empty())
        text.append(":").append(std::to_string(place.position));
    text += ": ";
    if (!place.column.empty())
        text.append("column ").append(place.column).append(" (").append(std::to_string(place.position)).append("): ");
    return text + fault;
}

} // namespace

ReadError::ReadError(Place where, const std::string& what)
    : std::runtime_error(placed(where, what))
    , place(std::move(where))
    , fault(what)
{}

WriteError::WriteError(std::filesystem::path path, const std::string& reason)
    : std::runtime_error(path.string() + ": " + reason)
    , file(std::move(path))
{}

std::string inQuotes(std::string_view text)
{
    constexpr std::size_t kLongest = 40;
    constexpr char kDigits[] = "0123456789abcdef";
    std::string out = "\"";
    for (const char c : text.substr(0, kLongest)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7f)
            out += c;
        else
            out += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return out + (text.size() > kLongest ? "...\"" : "\"");
}

std::string systemReason(int error)
{
    return std::generic_category().message(error);
}

} // namespace recording
