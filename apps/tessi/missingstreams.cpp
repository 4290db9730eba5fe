#include "apps/tessi/missingstreams.h"

#include <fmt/format.h>

#include <algorithm>

namespace tessi {

std::string missingStreamsText(const recording::RecordedDay& day, const std::vector<recording::Stream>& streams)
{
    std::string text;
    for (const recording::Stream stream : streams) {
        if (std::find(day.streams.begin(), day.streams.end(), stream) != day.streams.end())
            continue;
        text += text.empty() ? "the day has no stream " : ", and none ";
        text += recording::streamName(stream);
    }
    return text;
}

std::string joinedNotes(const std::vector<std::string>& notes)
{
    return fmt::format("{}", fmt::join(notes, "; "));
}

} // namespace tessi
