#include "apps/tessi/platepanel.h"

#include "apps/tessi/checks.h"
#include "apps/tessi/dayrequest.h"
#include "apps/tessi/missingstreams.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"
#include "Common/numberformat.h"
#include "standin/theme.h"
#include "utils/stockkey.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tessi {

namespace {

using recording::Stream;

constexpr const char* kDirections[] = {"主动买入", "主动卖出"};
constexpr const char* kSizes[] = {"特大", "大单", "中单", "小单"};

std::optional<__int64> timeIn(int tradingDay, const std::optional<std::string>& clock, bool endOfSecond)
{
    if (!clock)
        return std::nullopt;
    return endOfSecond ? endOfSecondOn(tradingDay, *clock) : timeOn(tradingDay, *clock);
}

Picture pictureOf(const PanelOptions& options)
{
    Picture picture = options.size ? pictureOfSize(*options.size).value_or(Picture()) : Picture();
    picture.scale = options.scale.value_or(1);
    return picture;
}

// A plain number for programs; none when there is nothing to have a share of.
std::string shareNumber(float ratio)
{
    return std::isfinite(ratio) ? fmt::format("{:.6g}", ratio) : "";
}

std::string shareText(float ratio)
{
    return ZP::formatDoubleNumber(ratio, 1, utils::FORMAT_NUMBER_PERCENT, false, QStringLiteral("非法值"))
        .toStdString();
}

std::string averageText(float average)
{
    return ZP::formatDoubleNumber(average, 1).toStdString();
}

} // namespace

PlatePanel::PlatePanel(const recording::RecordedDay& day, const PanelOptions& options)
    : m_request(wholeDay(day))
    , m_from(timeIn(day.tradingDay, options.from, false))
    , m_to(timeIn(day.tradingDay, options.to, true))
    , m_file(options.png)
    , m_picture(pictureOf(options))
    , m_name(fmt::format("{} {} {}", day.instrument.market, day.instrument.code, day.instrument.name))
    , m_whyEmpty(missingStreamsText(day, {Stream::Counts}))
    , m_plate(nullptr)
{
    if (m_whyEmpty.empty())
        m_whyEmpty = showsRange() ? "no counts had come in that time" : "no counts had come";
    standin::setTheme(options.theme == "light" ? standin::Theme::Light : standin::Theme::Dark);
    m_plate.setStock(QString::fromStdString(utils::zlStockKey(day.instrument.market, day.instrument.code)));
}

// The plate takes records on any thread.
void PlatePanel::subscribe(recording::DataLayer& data)
{
    data.subscribe(m_request, Stream::Counts, [this](int batchKind, const recording::RecordBatch& records) {
        if (batchKind == 0)
            m_counts.clear();
        m_counts.insert(m_counts.end(), records.begin(), records.end());
        if (!showsRange())
            m_plate.setTransactionCount(records);
    });
}

// The records that the plate shows: the latest, or those of the range.
recording::RecordBatch PlatePanel::shown() const
{
    if (!showsRange())
        return m_counts.empty() ? recording::RecordBatch() : recording::RecordBatch{m_counts.back()};
    recording::RecordBatch range;
    std::copy_if(m_counts.begin(), m_counts.end(), std::back_inserter(range), [this](const auto& record) {
        return (!m_from || record->timetag >= *m_from) && (!m_to || record->timetag <= *m_to);
    });
    return range;
}

Table PlatePanel::rows()
{
    if (showsRange())
        m_plate.setRegionTransaction(shown());
    if (m_file)
        writePng(m_plate, m_picture, *m_file);
    Table table({{.name = "direction"},
                 {.name = "class"},
                 {.name = "hands", .numeric = true},
                 {.name = "share", .forPeople = true, .alignRight = true},
                 {.name = "share", .numeric = true, .forPrograms = true},
                 {.name = "orders", .numeric = true},
                 {.name = "average", .numeric = true}});
    if (!m_plate.m_data.m_items.empty()) {
        for (const int direction : {TC::kActiveBuy, TC::kActiveSell})
            addBlock(table, direction);
    }
    return table;
}

// A block of the plate: its first line tells all sizes together and the orders, the others one size each.
void PlatePanel::addBlock(Table& table, int direction) const
{
    const TC::WatchPlateData& data = m_plate.m_data;
    const Table::Tint tint = direction == TC::kActiveBuy ? Table::Tint::Rise : Table::Tint::Fall;
    __int64 hands = 0;
    float share = 0;
    for (const TC::WatchPlateItem& item : data.m_items) {
        hands += item.direction == direction ? item.volume : 0;
        share += item.direction == direction ? item.ratio : 0;
    }
    table.add({kDirections[direction], "合计", numberText(hands), shareText(share), shareNumber(share),
               numberText(data.orderCountOf(direction)), averageText(data.averageOf(direction))},
              tint);
    for (int size = 0; size < TC::kPlateSizeClasses; ++size) {
        const TC::WatchPlateItem item = data.itemOf(direction, size);
        table.add({kDirections[direction], kSizes[size], numberText(item.volume), shareText(item.ratio),
                   shareNumber(item.ratio), "", ""},
                  tint);
    }
}

std::string PlatePanel::head() const
{
    const recording::RecordBatch records = shown();
    const std::string last = clockText(records.back()->timetag / 1000);
    const std::string time =
        showsRange() ? fmt::format("{} to {}", clockText(records.front()->timetag / 1000), last) : last;
    return fmt::format("龙虎看盘（逐笔）  {}  {}", m_name, time);
}

} // namespace tessi
