#include "recording/importday.h"

#include "recording/errors.h"
#include "recording/importparts.h"
#include "recording/instrumentfile.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <set>
#include <string>

namespace recording {

namespace {

namespace fs = std::filesystem;

// A file is known by the columns that no other file of the layouts has.
std::optional<SourceKind> kindOf(const SourceTable& table)
{
    if (table.has("交易所委托号"))
        return SourceKind::ShenzhenOrders;
    if (table.has("成交编号"))
        return SourceKind::ShenzhenTrades;
    if (table.has("申卖价1"))
        return SourceKind::ShenzhenSnapshots;
    if (table.has("订单明细"))
        return SourceKind::ShenzhenQueues;
    if (table.has("OrderNO") && table.has("BizIndex"))
        return SourceKind::ShanghaiOrders;
    if (table.has("TradeBuyNo") && table.has("BizIndex"))
        return SourceKind::ShanghaiTrades;
    if (table.has("InstruStatus"))
        return SourceKind::ShanghaiSnapshots;
    return std::nullopt;
}

bool isShanghai(SourceKind kind)
{
    return kind == SourceKind::ShanghaiOrders || kind == SourceKind::ShanghaiTrades ||
           kind == SourceKind::ShanghaiSnapshots;
}

bool isCsv(const fs::path& file)
{
    std::string name = file.filename().string();
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    for (const char* packed : {".csv.zst", ".csv.gz", ".csv.xz", ".csv.zip", ".csv.bz2", ".csv.7z"}) {
        if (name.ends_with(packed))
            throw ReadError({file}, "a compressed file: unpack it first");
    }
    return name.ends_with(".csv");
}

SourceFiles openSources(const fs::path& folder)
{
    std::error_code error;
    fs::directory_iterator entries(folder, error);
    if (error)
        throw ReadError({folder}, error.message());
    std::set<fs::path> paths; // sorted: the same folder gives the same error everywhere
    for (const fs::directory_entry& entry : entries) {
        if (isCsv(entry.path()))
            paths.insert(entry.path());
    }

    SourceFiles files;
    for (const fs::path& path : paths) {
        SourceTable table(path);
        const auto kind = kindOf(table);
        if (!kind)
            throw ReadError({path, 1}, "the header is of no known layout");
        if (!files.empty() && isShanghai(files.begin()->first) != isShanghai(*kind))
            throw ReadError({path, 1}, "a layout of another exchange than the files before it");
        const auto [it, isNew] = files.emplace(*kind, std::move(table));
        if (!isNew)
            throw ReadError({path, 1}, "the same kind of file as " + it->second.file().filename().string());
    }
    if (files.empty())
        throw ReadError({folder}, "the folder holds no CSV file");
    return files;
}

// The first run of exactly eight digits that is a date; 0 when there is none.
int dateInName(const std::string& name)
{
    constexpr std::size_t kDateLength = 8;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    for (auto it = name.begin(); it != name.end();) {
        const auto begin = std::find_if(it, name.end(), isDigit);
        const auto end = std::find_if_not(begin, name.end(), isDigit);
        int date = 0;
        if (end - begin == kDateLength)
            std::from_chars(&*begin, &*begin + kDateLength, date);
        if (isTradingDay(date))
            return date;
        it = end;
    }
    return 0;
}

} // namespace

RecordedDay importDay(const fs::path& folder, int tradingDay, std::vector<std::string>* notes)
{
    SourceFiles files = openSources(folder);
    if (!isShanghai(files.begin()->first))
        return assemble(importShenzhen(files, tradingDay), notes);

    const fs::path named = fs::absolute(folder).lexically_normal();
    const int date = tradingDay != 0
                         ? tradingDay
                         : dateInName((named.has_filename() ? named : named.parent_path()).filename().string());
    if (!isTradingDay(date))
        throw ReadError({named},
                        "the files carry no date and the folder's name holds none: the trading day must be given");
    return assemble(importShanghai(files, date), notes);
}

} // namespace recording
