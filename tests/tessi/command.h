#pragma once

#include <filesystem>
#include <string>

namespace tests {

// What a run of tessi left behind.
struct Outcome {
    int exitCode = -1;
    std::string out;
    std::string err;
};

// A folder of a test's own, which goes with it.
class Scratch {
public:
    Scratch();
    ~Scratch();
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    std::string path(const std::string& name) const { return (m_folder / name).string(); }
    const std::filesystem::path& folder() const { return m_folder; }

    // Runs tessi in the folder with shell words as arguments; `before` stands in front of the program. Redirections
    // of stdout in `arguments` leave `out` empty.
    Outcome tessi(const std::string& arguments, const std::string& before = "") const;

    // Runs shell words in the folder; the program is $TESSI.
    Outcome inShell(const std::string& words) const;

    // Runs tessi with a terminal of its own, by the tool that records sessions; `before` stands in front. The terminal
    // shows stdout and stderr together.
    Outcome onATerminal(const std::string& before, const std::string& arguments) const;
    bool canHaveATerminal() const;

private:
    std::filesystem::path m_folder;
};

std::string readFile(const std::filesystem::path& file);
void writeFile(const std::filesystem::path& file, const std::string& bytes);

} // namespace tests
