#include "recording/streamreader.h"

#include "recording/dayspan.h"
#include "recording/errors.h"
#include "recording/slots.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace recording {

namespace {

std::vector<std::string_view> split(std::string_view line)
{
    std::vector<std::string_view> fields;
    for (std::size_t comma = line.find(','); comma != line.npos; comma = line.find(',')) {
        fields.push_back(line.substr(0, comma));
        line.remove_prefix(comma + 1);
    }
    fields.push_back(line);
    return fields;
}

// The slots in the order of the header, which must name `arrival` first and then every column once.
template <class Record>
std::vector<Slot<Record>> slotsOfHeader(std::string_view header, const std::filesystem::path& file)
{
    const std::vector<std::string_view> names = split(header);
    if (names.front() != kArrivalColumn)
        throw ReadError({file, 1}, "the first column must be arrival, not " + inQuotes(names.front()));

    std::vector<Slot<Record>> slots;
    for (std::size_t i = 1; i < names.size(); ++i) {
        const auto named = [&](const Slot<Record>& slot) { return slot.name == names[i]; };
        const auto& all = slotsOf<Record>();
        const auto known = std::find_if(all.begin(), all.end(), named);
        if (known == all.end())
            throw ReadError({file, 1},
                            "unknown column " + inQuotes(names[i]) + " at position " + std::to_string(i + 1));
        if (std::any_of(slots.begin(), slots.end(), named))
            throw ReadError({file, 1}, "column " + known->name + " stands twice");
        slots.push_back(*known);
    }
    for (const Slot<Record>& slot : slotsOf<Record>()) {
        const auto same = [&](const Slot<Record>& other) { return other.name == slot.name; };
        if (std::none_of(slots.begin(), slots.end(), same))
            throw ReadError({file, 1}, "column " + slot.name + " is missing");
    }
    return slots;
}

// What is wrong with a whole field that its parser refused, or left a rest of.
template <class Parse>
std::string faultOf(std::string_view field, Parse&& parse)
{
    if (field.empty())
        return "empty field";
    const std::string closed = std::string(field) + "\n";
    const char* p = closed.data();
    const bool parsed = parse(p, closed.data() + closed.size());
    // A number that is too large is passed over; what is no number is stopped at, at the start of its element.
    const bool isTooLarge = !parsed && p != closed.data() && p[-1] != '|';
    return (isTooLarge ? "out of range: " : "not a number: ") + inQuotes(field);
}

template <class Record>
class StreamParser {
public:
    StreamParser(std::string_view text, int tradingDay, const std::filesystem::path& file)
        : m_p(text.data())
        , m_end(text.data() + text.size())
        , m_day(tradingDay)
        , m_file(file)
    {
        if (text.back() != '\n')
            throw ReadError({m_file, lines(text) + 1}, "the line has no end: the file is cut");
        const std::size_t headerEnd = text.find('\n');
        m_slots = slotsOfHeader<Record>(text.substr(0, headerEnd), file);
        m_timetagIndex = indexOf("timetag");
        m_p += headerEnd + 1;
        m_rows.reserve(lines(text) - 1);
    }

    std::vector<StreamRow> rows(Stream stream)
    {
        while (m_p != m_end) {
            StreamRow row{readArrival(), {stream, nullptr, nullptr}};
            auto record = std::make_shared<Record>();
            readFields(*record);
            if constexpr (std::is_same_v<Record, quoter::QuoteAux>)
                row.event.aux = std::move(record);
            else
                row.event.record = std::move(record);
            m_rows.push_back(std::move(row));
        }
        return std::move(m_rows);
    }

private:
    static std::size_t lines(std::string_view text)
    {
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    }

    std::size_t readArrival()
    {
        m_line = m_p;
        std::size_t arrival = 0;
        if (!parseValue(m_p, m_end, arrival) || *m_p != ',')
            fail(0);
        ++m_p;
        if (!m_rows.empty() && arrival <= m_rows.back().arrival) {
            throw ReadError(place(0), std::to_string(arrival) + " does not rise: the line before has " +
                                          std::to_string(m_rows.back().arrival));
        }
        return arrival;
    }

    void readFields(Record& record)
    {
        const std::size_t last = m_slots.size() - 1;
        for (std::size_t i = 0; i <= last; ++i) {
            if (!m_slots[i].parse(m_p, m_end, record) || *m_p != (i == last ? '\n' : ','))
                fail(i + 1);
            ++m_p;
        }
        if (!m_day.contains(record.timetag)) {
            throw ReadError(place(m_timetagIndex),
                            std::to_string(record.timetag) + " is no time of the trading day " + m_day.text());
        }
    }

    // The position in the line, `arrival` being 0.
    std::size_t indexOf(std::string_view name) const
    {
        const auto named = [name](const Slot<Record>& slot) { return slot.name == name; };
        return static_cast<std::size_t>(std::find_if(m_slots.begin(), m_slots.end(), named) - m_slots.begin()) + 1;
    }

    Place place(std::size_t index) const
    {
        return {m_file, lineOfRow(m_rows.size()), index == 0 ? kArrivalColumn : m_slots[index - 1].name, index + 1};
    }

    // Field `index` of the current line is not what it must be.
    [[noreturn]] void fail(std::size_t index) const
    {
        const char* newline = std::find(m_line, m_end, '\n');
        const std::vector<std::string_view> fields = split({m_line, static_cast<std::size_t>(newline - m_line)});
        if (fields.size() != m_slots.size() + 1) {
            throw ReadError({m_file, lineOfRow(m_rows.size())}, std::to_string(fields.size()) +
                                                                    " columns where the header has " +
                                                                    std::to_string(m_slots.size() + 1));
        }
        if (index == 0) {
            throw ReadError(place(0), faultOf(fields[0], [](const char*& p, const char* end) {
                                std::size_t arrival = 0;
                                return parseValue(p, end, arrival);
                            }));
        }
        const Slot<Record>& slot = m_slots[index - 1];
        Record record;
        const std::string fault =
            faultOf(fields[index], [&](const char*& p, const char* end) { return slot.parse(p, end, record); });
        const char* unheld = slot.fault(record);
        throw ReadError(place(index), unheld ? std::string(unheld) + ": " + inQuotes(fields[index]) : fault);
    }

    const char* m_p;
    const char* const m_end;
    const char* m_line = nullptr;
    const DaySpan m_day;
    const std::filesystem::path& m_file;
    std::size_t m_timetagIndex = 0;
    std::vector<Slot<Record>> m_slots;
    std::vector<StreamRow> m_rows;
};

} // namespace

std::vector<StreamRow> readStream(Stream stream, std::string_view text, int tradingDay,
                                  const std::filesystem::path& file)
{
    return withRecordType(stream, [&]<class Record>(std::type_identity<Record>) {
        return StreamParser<Record>(text, tradingDay, file).rows(stream);
    });
}

} // namespace recording
