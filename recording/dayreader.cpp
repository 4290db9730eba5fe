#include "recording/dayfolder.h"
#include "recording/errors.h"
#include "recording/instrumentfile.h"
#include "recording/streamreader.h"
#include "recording/textfile.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

namespace recording {

namespace {

namespace fs = std::filesystem;

struct StreamFile {
    Stream stream;
    fs::path path;
    std::vector<StreamRow> rows;
};

// A file beside the streams that looks like one would be left out in silence: a misspelt name, mostly.
void refuseStrangers(const fs::path& folder)
{
    std::set<std::string> known;
    for (const Stream stream : kAllStreams) {
        known.insert(std::string(streamName(stream)) + ".csv");
        known.insert(std::string(streamName(stream)) + ".csv.zst");
    }
    std::error_code error;
    fs::directory_iterator entries(folder, error);
    if (error)
        throw ReadError({folder}, error.message());
    std::set<fs::path> strangers;
    for (const fs::directory_entry& entry : entries) {
        const std::string name = entry.path().filename().string();
        if ((name.ends_with(".csv") || name.ends_with(".csv.zst")) && known.count(name) == 0)
            strangers.insert(entry.path());
    }
    if (!strangers.empty())
        throw ReadError({*strangers.begin()}, "no stream of a day has this name");
}

// Nothing when the day lacks the stream.
std::optional<StreamFile> readStreamFile(const fs::path& folder, Stream stream, int tradingDay)
{
    const fs::path plain = folder / (std::string(streamName(stream)) + ".csv");
    const fs::path packed = folder / (std::string(streamName(stream)) + ".csv.zst");
    const bool isPlain = fs::exists(plain);
    const bool isPacked = fs::exists(packed);
    if (isPlain && isPacked)
        throw ReadError({packed}, "the stream stands here and in " + plain.filename().string());
    if (!isPlain && !isPacked)
        return std::nullopt;
    const fs::path& path = isPlain ? plain : packed;
    const std::string text = isPlain ? readFile(path) : readCompressedFile(path);
    return StreamFile{stream, path, readStream(stream, text, tradingDay, path)};
}

void checkRowCounts(const InstrumentFile& content, const fs::path& contentFile, const std::vector<StreamFile>& files)
{
    if (!content.rows)
        return;
    auto announced = *content.rows;
    for (const StreamFile& file : files) {
        const auto it = announced.find(streamName(file.stream));
        if (it == announced.end()) {
            throw ReadError({contentFile}, std::string("field \"rows\" lacks the stream ") + streamName(file.stream) +
                                               ", of which there is a file");
        }
        if (it->second != file.rows.size()) {
            throw ReadError({file.path}, std::to_string(file.rows.size()) + " rows where " + kInstrumentFile +
                                             " announces " + std::to_string(it->second));
        }
        announced.erase(it);
    }
    if (!announced.empty()) {
        throw ReadError({contentFile},
                        "field \"rows\" announces " + announced.begin()->first + ", of which there is no file");
    }
}

// Every arrival is its event's place: taken once, and none left over when all rows have found theirs.
std::vector<Event> merge(std::vector<StreamFile>& files)
{
    std::size_t count = 0;
    for (const StreamFile& file : files)
        count += file.rows.size();

    std::vector<Event> events(count);
    for (StreamFile& file : files) {
        for (std::size_t i = 0; i < file.rows.size(); ++i) {
            StreamRow& row = file.rows[i];
            const Place place{file.path, lineOfRow(i), "arrival", 1};
            if (row.arrival >= count) {
                throw ReadError(place, std::to_string(row.arrival) + " in a day of " + std::to_string(count) +
                                           " records: a position before it is missing");
            }
            Event& slot = events[row.arrival];
            if (slot.record || slot.aux) {
                throw ReadError(place, std::to_string(row.arrival) + " stands in " +
                                           std::string(streamName(slot.stream)) + " too");
            }
            slot = std::move(row.event);
        }
    }
    return events;
}

} // namespace

RecordedDay readDay(const fs::path& folder)
{
    refuseStrangers(folder);
    const InstrumentFile content = readInstrumentFile(folder / kInstrumentFile);

    std::vector<StreamFile> files;
    for (const Stream stream : kAllStreams) {
        if (auto file = readStreamFile(folder, stream, content.tradingDay))
            files.push_back(std::move(*file));
    }
    if (files.empty())
        throw ReadError({folder}, "the folder holds no stream of the day");
    checkRowCounts(content, folder / kInstrumentFile, files);

    RecordedDay day;
    day.instrument = content.instrument;
    day.tradingDay = content.tradingDay;
    day.related = content.related;
    for (const StreamFile& file : files)
        day.streams.push_back(file.stream);
    day.events = merge(files);
    return day;
}

} // namespace recording
