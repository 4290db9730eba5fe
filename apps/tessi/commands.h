#pragma once

namespace CLI {
class App;
}

namespace tessi {

// Exit codes of every command. Usage errors are told by the parser.
enum ExitCode : int {
    kOk = 0,
    kDiffers = 1,
    kUsage = 2,
    kBadInput = 3 // or an error of reading and writing
};

// Each adds its subcommand with options; the parser runs it. Errors leave as exceptions; a command that compares sets
// `exitCode` to what it found.
void addSimulate(CLI::App& app);
void addImport(CLI::App& app);
void addReplay(CLI::App& app);
void addTrace(CLI::App& app);
void addVerify(CLI::App& app, int& exitCode);

} // namespace tessi
