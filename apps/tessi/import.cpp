#include "apps/tessi/checks.h"
#include "apps/tessi/commands.h"
#include "recording/dayfolder.h"
#include "recording/importday.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace tessi {

namespace {

struct Arguments {
    std::string source;
    std::string folder;
    int date = 0;
    bool zstd = false;
};

void import(const Arguments& arguments)
{
    std::vector<std::string> notes;
    const recording::RecordedDay day = recording::importDay(arguments.source, arguments.date, &notes);
    for (const std::string& note : notes)
        std::cerr << "tessi: note: " << note << "\n";
    recording::writeDay(day, arguments.folder,
                        arguments.zstd ? recording::Compression::Zstd : recording::Compression::None);
    std::cerr << "Imported " << day.events.size() << " records of " << day.tradingDay << " into " << arguments.folder
              << "\n";
}

} // namespace

void addImport(CLI::App& app)
{
    auto* const command = app.add_subcommand("import", "Import a day from an exchange's level-2 files");
    auto arguments = std::make_shared<Arguments>();
    command->add_option("SOURCE", arguments->source, "The folder with the exchange's CSV files")
        ->required()
        ->check(notEmpty());
    command->add_option("FOLDER", arguments->folder, "The new folder of the day")->required()->check(notEmpty());
    command->add_option("--date", arguments->date, "Trading day as yyyymmdd, where the files do not tell it")
        ->check(calendarDate());
    command->add_flag("--zstd", arguments->zstd, "Compress the streams");
    command->final_callback([arguments] { import(*arguments); });
}

} // namespace tessi
