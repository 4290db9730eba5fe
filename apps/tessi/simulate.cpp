#include "apps/tessi/checks.h"
#include "apps/tessi/commands.h"
#include "apps/tessi/progress.h"
#include "exchange/simulator.h"
#include "recording/dayfolder.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>
#include <string>

namespace tessi {

namespace {

struct Arguments {
    exchange::SimulationOptions options;
    std::string folder;
    bool zstd = false;
};

void simulate(const Arguments& arguments)
{
    recording::RecordedDay day;
    {
        Progress progress("simulating");
        day = exchange::simulateDay(arguments.options, [&progress](int doneMs, int totalMs) {
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
    auto* const command = app.add_subcommand("simulate", "Simulate a Shenzhen stock's trading day");
    auto arguments = std::make_shared<Arguments>();
    exchange::SimulationOptions& options = arguments->options;
    command->add_option("FOLDER", arguments->folder, "The new folder of the day")->required()->check(notEmpty());
    command->add_option("--seed", options.seed, "The same seed gives the same day")
        ->check(notBelowZero())
        ->capture_default_str();
    command->add_option("--date", options.tradingDay, "Trading day as yyyymmdd")
        ->check(calendarDate())
        ->capture_default_str();
    command->add_option("--code", options.code, "Code of the stock")->capture_default_str();
    command->add_option("--last-close", options.lastClose, "Last close in yuan")->capture_default_str();
    command->add_option("--orders", options.ordersPerDay, "Orders of the day, about")->capture_default_str();
    command->add_flag("--zstd", arguments->zstd, "Compress the streams");
    command->final_callback([arguments, command] {
        try {
            arguments->options.check();
        } catch (const std::invalid_argument& error) {
            throw CLI::ValidationError(command->get_name(), error.what());
        }
        simulate(*arguments);
    });
}

} // namespace tessi
