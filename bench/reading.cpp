#include "bench/reading.h"

#include "exchange/simulator.h"
#include "recording/dayfolder.h"
#include "recording/recordedday.h"

#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

namespace {

// A day on disk that goes with the last measurement that uses it.
class DayOnDisk {
public:
    DayOnDisk()
    {
        std::string name = (std::filesystem::temp_directory_path() / "tessi-bench-XXXXXX").string();
        if (!mkdtemp(name.data()))
            throw std::runtime_error("no folder for the day");
        m_parent = name;
        exchange::SimulationOptions options;
        options.ordersPerDay = 300;
        const recording::RecordedDay day = exchange::simulateDay(options);
        m_rows = static_cast<int>(day.events.size());
        recording::writeDay(day, folder(), recording::Compression::None);
    }

    ~DayOnDisk()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_parent, ignored);
    }

    DayOnDisk(const DayOnDisk&) = delete;
    DayOnDisk& operator=(const DayOnDisk&) = delete;

    std::filesystem::path folder() const { return m_parent / "day"; }
    int rows() const { return m_rows; }

private:
    std::filesystem::path m_parent;
    int m_rows = 0;
};

bool isDouble(const std::string& column)
{
    for (const char* part : {"rice", "open", "high", "low", "lastClose", "amount", "iopv"}) {
        if (column.find(part) != std::string::npos)
            return true;
    }
    return false;
}

std::string bytesOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::string bytes(std::filesystem::file_size(file), '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

template <class Number>
const char* convert(const char* p, const char* end, double& sum)
{
    Number number{};
    const auto [next, fault] = std::from_chars(p, end, number);
    if (fault != std::errc{})
        return p;
    sum += static_cast<double>(number);
    return next;
}

// Sums all numbers of a CSV file; the sum keeps the compiler from leaving the conversions out.
double sumOf(const std::string& bytes)
{
    const char* p = bytes.data();
    const char* const end = p + bytes.size();
    std::vector<bool> doubles;
    for (std::string column; p != end; ++p) {
        if (*p != ',' && *p != '\n') {
            column += *p;
            continue;
        }
        doubles.push_back(isDouble(column));
        column.clear();
        if (*p == '\n')
            break;
    }

    double sum = 0;
    std::size_t column = 0;
    for (++p; p < end; ++p) {
        p = doubles[column] ? convert<double>(p, end, sum) : convert<long long>(p, end, sum);
        if (*p == ',')
            ++column;
        else if (*p == '\n')
            column = 0;
    }
    return sum;
}

// Reads a recorded day from disk; one operation is a row, a line of any of its streams.
Body prepareReadDay()
{
    auto day = std::make_shared<DayOnDisk>();
    return {[day](int times) {
        int rows = 0;
        for (; rows < times; rows += day->rows())
            recording::readDay(day->folder());
        return rows;
    }};
}

// The same files with the least that has to be done: read the bytes, split them, convert each number.
Body prepareBareLoop()
{
    auto day = std::make_shared<DayOnDisk>();
    return {[day](int times) {
        volatile double sum = 0;
        int rows = 0;
        for (; rows < times; rows += day->rows()) {
            for (const auto& file : std::filesystem::directory_iterator(day->folder())) {
                if (file.path().extension() == ".csv")
                    sum = sum + sumOf(bytesOf(file));
            }
        }
        return rows;
    }};
}

} // namespace

std::vector<Operation> readingOperations()
{
    return {
        {"read_day_row", prepareReadDay},
        {"bare_loop_row", prepareBareLoop},
    };
}

} // namespace bench
