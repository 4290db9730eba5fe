#include "tests/support/offscreen.h"

#include "standin/theme.h"

#include <cstdlib>

OnScreen::OnScreen()
    : m_application(m_argc, m_argv)
{
    standin::setTheme(standin::Theme::Dark);
}

OnScreen::~OnScreen() = default;

OffscreenPlatform::OffscreenPlatform()
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
}

Offscreen::Offscreen() = default;

Offscreen::~Offscreen() = default;
