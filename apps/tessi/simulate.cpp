#include "apps/tessi/checks.h"
#include "apps/tessi/commands.h"
#include "apps/tessi/progress.h"
#include "exchange/instrumentclass.h"
#include "exchange/simulator.h"
#include "recording/dayfolder.h"

#include <CLI/CLI.hpp>

#include <fmt/format.h>

#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

namespace tessi {

namespace {

struct Arguments {
    exchange::SimulationOptions options; // but for what the class decides
    std::string instrumentClass;
    std::optional<std::string> code;
    std::optional<double> lastClose;
    std::string folder;
    bool zstd = false;
};

// How an option of the simulator is called on the command line.
std::string argumentFor(const std::string& option)
{
    static const std::map<std::string, std::string> kArguments = {
        {"code", "--code"}, {"tradingDay", "--date"}, {"lastClose", "--last-close"}, {"ordersPerDay", "--orders"}};
    const auto found = kArguments.find(option);
    return found == kArguments.end() ? option : found->second;
}

// The options of the class with what was asked for in place of its own. Throws CLI::ValidationError.
exchange::SimulationOptions optionsOf(const Arguments& arguments)
{
    try {
        exchange::SimulationOptions options = exchange::SimulationOptions::of(arguments.instrumentClass);
        options.seed = arguments.options.seed;
        options.tradingDay = arguments.options.tradingDay;
        options.ordersPerDay = arguments.options.ordersPerDay;
        options.code = arguments.code.value_or(options.code);
        options.lastClose = arguments.lastClose.value_or(options.lastClose);
        options.check();
        return options;
    } catch (const exchange::OptionError& error) {
        throw CLI::ValidationError(argumentFor(error.option()), error.rule());
    } catch (const std::invalid_argument& error) {
        throw CLI::ValidationError("--class", error.what());
    }
}

// A line for each class: its name, and what an instrument is when nothing else is asked for.
std::string classList()
{
    std::string text = "Classes, with code, last close and price tick:\n";
    for (const exchange::InstrumentClass& row : exchange::instrumentClasses()) {
        text += fmt::format("  {:<17}{:<5}{:<9}{:>8} {:>7}  {}\n", row.name, row.market, row.code,
                            priceText(row.lastClose, row.tick), row.tick.price(1), row.summary);
    }
    text += "Hong Kong stocks, futures, options and indices have no streams of ticks. All classes trade by Shenzhen's "
            "clock.";
    return text;
}

void simulate(const exchange::SimulationOptions& options, const Arguments& arguments)
{
    recording::RecordedDay day;
    {
        Progress progress("simulating");
        day = exchange::simulateDay(options, [&progress](int doneMs, int totalMs) {
            progress.show(static_cast<std::size_t>(doneMs), static_cast<std::size_t>(totalMs));
        });
    }
    recording::writeDay(day, arguments.folder,
                        arguments.zstd ? recording::Compression::Zstd : recording::Compression::None);
    std::cerr << "Simulated " << day.events.size() << " records of " << day.tradingDay << " into " << arguments.folder
              << "\n";
}

} // namespace

void addSimulate(CLI::App& app)
{
    auto* const command = app.add_subcommand("simulate", "Simulate a trading day of an instrument");
    command->footer(classList());
    auto arguments = std::make_shared<Arguments>();
    exchange::SimulationOptions& options = arguments->options;
    arguments->instrumentClass = options.instrumentClass;
    command->add_option("FOLDER", arguments->folder, "The new folder of the day")->required()->check(notEmpty());
    command->add_option("--seed", options.seed, "The same seed gives the same day")
        ->check(notBelowZero())
        ->capture_default_str();
    command->add_option("--date", options.tradingDay, "Trading day as yyyymmdd")
        ->check(calendarDate())
        ->capture_default_str();
    command->add_option("--class", arguments->instrumentClass, "Class of the instrument")
        ->default_str(options.instrumentClass);
    command->add_option("--code", arguments->code, "Code of the instrument, else that of its class");
    command->add_option("--last-close", arguments->lastClose,
                        "Last close in whole price ticks, 100 to 500000 of them; else that of its class");
    command->add_option("--orders", options.ordersPerDay, "Orders of the day, about")->capture_default_str();
    command->add_flag("--zstd", arguments->zstd, "Compress the streams");
    command->final_callback([arguments] { simulate(optionsOf(*arguments), *arguments); });
}

} // namespace tessi
