#include "standin/log.h"

#include "standin/reset.h"
#include "utils/logger.h"

#include <log4cxx/appenderskeleton.h>
#include <log4cxx/helpers/transcoder.h>
#include <log4cxx/hierarchy.h>
#include <log4cxx/spi/loggingevent.h>

#include <memory>
#include <mutex>
#include <stdexcept>

namespace utils {

log4cxx::LoggerPtr g_ZTStdLogger;

} // namespace utils

namespace standin {

namespace {

std::string functionOf(const log4cxx::spi::LocationInfo& location)
{
    const std::string owner = location.getClassName();
    return owner.empty() ? location.getMethodName() : owner + "::" + location.getMethodName();
}

// Keeps lines in memory.
class MemoryAppender : public log4cxx::AppenderSkeleton {
public:
    std::vector<Log::Line> lines() const
    {
        const std::lock_guard lock(m_linesMutex);
        return m_lines;
    }

    void forget()
    {
        const std::lock_guard lock(m_linesMutex);
        m_lines.clear();
    }

    void close() override {}
    bool requiresLayout() const override { return false; }

protected:
    void append(const log4cxx::spi::LoggingEventPtr& event, log4cxx::helpers::Pool&) override
    {
        const log4cxx::spi::LocationInfo& location = event->getLocationInformation();
        Log::Line line;
        line.level = event->getLevel()->toInt();
        log4cxx::helpers::Transcoder::encodeUTF8(event->getMessage(), line.text);
        line.file = location.getFileName() ? location.getFileName() : "";
        line.function = functionOf(location);
        line.line = location.getLineNumber();
        const std::lock_guard lock(m_linesMutex);
        m_lines.push_back(line);
    }

private:
    mutable std::mutex m_linesMutex;
    std::vector<Log::Line> m_lines;
};

// A hierarchy of its own, so that no log4cxx configuration of the process reaches it.
struct MemoryLog {
    log4cxx::HierarchyPtr hierarchy = log4cxx::Hierarchy::create();
    log4cxx::LoggerPtr parent = hierarchy->getLogger("terminal");
    log4cxx::LoggerPtr logger = hierarchy->getLogger("terminal.std");
    std::shared_ptr<MemoryAppender> appender = std::make_shared<MemoryAppender>();

    MemoryLog() { parent->addAppender(appender); }

    // Never destroyed, so that whoever kept the logger can write until the very end.
    static MemoryLog& instance()
    {
        static MemoryLog& log = *new MemoryLog;
        return log;
    }
};

} // namespace

void Log::setLevel(int level)
{
    const log4cxx::LevelPtr known = log4cxx::Level::toLevel(level, nullptr);
    if (!known)
        throw std::invalid_argument(std::to_string(level) + " is no log level");
    MemoryLog::instance().parent->setLevel(known);
}

void Log::unset()
{
    utils::g_ZTStdLogger = nullptr;
}

void Log::set()
{
    utils::g_ZTStdLogger = MemoryLog::instance().logger;
}

std::vector<Log::Line> Log::lines() const
{
    return MemoryLog::instance().appender->lines();
}

void Log::forget()
{
    MemoryLog::instance().appender->forget();
}

void startLog()
{
    Log log;
    log.forget();
    log.setLevel(log4cxx::Level::INFO_INT);
    log.set();
}

void endLog()
{
    Log log;
    log.unset();
    log.forget();
}

} // namespace standin
