#pragma once

#include "terminal_api.h"

#include <QRect>
#include <QSize>
#include <QString>

class QPainter;

namespace ZP {

// Plain text in theme fonts and colours. For the GUI thread.
class TERMINAL_API CSimpleText {
public:
    // Width and height in pixels of one line of text in the font of that key.
    static QSize getSize(const QString& text, const QString& fontKey);

    // Draws text inside `rect`. `alignment` takes Qt::Alignment and Qt::TextFlag values. The painter's font and
    // pen are as before afterwards.
    static void drawText(QPainter& painter, const QRect& rect, int alignment, const QString& text,
                         const QString& fontKey, const QString& colorKey);
};

} // namespace ZP
