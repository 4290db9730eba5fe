#include "offscreen.h"

#include "standin/theme.h"

#include <cstdlib>

Offscreen::Offscreen()
    : m_application((setenv("QT_QPA_PLATFORM", "offscreen", 1), m_argc), m_argv)
{
    standin::setTheme(standin::Theme::Dark);
}

Offscreen::~Offscreen() = default;
