#pragma once

#include "terminal_api.h"

#include <QColor>
#include <QFont>
#include <QString>

namespace ZP {

// Colours and fonts of the current theme by key. For the GUI thread, and for painting on any thread while the
// theme is not being changed.
class TERMINAL_API CUiResource {
public:
    // A key that the theme does not name gives an invalid QColor, and the application's font.
    static QColor getColor(const QString& key);
    static QFont getFont(const QString& key);
};

} // namespace ZP
