#include "recording/dayfolder.h"
#include "recording/dayspan.h"
#include "recording/errors.h"
#include "recording/instrumentfile.h"
#include "recording/slots.h"
#include "recording/textfile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <typeinfo>
#include <unistd.h>

namespace recording {

namespace {

namespace fs = std::filesystem;

// A folder of its own beside the target, gone again unless it became the target.
class TemporaryFolder {
public:
    explicit TemporaryFolder(const fs::path& target)
    {
        std::error_code error;
        for (int attempt = 0;; ++attempt) {
            m_path = target.parent_path() / ("." + target.filename().string() + ".part-" + std::to_string(getpid()) +
                                             "-" + std::to_string(attempt));
            if (fs::create_directory(m_path, error))
                return;
            if (error)
                throw WriteError(target, error.message());
        }
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        if (!m_path.empty())
            fs::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const fs::path& path() const { return m_path; }

    // Never onto something that is there: a plain rename would take the place of an empty folder.
    void become(const fs::path& target)
    {
        int failed = renameat2(AT_FDCWD, m_path.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE);
        if (failed && errno == EINVAL) // a file system that does not know the flag
            failed = std::rename(m_path.c_str(), target.c_str());
        if (failed)
            throw WriteError(target, systemReason(errno));
        m_path.clear();
    }

private:
    fs::path m_path;
};

// The event's record, when it is exactly what the stream holds: a derived record has fields without a column.
template <class Record>
const Record* recordOf(const Event& event)
{
    if constexpr (std::is_same_v<Record, quoter::QuoteAux>) {
        return event.aux.get();
    } else {
        const quoter::QuoterBase* record = event.record.get();
        return record && typeid(*record) == typeid(Record) ? static_cast<const Record*>(record) : nullptr;
    }
}

struct StreamText {
    std::string text;
    std::size_t rows = 0;
};

template <class Record>
StreamText textOf(const RecordedDay& day, Stream stream, const fs::path& file)
{
    const DaySpan span(day.tradingDay);
    StreamText out{kArrivalColumn, 0};
    for (const Slot<Record>& slot : slotsOf<Record>())
        out.text += "," + slot.name;
    out.text += '\n';
    for (std::size_t arrival = 0; arrival < day.events.size(); ++arrival) {
        const Event& event = day.events[arrival];
        if (event.stream != stream)
            continue;
        const Record* record = recordOf<Record>(event);
        if (!record) {
            throw WriteError(file, "event " + std::to_string(arrival) + " has no record of the type of stream " +
                                       streamName(stream));
        }
        if (!span.contains(record->timetag)) {
            throw WriteError(file, "event " + std::to_string(arrival) + " has a time stamp, " +
                                       std::to_string(record->timetag) + ", that is no time of the trading day " +
                                       span.text());
        }
        appendValue(out.text, arrival);
        for (const Slot<Record>& slot : slotsOf<Record>()) {
            if (const char* fault = slot.fault(*record)) {
                throw WriteError(file, "event " + std::to_string(arrival) + ": " + slot.name + " is " + fault);
            }
            out.text += ',';
            slot.append(out.text, *record);
        }
        out.text += '\n';
        ++out.rows;
    }
    return out;
}

// What the file cannot hold is an error of the day, not of the program.
std::string contentText(const InstrumentFile& content, const fs::path& file)
{
    try {
        return instrumentFileText(content);
    } catch (const std::exception& fault) {
        throw WriteError(file, fault.what());
    }
}

bool hasStream(const RecordedDay& day, Stream stream)
{
    return std::find(day.streams.begin(), day.streams.end(), stream) != day.streams.end();
}

void refuseUnlisted(const RecordedDay& day, const fs::path& folder)
{
    for (std::size_t arrival = 0; arrival < day.events.size(); ++arrival) {
        if (!hasStream(day, day.events[arrival].stream)) {
            throw WriteError(folder, "event " + std::to_string(arrival) + " is of stream " +
                                         streamName(day.events[arrival].stream) + ", which the day does not list");
        }
    }
}

} // namespace

void writeDay(const RecordedDay& day, const fs::path& folder, Compression compression)
{
    // "day/" and "day" are one folder; "" stands for no parent.
    const fs::path target = fs::absolute(folder.has_filename() ? folder : folder.parent_path());
    std::error_code error;
    if (fs::symlink_status(target, error).type() != fs::file_type::not_found)
        throw WriteError(target, error ? error.message() : systemReason(EEXIST));
    if (!isTradingDay(day.tradingDay))
        throw WriteError(target, "the trading day is no date of a recorded day: " + std::to_string(day.tradingDay));
    if (day.streams.empty())
        throw WriteError(target, "the day has no stream");
    refuseUnlisted(day, target);

    TemporaryFolder part(target);
    InstrumentFile content{day.tradingDay, day.instrument, std::map<std::string, std::size_t>{}, day.related};
    for (const Stream stream : kAllStreams) {
        if (!hasStream(day, stream))
            continue;
        const bool packs = compression == Compression::Zstd;
        const std::string name = std::string(streamName(stream)) + (packs ? ".csv.zst" : ".csv");
        const StreamText out = withRecordType(stream, [&]<class Record>(std::type_identity<Record>) {
            return textOf<Record>(day, stream, folder / name);
        });
        writeFile(part.path() / name, packs ? compressed(out.text) : out.text, folder / name);
        (*content.rows)[streamName(stream)] = out.rows;
    }
    const fs::path named = folder / kInstrumentFile;
    writeFile(part.path() / kInstrumentFile, contentText(content, named), named);
    part.become(target);
}

} // namespace recording
