#include "tests/tessi/command.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <vector>

#include <sys/wait.h>

namespace tests {

Scratch::Scratch()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "tessi-test-XXXXXX").string();
    std::vector<char> name(pattern.c_str(), pattern.c_str() + pattern.size() + 1);
    if (!mkdtemp(name.data()))
        throw std::runtime_error("no scratch folder");
    m_folder = name.data();
}

Scratch::~Scratch()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

Outcome Scratch::tessi(const std::string& arguments, const std::string& before) const
{
    return inShell(before + " \"$TESSI\" " + arguments);
}

Outcome Scratch::inShell(const std::string& words) const
{
    // Captured outside the folder, so that a test sees only what tessi itself left in it.
    const std::string out = m_folder.string() + ".out";
    const std::string err = m_folder.string() + ".err";
    setenv("TESSI", TESSI_PROGRAM, 1);
    const std::string command = "cd '" + m_folder.string() + "' && { " + words + "; } >'" + out + "' 2>'" + err + "'";
    const int status = std::system(command.c_str());
    Outcome run{WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(out), readFile(err)};
    std::filesystem::remove(out);
    std::filesystem::remove(err);
    return run;
}

Outcome Scratch::onATerminal(const std::string& before, const std::string& arguments) const
{
    return inShell(before + " script -qec \"'$TESSI' " + arguments + "\" /dev/null </dev/null");
}

bool Scratch::canHaveATerminal() const
{
    return inShell("script -qec true /dev/null </dev/null").exitCode == 0;
}

std::string readFile(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void writeFile(const std::filesystem::path& file, const std::string& bytes)
{
    std::ofstream(file, std::ios::binary) << bytes;
}

} // namespace tests
