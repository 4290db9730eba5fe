#include "indexui/tessimodel/detail/log.h"

#include "utils/timeutils.h"

#include <fmt/format.h>
#include <log4cxx/level.h>

namespace TC::detail {

namespace {

constexpr int kInfo = 20000;

// A null record in a batch shows as time 0.
__int64 shownTime(const quoter::QuoterBasePtr& record)
{
    return record ? utils::millisecondsToTime(record->timetag) : 0;
}

} // namespace

log4cxx::LoggerPtr infoLog()
{
    // One copy for test and use. The logger's own level may be unset: then a parent's counts.
    log4cxx::LoggerPtr log = utils::g_ZTStdLogger;
    return log && log->getEffectiveLevel()->toInt() <= kInfo ? log : nullptr;
}

void writeInfo(const log4cxx::LoggerPtr& log, const void* object, const char* function, const std::string& message,
               const boost::source_location& where)
{
    const log4cxx::LevelPtr level = log4cxx::Level::toLevel(kInfo);
    if (!level)
        return;
    const std::string line = fmt::format("[{0}] [{1}] {2}", object, function, message);
    const log4cxx::spi::LocationInfo location(where.file_name(),
                                              log4cxx::spi::LocationInfo::calcShortFileName(where.file_name()),
                                              where.function_name(), static_cast<int>(where.line()));
    log->forcedLog(level, line, location);
}

bool isDataReturnLogged(const RecordList& records)
{
    return records.size() >= 2 && infoLog();
}

void logDataReturn(const void* object, const char* function, const InstrumentPtr& stock, const RecordList& records,
                   const boost::source_location& where)
{
    if (!isDataReturnLogged(records) || !stock)
        return;
    const auto message = [&] {
        return fmt::format("data return, key: {0}_{1}, count: {2}, range: {3}-{4}", stock->market, stock->code,
                           records.size(), shownTime(records.front()), shownTime(records.back()));
    };
    logInfo(object, function, message, where);
}

} // namespace TC::detail
