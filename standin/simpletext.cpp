#include "UiUtil/simpletext.h"

#include "UiResource/uiresource.h"

#include <QFontMetrics>
#include <QPainter>

namespace ZP {

QSize CSimpleText::getSize(const QString& text, const QString& fontKey)
{
    return QFontMetrics(CUiResource::getFont(fontKey)).size(Qt::TextSingleLine, text);
}

void CSimpleText::drawText(QPainter& painter, const QRect& rect, int alignment, const QString& text,
                           const QString& fontKey, const QString& colorKey)
{
    const QFont font = painter.font();
    const QPen pen = painter.pen();
    painter.setFont(CUiResource::getFont(fontKey));
    painter.setPen(CUiResource::getColor(colorKey));
    painter.drawText(rect, alignment, text);
    painter.setPen(pen);
    painter.setFont(font);
}

} // namespace ZP
