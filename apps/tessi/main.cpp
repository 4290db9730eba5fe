// tessi: simulates, imports, replays, traces and verifies recorded days. Data go to stdout, all else to stderr.

#include "apps/tessi/commands.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <stdexcept>

namespace {

int run(int argc, char** argv)
{
    CLI::App app{"Simulates, imports, replays, traces and verifies recorded exchange days."};
    app.set_version_flag("--version", "tessi " TESSI_VERSION);
    app.require_subcommand(1);
    app.footer("Exit codes: 0 ok, 1 a verification differs, 2 usage, 3 bad input or an error of reading or writing.\n"
               "The variable NO_COLOR, when it is not empty, keeps tables without colours.");
    tessi::addSimulate(app);
    tessi::addImport(app);
    tessi::addReplay(app);
    tessi::addTrace(app);
    int exitCode = tessi::kOk;
    tessi::addVerify(app, exitCode);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        exitCode = app.exit(error) == 0 ? tessi::kOk : tessi::kUsage;
    }
    // What is still buffered may be what does not fit on the disk.
    std::cout.flush();
    if (!std::cout)
        throw std::runtime_error("cannot write to standard output");
    return exitCode;
}

} // namespace

int main(int argc, char** argv)
{
    // Qt's dates work in the zone of the process, the exchanges at UTC+8.
    setenv("TZ", "Asia/Shanghai", 1);
    // A file that may not grow any more is an error like a full disk, with a message and nothing left behind.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return run(argc, argv);
    } catch (const std::bad_alloc&) {
        std::fputs("tessi: out of memory\n", stderr);
        return tessi::kBadInput;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tessi: %s\n", error.what());
        return tessi::kBadInput;
    }
}
