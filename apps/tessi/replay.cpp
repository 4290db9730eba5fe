#include "apps/tessi/checks.h"
#include "apps/tessi/commands.h"
#include "apps/tessi/panel.h"
#include "apps/tessi/progress.h"
#include "apps/tessi/summary.h"
#include "apps/tessi/table.h"
#include "recording/datalayer.h"
#include "recording/dayfolder.h"
#include "standin/terminal.h"
#include "utils/timeutils.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <map>
#include <memory>
#include <string>

namespace tessi {

namespace {

struct Arguments {
    std::string folder;
    std::string panel;
    std::string historyUntil;
    double speed = 0;
    Format format = Format::Table;
};

recording::DeliveryOptions deliveryOf(const Arguments& arguments, int tradingDay)
{
    recording::DeliveryOptions options;
    options.history = recording::HistoryPoint::nothing();
    if (!arguments.historyUntil.empty()) {
        const __int64 midnight =
            utils::timeToMilliseconds(tradingDay / 10000, tradingDay / 100 % 100, tradingDay % 100, 0, 0, 0);
        options.history = recording::HistoryPoint::time(midnight + secondsOf(arguments.historyUntil) * 1000LL);
    }
    if (arguments.speed > 0)
        options.speed = arguments.speed;
    return options;
}

// Delivers the day to the panel as a terminal would, and returns when nothing is left to do.
Table replayedRows(const Arguments& arguments, const std::shared_ptr<const recording::RecordedDay>& day)
{
    standin::Terminal terminal;
    terminal.instruments.add(day->instrument);
    terminal.instruments.setLastTradingDay(day->tradingDay);
    const std::unique_ptr<Panel> panel = makePanel(arguments.panel, *day);

    Progress progress("replaying");
    const recording::DataLayer* running = nullptr;
    recording::DeliveryOptions options = deliveryOf(arguments, day->tradingDay);
    options.beforePush = [&] { progress.show(running->delivered(), running->total()); };

    recording::DataLayer data(day, options);
    running = &data;
    panel->subscribe(data);
    data.start();
    data.waitUntilDelivered();
    data.stop();
    terminal.strands.waitIdle();
    return panel->rows();
}

void replay(const Arguments& arguments)
{
    const auto day = std::make_shared<const recording::RecordedDay>(recording::readDay(arguments.folder));
    if (arguments.panel.empty())
        printSummary(std::cout, *day, arguments.format);
    else
        replayedRows(arguments, day).print(std::cout, arguments.format, coloursWanted());
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
    command->add_option("--format", arguments->format, "table, csv or json")
        ->transform(CLI::CheckedTransformer(formats))
        ->default_str("table");
    command->add_option("--history-until", arguments->historyUntil, "What is earlier comes as history, the rest live")
        ->check(clockTime());
    command->add_option("--speed", arguments->speed, "Live records at this multiple of real time; 0 is at once")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    command->final_callback([arguments] { replay(*arguments); });
}

} // namespace tessi
