#pragma once

#include "terminal_api.h"

#include <QColor>
#include <QString>
#include <QStringList>

// The colours and fonts behind ZP::CUiResource. For the GUI thread; colours may be read on any thread while the
// theme is not being changed.
namespace standin {

enum class Theme { Dark, Light };

// Which colour stands for rise and which for fall.
enum class Palette {
    RedUp,      // red up, green down, as Chinese markets show it
    GreenUp,    // the other way round
    ColourBlind // orange up, blue down
};

// The few colours that all others are made of.
struct ThemeTokens {
    QColor ground, panel, raised;  // window; panel; header and hover
    QColor line, strongLine;       // borders of rows and of panels
    QColor text, quietText, faint; // values; labels; units and what is empty
    QColor rise, fall, flat;
    QColor size;   // volumes and amounts
    QColor accent; // selection, focus, the cursor's price
};

TERMINAL_API ThemeTokens themeTokens(Theme theme, Palette palette);

// The theme in force; dark with red up at first.
TERMINAL_API Theme currentTheme();
TERMINAL_API Palette currentPalette();
TERMINAL_API ThemeTokens currentTokens();

// Puts another theme in force and calls themeChanged of every base widget, also when it is the same theme again.
// Needs no application, but then there is no widget to be told.
TERMINAL_API void setTheme(Theme theme, Palette palette = Palette::RedUp);

// All keys that every theme names.
TERMINAL_API QStringList themeColorKeys();
TERMINAL_API QStringList themeFontKeys();

} // namespace standin
