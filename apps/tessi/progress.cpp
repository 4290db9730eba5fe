#include "apps/tessi/progress.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include <unistd.h>

namespace tessi {

Progress::Progress(std::string what)
    : m_what(std::move(what))
    , m_drawn(isatty(STDERR_FILENO) == 1)
{
    show(0, 1);
}

Progress::~Progress()
{
    if (m_drawn)
        std::fputs("\r\033[K", stderr);
}

void Progress::show(std::size_t done, std::size_t total)
{
    constexpr int kWidth = 40;
    const int percent = total == 0 ? 100 : static_cast<int>(std::min(done, total) * 100 / total);
    if (!m_drawn || percent == m_shown)
        return;
    m_shown = percent;
    const int filled = percent * kWidth / 100;
    const std::string bar = std::string(static_cast<std::size_t>(filled), '=') +
                            std::string(static_cast<std::size_t>(kWidth - filled), ' ');
    std::fprintf(stderr, "\r%s [%s] %3d %%", m_what.c_str(), bar.c_str(), percent);
    std::fflush(stderr);
}

bool coloursWanted()
{
    const char* const noColour = std::getenv("NO_COLOR");
    return isatty(STDOUT_FILENO) == 1 && (noColour == nullptr || *noColour == '\0');
}

} // namespace tessi
