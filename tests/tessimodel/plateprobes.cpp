#include "tests/tessimodel/plateprobes.h"

#include "tests/support/inkedpixels.h"
#include "UiResource/uiresource.h"
#include "UiUtil/simpletext.h"

#include <QPainter>
#include <QtMath>
#include <QWidget>

#include <cmath>
#include <sstream>

namespace tests {

namespace {

constexpr char kHeavy[] = "fnt_default_normal_heavy";
constexpr char kTextColor[] = "ic_clr_entrust_default_text";
const QStringList kNames = {"特大", "大单", "中单", "小单"};

QColor themeColor(const QString& key)
{
    return ZP::CUiResource::getColor(key);
}

QColor lineColor(int line)
{
    return themeColor(QStringLiteral("ic_clr_watchplate_line%1").arg(line));
}

QImage emptyPicture(const QSize& logical, double ratio, const QColor& color)
{
    QImage image((QSizeF(logical) * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(color);
    return image;
}

std::string rectText(const QRect& rect)
{
    std::ostringstream text;
    text << rect.left() << ',' << rect.top() << ' ' << rect.width() << 'x' << rect.height();
    return text.str();
}

} // namespace

QImage pictureOf(QWidget& widget, double ratio)
{
    // A colour that no theme has shows through where nothing is painted.
    QImage image = emptyPicture(widget.size(), ratio, Qt::magenta);
    widget.render(&image, {}, {}, QWidget::RenderFlags());
    return image;
}

PlateLayout themeLayout(const QSize& size, bool traded)
{
    return {QRect({0, 0}, size), ZP::CSimpleText::getSize(QStringLiteral("计算行高"), kHeavy).height(), traded};
}

PlateProbes::PlateProbes(const QImage& picture, const PlateState& state)
    : m_picture(picture)
    , m_state(state)
    , m_ratio(picture.devicePixelRatioF())
    , m_layout(themeLayout((QSizeF(picture.size()) / m_ratio).toSize(), state.traded))
    , m_ground(themeColor("ic_clr_watchplate_bg"))
    , m_splitter(themeColor("ic_clr_watchplate_splitter"))
    , m_scratch(emptyPicture((QSizeF(picture.size()) / m_ratio).toSize(), m_ratio, m_ground))
{}

std::string PlateProbes::all() const
{
    return sectors() + ground() + borders() + squares() + texts() + numberEdges() + blockTitles();
}

std::string PlateProbes::sectors() const
{
    constexpr double kAtRadius = 0.7;
    constexpr double kOffEdge = 2; // degrees
    std::string wrong;
    double from = 90;
    for (const PlateSector& sector : m_state.sectors) {
        const bool covered = &sector != &m_state.sectors.back() && m_state.sectors.back().degrees >= 360;
        for (const double share : {0.0, 0.5, 1.0}) {
            const double inner = sector.degrees - std::copysign(2 * kOffEdge, sector.degrees);
            const double angle = qDegreesToRadians(from + std::copysign(kOffEdge, sector.degrees) + share * inner);
            const QPointF place = m_layout.centre + kAtRadius * m_layout.radius * QPointF(cos(angle), -sin(angle));
            if (!covered && m_layout.drawsPie)
                wrong += wrongColor("sector of line " + std::to_string(sector.line), place, lineColor(sector.line));
        }
        from += sector.degrees;
    }
    return wrong;
}

std::string PlateProbes::ground() const
{
    std::string wrong;
    const auto isGround = [&](const std::string& what, const QPointF& place) {
        wrong += wrongColor(what, place, m_ground);
    };
    if (!titleIsCovered())
        isGround("left end of the title", m_layout.title.topLeft());
    if (m_layout.drawsPie) {
        const double away = m_layout.radius + 2;
        for (const QPointF& step : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)})
            isGround("beside the pie", m_layout.centre + step * away);
    }
    isGround("right of the heading", {m_layout.tableRight() - 1.0, m_layout.table.top() + m_layout.row / 2.0});
    isGround("below the blocks", {m_layout.text + 0.5, m_layout.titleCell(1).bottom() + 4.5});
    isGround("last pixel", {m_picture.width() / m_ratio - 0.5, m_picture.height() / m_ratio - 0.5});
    return wrong;
}

std::string PlateProbes::borders() const
{
    std::string wrong;
    // Walks across where the border is, along one row or column of device pixels, and counts those of the border.
    const auto cross = [&](const std::string& what, double logical, bool vertical, int along) {
        if (logical < 0)
            return; // above the widget
        const int end = vertical ? m_picture.width() : m_picture.height();
        int thick = 0;
        int inPlace = 0;
        for (int i = std::max(0, qFloor((logical - 1) * m_ratio)); i < std::min(end, qCeil((logical + 2) * m_ratio));
             ++i) {
            const QColor color = vertical ? m_picture.pixelColor(i, along) : m_picture.pixelColor(along, i);
            const bool at = i >= qFloor(logical * m_ratio) && i < qCeil((logical + 1) * m_ratio);
            thick += color == m_splitter;
            inPlace += color == m_splitter && at;
            if (color != m_splitter && color != m_ground)
                wrong += what + ": impure " + color.name().toStdString() + "\n";
        }
        if (thick != 1 || inPlace != 1)
            wrong +=
                what + " is " + std::to_string(thick) + " pixels thick, " + std::to_string(inPlace) + " in place\n";
    };
    const QRect cell = m_layout.titleCell(0);
    for (const int block : {0, 1}) {
        const int along = qFloor((m_layout.titleCell(block).top() + 2.5 * m_layout.row) * m_ratio);
        cross("left border", 0, true, along);
        cross("border between title and body", cell.width(), true, along);
        cross("right border", m_layout.tableRight(), true, along);
    }
    for (const int edge : {0, 1, 2}) {
        for (const double x : {0.5 * m_layout.text, m_layout.tableRight() - 20.0})
            cross("border below " + std::to_string(edge) + " blocks", cell.top() + edge * 5 * m_layout.row, false,
                  qFloor(x * m_ratio));
    }
    return wrong;
}

std::string PlateProbes::squares() const
{
    std::string wrong;
    for (const int block : {0, 1}) {
        for (int sizeClass = 0; sizeClass < 4; ++sizeClass)
            wrong += wrongSquare(block, sizeClass);
    }
    return wrong;
}

std::string PlateProbes::wrongSquare(int block, int sizeClass) const
{
    const QColor expected = lineColor(block * 4 + sizeClass);
    const QRect square = device(m_layout.square(block, sizeClass));
    const QRect around = square.adjusted(-2, -1, 2, 1);
    const std::string what = "square " + std::to_string(block * 4 + sizeClass);
    const QRect ink = inkedIn(m_picture, around, m_ground.rgb());
    if (!square.adjusted(-1, -1, 1, 1).contains(ink) || !ink.contains(square.adjusted(1, 1, -1, -1)))
        return what + " at " + rectText(ink) + ", not " + rectText(square) + "\n";
    for (int y = ink.top(); y <= ink.bottom(); ++y) {
        for (int x = ink.left(); x <= ink.right(); ++x) {
            if (m_picture.pixelColor(x, y) != expected)
                return what + " has another colour at " + rectText({x, y, 1, 1}) + "\n";
        }
    }
    return {};
}

std::string PlateProbes::texts() const
{
    std::string wrong;
    if (!titleIsCovered())
        wrong += wrongText(QStringLiteral("龙虎看盘（逐笔） "), m_layout.title, Qt::AlignCenter, "fnt_default_normal");
    const QRect heading(0, m_layout.table.top(), m_layout.table.width(), m_layout.row);
    wrong += wrongText(QStringLiteral("逐笔成交成交量统计"), heading, Qt::AlignLeft | Qt::AlignVCenter, kHeavy);
    for (const int block : {0, 1}) {
        const PlateBlock& shown = block == 0 ? m_state.buys : m_state.sells;
        const int oneLine = static_cast<int>(Qt::AlignVCenter) | Qt::TextSingleLine;
        wrong += wrongText(shown.sum, m_layout.line(block, 0), oneLine | Qt::AlignLeft, kHeavy);
        for (int c = 0; c < 4; ++c) {
            QRect rect = m_layout.line(block, 1 + c);
            rect.setLeft(m_layout.nameLeft());
            wrong += wrongText(kNames[c], rect, oneLine | Qt::AlignLeft, kHeavy);
            rect.setRight(m_layout.volumeRight());
            wrong += wrongText(shown.volumes[c], rect, oneLine | Qt::AlignRight, kHeavy);
            rect.setRight(m_layout.ratioRight());
            wrong += wrongText(shown.ratios[c], rect, oneLine | Qt::AlignRight, kHeavy);
        }
    }
    return wrong;
}

std::string PlateProbes::wrongText(const QString& text, const QRect& rect, int alignment, const QString& font) const
{
    const QRect area = device(rect);
    if (area.isEmpty())
        return {}; // beyond the widget
    QPainter painter(&m_scratch);
    ZP::CSimpleText::drawText(painter, rect, alignment, text, font, kTextColor);
    painter.end();
    const QRect ink = inkedIn(m_scratch, area, m_ground.rgb());
    const bool same = m_picture.copy(ink) == m_scratch.copy(ink);
    m_scratch.fill(m_ground);
    if (ink.isEmpty())
        return text.toStdString() + " is nowhere\n";
    return same ? "" : text.toStdString() + " looks other at " + rectText(ink) + "\n";
}

std::string PlateProbes::numberEdges() const
{
    std::string wrong;
    for (const int block : {0, 1}) {
        for (int c = 0; c < 4; ++c) {
            const QRect line = m_layout.line(block, 1 + c);
            const auto edge = [&](const QString& text, int right) {
                const int width = ZP::CSimpleText::getSize(text, kHeavy).width();
                // Up to the next text, or the border.
                const QRect area = device({right - width + 1, line.top() + 1, width + 3, line.height() - 2});
                const double inked = inkedIn(m_picture, area, m_ground.rgb()).right() / m_ratio;
                if (inked > right + 1 || inked < right - 3)
                    wrong += text.toStdString() + " ends at " + std::to_string(inked) + ", not " +
                             std::to_string(right) + "\n";
            };
            const PlateBlock& shown = block == 0 ? m_state.buys : m_state.sells;
            edge(shown.volumes[c], m_layout.volumeRight());
            edge(shown.ratios[c], m_layout.ratioRight());
        }
    }
    return wrong;
}

std::string PlateProbes::blockTitles() const
{
    return wrongBlockTitle(0) + wrongBlockTitle(1);
}

std::string PlateProbes::wrongBlockTitle(int block) const
{
    const QString title = block == 0 ? QStringLiteral("主动买入") : QStringLiteral("主动卖出");
    const QRect cell = m_layout.titleCell(block);
    const int slot = m_layout.text + 2;
    const int top = cell.top() + std::max(0, cell.height() - 4 * slot) / 2;
    std::string wrong;
    for (int i = 0; i < 4; ++i) {
        const QRect place = device({cell.left() + 2, top + i * slot, cell.width() - 3, slot});
        const QRect ink = inkedIn(m_picture, place, m_ground.rgb());
        const double off = ink.center().x() / m_ratio - m_layout.text;
        if (ink.isEmpty() || std::abs(off) > 1.5)
            wrong += title.mid(i, 1).toStdString() + " is " + std::to_string(off) + " off the middle\n";
        // Nothing between one character and the next.
        const QRect gap = device({cell.left() + 2, top + (i + 1) * slot - 1, cell.width() - 3, 1});
        if (!inkedIn(m_picture, gap, m_ground.rgb()).isEmpty())
            wrong += title.mid(i, 1).toStdString() + " touches the next\n";
        wrong += wrongText(title.mid(i, 1), {cell.left(), top + i * slot, cell.width(), slot}, Qt::AlignCenter, kHeavy);
    }
    return wrong;
}

// In a widget too low for both.
bool PlateProbes::titleIsCovered() const
{
    return m_layout.table.top() < m_layout.title.bottom();
}

QColor PlateProbes::at(const QPointF& logical) const
{
    return m_picture.pixelColor(qFloor(logical.x() * m_ratio), qFloor(logical.y() * m_ratio));
}

QRect PlateProbes::device(const QRect& logical) const
{
    const QRect rect(QPoint(qRound(logical.left() * m_ratio), qRound(logical.top() * m_ratio)),
                     QPoint(qRound((logical.right() + 1) * m_ratio) - 1, qRound((logical.bottom() + 1) * m_ratio) - 1));
    return rect & m_picture.rect();
}

std::string PlateProbes::wrongColor(const std::string& what, const QPointF& logical, const QColor& expected) const
{
    if (!m_picture.rect().contains((logical * m_ratio).toPoint()) || at(logical) == expected)
        return {};
    std::ostringstream text;
    text << what << " at " << logical.x() << ',' << logical.y() << " is " << at(logical).name().toStdString()
         << ", not " << expected.name().toStdString() << '\n';
    return text.str();
}

} // namespace tests
