#include "apps/tessi/checks.h"
#include "apps/tessi/commands.h"
#include "apps/tessi/daydelivery.h"
#include "apps/tessi/panel.h"
#include "apps/tessi/progress.h"
#include "apps/tessi/summary.h"
#include "apps/tessi/table.h"
#include "recording/datalayer.h"
#include "recording/dayfolder.h"
#include "recording/errors.h"
#include "standin/terminal.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace tessi {

namespace {

struct Arguments {
    std::string folder;
    std::string panel;
    PanelOptions options;
    std::string historyUntil;
    std::string until;
    double speed = 0;
    Format format = Format::Table;
};

// The day ends before the first event at the time or after it.
void cutAt(recording::RecordedDay& day, __int64 timetag)
{
    day.events.resize(recording::HistoryPoint::time(timetag).positionIn(day));
}

// The day ends with the last event up to the time: what came later is not known yet.
void cutBehind(recording::RecordedDay& day, __int64 timetag)
{
    const auto isKnown = [timetag](const recording::Event& event) { return recording::timetagOf(event) <= timetag; };
    const auto last = std::find_if(day.events.rbegin(), day.events.rend(), isKnown);
    day.events.erase(last.base(), day.events.end());
}

recording::DeliveryOptions deliveryOf(const Arguments& arguments, int tradingDay)
{
    recording::DeliveryOptions options;
    options.history = recording::HistoryPoint::nothing();
    if (arguments.options.today)
        options.history = recording::HistoryPoint::wholeDay();
    else if (!arguments.historyUntil.empty())
        options.history = recording::HistoryPoint::time(timeOn(tradingDay, arguments.historyUntil));
    if (arguments.speed > 0)
        options.speed = arguments.speed;
    return options;
}

void checkOptions(const Arguments& arguments, const CLI::App& command)
{
    const std::string fault = optionFault(arguments.panel, arguments.options);
    if (!fault.empty())
        throw CLI::ValidationError(command.get_name(), fault);
    if (arguments.options.today && (!arguments.historyUntil.empty() || arguments.speed > 0))
        throw CLI::ValidationError(command.get_name(), "all of a past day is history: --today takes neither "
                                                       "--history-until nor --speed");
    if (arguments.options.at && !arguments.until.empty() && *arguments.options.at > arguments.until)
        throw CLI::ValidationError(command.get_name(), "--at is later than --until");
}

// A price between two ticks has no queue; the model would show that of the nearest tick.
void checkPrice(const Arguments& arguments, double priceTick, const CLI::App& command)
{
    constexpr double kTolerance = 1e-5;
    if (!arguments.options.price)
        return;
    const double ticks = *arguments.options.price / priceTick;
    if (!(ticks < std::numeric_limits<int>::max()))
        throw CLI::ValidationError(command.get_name(), "--price is above all prices");
    if (std::abs(ticks - std::round(ticks)) * priceTick > kTolerance)
        throw CLI::ValidationError(command.get_name(),
                                   fmt::format("--price is no multiple of the price tick {}", priceTick));
}

void checkToday(const Arguments& arguments, int tradingDay, const CLI::App& command)
{
    const std::optional<int> today = arguments.options.today;
    if (today && *today <= tradingDay)
        throw CLI::ValidationError(command.get_name(),
                                   fmt::format("--today {} is not later than the recorded day {}", *today, tradingDay));
}

// What a panel shows.
struct Rows {
    Table table;
    std::string head = {};
    std::string foot = {};
    std::string noteForPrograms = {};
};

Table rowsOf(Panel& panel, const std::string& folder)
{
    try {
        return panel.rows();
    } catch (const NotInTheDay& fault) {
        throw recording::ReadError({folder}, fault.what());
    }
}

// Delivers the day to the panel as a terminal would, and returns when nothing is left to do.
Rows replayedRows(const Arguments& arguments, const std::shared_ptr<const recording::RecordedDay>& day)
{
    standin::Terminal terminal;
    introduce(terminal, *day);
    if (arguments.options.today)
        terminal.instruments.setLastTradingDay(*arguments.options.today);
    const std::unique_ptr<Panel> panel = makePanel(arguments.panel, *day, arguments.options);

    Progress progress("replaying");
    const recording::DataLayer* running = nullptr;
    recording::DeliveryOptions options = deliveryOf(arguments, day->tradingDay);
    options.beforePush = [&] { progress.show(running->delivered(), running->total()); };
    deliver(terminal, day, options, [&](recording::DataLayer& data) {
        running = &data;
        panel->subscribe(data);
    });
    if (const std::string note = panel->note(); !note.empty())
        std::cerr << "tessi: note: " << note << "\n";
    Rows rows{rowsOf(*panel, arguments.folder)};
    if (rows.table.isEmpty()) {
        std::cerr << "tessi: note: " << panel->whyEmpty() << "\n";
    } else {
        rows.head = panel->head();
        rows.foot = panel->foot();
        rows.noteForPrograms = panel->noteForPrograms();
    }
    return rows;
}

void print(const Rows& rows, const Arguments& arguments)
{
    const bool isTable = arguments.format == Format::Table;
    if (isTable && !rows.head.empty())
        std::cout << rows.head << "\n\n";
    rows.table.print(std::cout, arguments.format, coloursWanted());
    if (isTable && !rows.foot.empty())
        std::cout << "\n" << rows.foot << "\n";
    if (!isTable && !rows.noteForPrograms.empty())
        std::cerr << "tessi: note: " << rows.noteForPrograms << "\n";
}

void replay(const Arguments& arguments, const CLI::App& command)
{
    checkOptions(arguments, command);
    const auto day = std::make_shared<recording::RecordedDay>(recording::readDay(arguments.folder));
    checkPrice(arguments, day->instrument.priceTick, command);
    checkToday(arguments, day->tradingDay, command);
    if (!arguments.until.empty())
        cutAt(*day, timeOn(day->tradingDay, arguments.until));
    if (arguments.options.at)
        cutBehind(*day, endOfSecondOn(day->tradingDay, *arguments.options.at));
    if (arguments.panel.empty())
        printSummary(std::cout, *day, arguments.format);
    else
        print(replayedRows(arguments, day), arguments);
}

// Panels that list orders, cancels or trades.
void addFilter(CLI::App& command, PanelOptions& options)
{
    command.add_option("--min-hands", options.minHands, "Orders, cancels, trades: of at least this many hands")
        ->check(notBelowZero());
    command.add_option("--min-amount", options.minAmount, "Orders, cancels, trades: of at least this amount")
        ->check(notBelowZero());
    command
        .add_option("--connective", options.connective,
                    "and: both --min-hands and --min-amount (default); or: one is enough")
        ->check(CLI::IsMember({"and", "or"}));
    command
        .add_option(
            "--from", options.from,
            "Orders, cancels, trades, view, plate: not before this time "
            "(view: a snapshot's second takes that snapshot's rows; plate: shows what was gained from the first "
            "record of the time to the last)")
        ->check(clockTime());
    command
        .add_option("--to", options.to,
                    "Orders, cancels, trades, view, plate: not after this second "
                    "(view: a snapshot's second takes that snapshot's rows)")
        ->check(clockTime());
}

// Panels of the day's figures.
void addFigures(CLI::App& command, PanelOptions& options)
{
    command
        .add_option("--at", options.at,
                    "Panel params: as it stood at the last snapshot up to this second that traded; status: at the "
                    "last snapshot up to this second")
        ->check(clockTime());
    command
        .add_option("--today", options.today,
                    "Panel params: the terminal's last trading day as yyyymmdd, so that the recorded day is a past one")
        ->check(calendarDate());
    command.add_flag("--level2", options.level2, "Panel params: with totals and average prices of the whole book");
    command.add_flag("--level1", options.level1,
                     "Panel status: the five levels of level 1, also where the day has level 2");
}

// Panel plate.
void addPicture(CLI::App& command, PanelOptions& options)
{
    command.add_option("--png", options.png, "Panel plate: also as a picture, into this file")->check(notEmpty());
    command.add_option("--size", options.size, "With --png: width and height; without it, 340x460")
        ->check(pictureSize());
    command.add_option("--theme", options.theme, "With --png: dark (default) or light")
        ->check(CLI::IsMember({"dark", "light"}));
    command.add_option("--scale", options.scale, "With --png: pixels for one of the size, 0.5 to 4; without it, 1")
        ->check(pictureScale());
}

} // namespace

void addReplay(CLI::App& app)
{
    static const std::map<std::string, Format> formats = {
        {"table", Format::Table}, {"csv", Format::Csv}, {"json", Format::Json}};

    auto* const command = app.add_subcommand("replay", "Replay a recorded day and print what a panel shows");
    auto arguments = std::make_shared<Arguments>();
    command->add_option("FOLDER", arguments->folder, "The folder of the day")->required()->check(notEmpty());
    command->add_option("--panel", arguments->panel, "What to print; without it, a summary of the day")
        ->check(CLI::IsMember(panelNames()));
    command
        ->add_option("--depth", arguments->options.depth,
                     "Panels book, thousand, queue10: the best levels of each side; without it, all (queue10: ten)")
        ->check(aboveZero());
    command->add_flag("--by-quoter", arguments->options.byQuoter,
                      "Panel thousand: the ten levels of the level-2 snapshot instead");
    command->add_option("--side", arguments->options.side,
                        "Panel queue: bid or ask; orders and cancels: buy or sell (UB, US, F and N stay)");
    command->add_option("--price", arguments->options.price, "Panel queue: the price")->check(aboveZero());
    addFilter(*command, arguments->options);
    addFigures(*command, arguments->options);
    addPicture(*command, arguments->options);
    command->add_option("--format", arguments->format, "table, csv or json")
        ->transform(CLI::CheckedTransformer(formats))
        ->default_str("table");
    command->add_option("--history-until", arguments->historyUntil, "What is earlier comes as history, the rest live")
        ->check(clockTime());
    command->add_option("--until", arguments->until, "Stop before the first record at this time or after it")
        ->check(clockTime());
    command->add_option("--speed", arguments->speed, "Live records at this multiple of real time; 0 is at once")
        ->check(notBelowZero())
        ->capture_default_str();
    command->final_callback([arguments, command] { replay(*arguments, *command); });
}

} // namespace tessi
