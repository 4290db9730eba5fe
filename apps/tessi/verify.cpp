#include "apps/tessi/bookverifier.h"
#include "apps/tessi/checks.h"
#include "apps/tessi/commands.h"
#include "apps/tessi/progress.h"
#include "apps/tessi/verifyreport.h"
#include "recording/dayfolder.h"
#include "recording/errors.h"
#include "recording/importday.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessi {

namespace {

struct Arguments {
    std::vector<std::string> folders;
    std::size_t allowed = 0;
    std::size_t allowedQueues = 0;
    bool json = false;
    bool misses = false;
};

recording::RecordedDay dayOf(const std::string& folder)
{
    if (std::filesystem::exists(std::filesystem::path(folder) / "instrument.json") ||
        !std::filesystem::is_directory(folder))
        return recording::readDay(folder);
    std::vector<std::string> notes;
    recording::RecordedDay day = recording::importDay(folder, 0, &notes);
    for (const std::string& note : notes)
        std::cerr << "tessi: note: " << note << "\n";
    return day;
}

// Without one of the streams there is nothing to compare, which must not look like a day that agrees.
void checkStreams(const recording::RecordedDay& day, const std::string& folder)
{
    using recording::Stream;
    for (const Stream stream : {Stream::Orders, Stream::Trades, Stream::Snapshots}) {
        if (std::find(day.streams.begin(), day.streams.end(), stream) == day.streams.end())
            throw recording::ReadError({folder}, std::string("the day has no stream ") + recording::streamName(stream) +
                                                     " to verify");
    }
}

VerifiedDay verified(const std::string& folder)
{
    const recording::RecordedDay day = dayOf(folder);
    checkStreams(day, folder);
    Progress progress("verifying");
    VerifiedDay result =
        verifyDay(day, [&progress](std::size_t done, std::size_t total) { progress.show(done, total); });
    const auto tellNothing = [&folder](const char* what) {
        std::cerr << "tessi: note: " << folder << " has no " << what << " of continuous trading to compare\n";
    };
    if (result.snapshots == 0)
        tellNothing("snapshot");
    if (result.queues && result.queues->rows == 0)
        tellNothing("order queue");
    return result;
}

// The rows of order queues that do not match, but for those that market orders explain: these are no fault of the book.
std::size_t strangeRows(const std::optional<VerifiedQueues>& queues)
{
    return queues ? queues->misses.size() - queues->count(QueueFault::MarketOrders) : 0;
}

bool agrees(const VerifiedDay& day, const Arguments& arguments)
{
    return day.rawMatches + arguments.allowed >= day.snapshots && day.correctedMatches == day.newer &&
           strangeRows(day.queues) <= arguments.allowedQueues;
}

bool verify(const Arguments& arguments)
{
    std::vector<VerifiedDay> days;
    for (const std::string& folder : arguments.folders)
        days.push_back(verified(folder));
    if (arguments.json)
        printVerifiedJson(std::cout, days, arguments.misses);
    else
        printVerified(std::cout, days, arguments.misses, coloursWanted());
    return std::all_of(days.begin(), days.end(), [&](const VerifiedDay& day) { return agrees(day, arguments); });
}

} // namespace

void addVerify(CLI::App& app, int& exitCode)
{
    auto* const command = app.add_subcommand(
        "verify",
        "Hold the book built from a day's ticks, and trades matched to snapshots, against the day's snapshots, and its "
        "queues against the day's order queues");
    auto arguments = std::make_shared<Arguments>();
    command
        ->add_option("DIR", arguments->folders,
                     "Folders of recorded days, or of the exchanges' level-2 files, which are imported first")
        ->required()
        ->check(notEmpty());
    command
        ->add_option("--allow", arguments->allowed,
                     "Snapshots of a day that may match no state of the book before the day counts as different")
        ->check(notBelowZero())
        ->capture_default_str();
    command
        ->add_option("--allow-queues", arguments->allowedQueues,
                     "Rows of order queues that may not match, those that market orders explain left out, before the "
                     "day counts as different")
        ->check(notBelowZero())
        ->capture_default_str();
    command->add_flag("--json", arguments->json, "An array of one object a day");
    command->add_flag("--misses", arguments->misses,
                      "List every snapshot, pair and order queue without a match, and what explains it");
    command->final_callback([arguments, &exitCode] { exitCode = verify(*arguments) ? kOk : kDiffers; });
}

} // namespace tessi
