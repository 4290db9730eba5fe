#pragma once

#include "indexui/tessimodel/detail/batch.h"
#include "utils/logger.h"

#include <boost/assert/source_location.hpp>

#include <string>

// Lines to the terminal's log, all of them at INFO. Nothing is formatted unless the log is there and takes it.
namespace TC::detail {

// The terminal's log when it is there and admits INFO, else null.
log4cxx::LoggerPtr infoLog();

// Writes "[object] [function] message".
void writeInfo(const log4cxx::LoggerPtr& log, const void* object, const char* function, const std::string& message,
               const boost::source_location& where);

// Writes the line of `object`, whose qualified `function` is given as text; `message` makes its text when it is
// wanted.
template <class Message>
void logInfo(const void* object, const char* function, const Message& message,
             const boost::source_location& where = BOOST_CURRENT_LOCATION)
{
    if (const log4cxx::LoggerPtr log = infoLog())
        writeInfo(log, object, function, message(), where);
}

// The line of the callbacks that post a batch: which instrument, how many records, from when to when. Only for
// batches of two records and more, so that live pushes do not flood the log, and only with an instrument. The
// callbacks run on the data layer's threads: `stock` is a copy made under the model's lock.
//
// Ask isDataReturnLogged first where a copy of the stock costs a lock.
bool isDataReturnLogged(const RecordList& records);
void logDataReturn(const void* object, const char* function, const InstrumentPtr& stock, const RecordList& records,
                   const boost::source_location& where = BOOST_CURRENT_LOCATION);

} // namespace TC::detail
