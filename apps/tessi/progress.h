#pragma once

#include <cstddef>
#include <string>

namespace tessi {

// A progress bar on stderr, drawn only when that is a terminal, so that logs and pipes stay clean. It removes itself.
class Progress {
public:
    explicit Progress(std::string what);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Redraws when the shown percentage changes.
    void show(std::size_t done, std::size_t total);

private:
    std::string m_what;
    int m_shown = -1;
    bool m_drawn;
};

// Whether stdout is a terminal that wants colours: the variable NO_COLOR, when it is not empty, says no.
bool coloursWanted();

} // namespace tessi
