#pragma once

#include "recording/recordedday.h"

#include <filesystem>
#include <string>
#include <vector>

namespace recording {

// A day from the CSV files that the exchanges' level-2 data are delivered in. All *.csv of the folder belong to the
// day and are told apart by their headers, whatever their names:
//
//     Shenzhen  orders, trades with cancels, snapshots, order queue; UTF-8 or GBK
//     Shanghai  orders, trades, snapshots, tied together by BizIndex
//
// docs/recorded-days.md tells what becomes of each column. The Shanghai files carry no date: `tradingDay` (yyyymmdd)
// gives it, or else the first run of eight digits in the folder's name that is a date.
//
// Throws ReadError with file, physical line and column for a row that is not as the layout has it, and for a file
// of no known layout. A folder without one of the files makes a day that lacks the stream.
//
// What is well formed but does not fit together across the files (a trade of an order that is nowhere, a traded volume
// that is not the last snapshot's) is taken as it was delivered and told in `notes`, when given: a file may have been
// cut.
RecordedDay importDay(const std::filesystem::path& folder, int tradingDay = 0,
                      std::vector<std::string>* notes = nullptr);

} // namespace recording
