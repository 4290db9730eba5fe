#include "apps/tessi/checks.h"
#include "apps/tessi/commands.h"
#include "apps/tessi/ordertrace.h"
#include "apps/tessi/progress.h"
#include "apps/tessi/tracereport.h"
#include "recording/dayfolder.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <iostream>
#include <memory>
#include <optional>
#include <string>

namespace tessi {

namespace {

struct Arguments {
    std::string folder;
    std::optional<int> seq;
    std::optional<int> row;
    bool json = false;
};

OrderTrace traced(const Arguments& arguments, const recording::RecordedDay& day, const CLI::App& command)
{
    const std::optional<OrderTrace> trace =
        arguments.seq ? traceOrder(day, *arguments.seq) : traceRow(day, *arguments.row);
    if (trace)
        return *trace;
    throw CLI::ValidationError(command.get_name(), arguments.seq
                                                       ? fmt::format("the day has no order {}", *arguments.seq)
                                                       : fmt::format("the order list has no row {}", *arguments.row));
}

void noteMissingRecord(const OrderTrace& trace, const recording::RecordedDay& day)
{
    const bool isTraded = !trace.fate.trades.empty();
    const bool isCancelled = !trace.fate.cancels.empty();
    std::cerr << "tessi: note: the day has no record of order " << trace.seq << ", only "
              << (isTraded ? "its trades" : "") << (isTraded && isCancelled ? " and " : "")
              << (isCancelled ? "its cancel" : "");
    if (day.instrument.market == "SH" && isTraded && !isCancelled)
        std::cerr << ": Shanghai does not report an order that is traded in full at once";
    std::cerr << "\n";
}

void trace(const Arguments& arguments, const CLI::App& command)
{
    const recording::RecordedDay day = recording::readDay(arguments.folder);
    const OrderTrace found = traced(arguments, day, command);
    if (!found.order)
        noteMissingRecord(found, day);
    if (arguments.json)
        printTraceJson(std::cout, found);
    else
        printTrace(std::cout, found, day.instrument.priceTick, coloursWanted());
}

} // namespace

void addTrace(CLI::App& app)
{
    auto* const command = app.add_subcommand("trace", "Tell what became of one order of a recorded day");
    auto arguments = std::make_shared<Arguments>();
    command->add_option("FOLDER", arguments->folder, "The folder of the day")->required()->check(notEmpty());
    auto* const which = command->add_option_group("order", "The order");
    which->add_option("--order", arguments->seq, "The exchange's number of the order")->check(aboveZero());
    which->add_option("--row", arguments->row, "Its row in the order list, from 0 (replay --panel orders)")
        ->check(notBelowZero());
    which->require_option(1);
    command->add_flag("--json", arguments->json, "One object");
    command->final_callback([arguments, command] { trace(*arguments, *command); });
}

} // namespace tessi
