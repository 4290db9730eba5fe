#include "tests/tessimodel/platenotes.h"

#include "BaseWidget/basewidget.h"
#include "UiResource/uiresource.h"
#include "UiUtil/simpletext.h"

#include <QHash>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <utility>

namespace tests {

namespace {

constexpr double kDegreesOfHalfTurn = 180;

int g_heavyHeight = 10;
std::vector<std::string> g_unknownKeys;
BusEvent g_busEvent;
std::function<void(const QString&)> g_colorListener;

const QHash<QString, QColor>& keyColors()
{
    static const QHash<QString, QColor> colors = [] {
        QStringList keys = {"ic_clr_watchplate_bg", "ic_clr_watchplate_splitter", "ic_clr_entrust_default_text",
                            "ic_clr_entrust_sdk_text", "ic_clr_entrust_sdk_title_text"};
        for (int line = 0; line < 8; ++line)
            keys.append(QStringLiteral("ic_clr_watchplate_line%1").arg(line));
        QHash<QString, QColor> table;
        for (const QString& key : keys)
            table.insert(key, QColor(17 * (1 + table.size()), 100, 255 - 17 * table.size()));
        return table;
    }();
    return colors;
}

std::string keyOf(const QColor& color)
{
    const QString key = keyColors().key(color);
    return key.isEmpty() ? "unnamed colour " + color.name(QColor::HexArgb).toStdString() : key.toStdString();
}

// Two decimals, none where they are zero.
std::string number(double value)
{
    std::ostringstream text;
    const double rounded = std::round(value * 100) / 100;
    text << (rounded == 0 ? 0 : rounded);
    return text.str();
}

std::string place(const QPointF& point)
{
    return number(point.x()) + "," + number(point.y());
}

std::string place(const QRectF& rect)
{
    return place(rect.topLeft()) + " " + number(rect.width()) + "x" + number(rect.height());
}

double degreesFrom(const QPointF& centre, const QPointF& point)
{
    return std::atan2(centre.y() - point.y(), point.x() - centre.x()) * kDegreesOfHalfTurn / M_PI;
}

std::string sectorText(const QPointF& centre, double radius, double from, double over, const std::string& key)
{
    const double turn = 2 * kDegreesOfHalfTurn;
    const double start = from - turn * std::floor(from / turn + 1e-4);
    std::ostringstream text;
    text.precision(4);
    text << "sector of " << place(centre) << " radius " << radius << " from " << std::round(start * 10) / 10 << " over "
         << std::round(over * 10) / 10 << ' ' << key;
    return text.str();
}

// A sector as it is drawn: centre, line to the arc, curves of at most a quarter each.
std::string sectorOf(const QPainterPath& path, const std::string& key)
{
    if (path.elementCount() < 3 || !path.elementAt(0).isMoveTo() || !path.elementAt(1).isLineTo())
        return "path that is no sector " + key;
    const QPointF centre = path.elementAt(0);
    const QPointF start = path.elementAt(1);
    double angle = degreesFrom(centre, start);
    const double from = angle;
    double over = 0;
    for (int i = 2; i + 2 < path.elementCount() && path.elementAt(i).isCurveTo(); i += 3) {
        const double end = degreesFrom(centre, path.elementAt(i + 2));
        over += std::remainder(end - angle, 2 * kDegreesOfHalfTurn);
        angle = end;
    }
    return sectorText(centre, std::hypot(start.x() - centre.x(), start.y() - centre.y()), from, over, key);
}

// Writes down in words what reaches it, in the coordinates of the device.
class NotingEngine : public QPaintEngine {
public:
    explicit NotingEngine(NotedDrawing& notes)
        : QPaintEngine(AllFeatures)
        , m_notes(notes)
    {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    Type type() const override { return User; }

    void drawRects(const QRectF* rects, int count) override
    {
        for (int i = 0; i < count; ++i)
            noteRect(painter()->combinedTransform().mapRect(rects[i]));
    }
    void drawRects(const QRect* rects, int count) override
    {
        for (int i = 0; i < count; ++i)
            noteRect(painter()->combinedTransform().mapRect(QRectF(rects[i])));
    }
    void drawPath(const QPainterPath& path) override
    {
        const QPen pen = painter()->pen();
        m_notes.note(sectorOf(painter()->combinedTransform().map(path), keyOf(painter()->brush().color())) +
                     (pen.style() == Qt::NoPen ? "" : " with a pen") +
                     (painter()->testRenderHint(QPainter::Antialiasing) ? " smooth" : ""));
    }
    void drawTextItem(const QPointF&, const QTextItem& item) override
    {
        m_notes.note("text past the terminal " + item.text().toStdString());
    }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override { m_notes.note("pixmap"); }
    void drawImage(const QRectF&, const QImage&, const QRectF&, Qt::ImageConversionFlags) override
    {
        m_notes.note("image");
    }
    void drawLines(const QLineF*, int) override { m_notes.note("lines"); }
    void drawLines(const QLine*, int) override { m_notes.note("lines"); }
    void drawPoints(const QPointF*, int) override { m_notes.note("points"); }
    void drawPoints(const QPoint*, int) override { m_notes.note("points"); }
    void drawEllipse(const QRectF&) override { m_notes.note("ellipse"); }
    void drawEllipse(const QRect&) override { m_notes.note("ellipse"); }
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override { m_notes.note("polygon"); }
    void drawPolygon(const QPoint*, int, PolygonDrawMode) override { m_notes.note("polygon"); }

private:
    void noteRect(const QRectF& rect)
    {
        const QPen pen = painter()->pen();
        const QBrush brush = painter()->brush();
        if (brush.style() != Qt::NoBrush)
            m_notes.note(fillNote(rect, keyOf(brush.color())) + hint());
        if (pen.style() == Qt::NoPen)
            return;
        m_notes.note("frame " + place(rect) + " " + keyOf(pen.color()) + " " + number(pen.widthF()) +
                     (pen.isCosmetic() ? " cosmetic" : "") + (pen.style() == Qt::SolidLine ? "" : " dashed") + hint());
    }
    const char* hint() const { return painter()->testRenderHint(QPainter::Antialiasing) ? " smooth" : ""; }

    NotedDrawing& m_notes;
};

// Where a text of `size` begins in `rect`.
QPointF textTopLeft(const QRectF& rect, int alignment, const QSizeF& size)
{
    QPointF at = rect.topLeft();
    if (alignment & Qt::AlignRight)
        at.setX(rect.right() - size.width());
    if (alignment & Qt::AlignHCenter)
        at.setX(rect.center().x() - size.width() / 2);
    if (alignment & Qt::AlignBottom)
        at.setY(rect.bottom() - size.height());
    if (alignment & Qt::AlignVCenter)
        at.setY(rect.center().y() - size.height() / 2);
    return at;
}

} // namespace

void setHeavyTextHeight(int height)
{
    g_heavyHeight = height;
}

const std::vector<std::string>& unknownKeys()
{
    return g_unknownKeys;
}

void setColorListener(std::function<void(const QString&)> listener)
{
    g_colorListener = std::move(listener);
}

const BusEvent& lastBusEvent()
{
    return g_busEvent;
}

std::string differences(const std::vector<std::string>& drawn, const std::vector<std::string>& expected)
{
    std::string text;
    for (std::size_t i = 0; i < std::max(drawn.size(), expected.size()); ++i) {
        const std::string is = i < drawn.size() ? drawn[i] : "nothing";
        const std::string should = i < expected.size() ? expected[i] : "nothing";
        if (is != should)
            text.append("drawn: ").append(is).append("\n  not: ").append(should).append("\n");
    }
    return text;
}

QSizeF noteTextSize(const QString& text, const std::string& font)
{
    const int height = font == "fnt_default_normal_heavy" ? g_heavyHeight : std::max(1, g_heavyHeight - 4);
    double width = 0;
    for (const QChar character : text)
        width += character.unicode() < 0x2000 ? height / 2.0 : height;
    return {std::ceil(width), static_cast<double>(height)};
}

std::string fillNote(const QRectF& rect, const std::string& key)
{
    return "fill " + place(rect) + " " + key;
}

std::string frameNote(const QRectF& rect, const std::string& key)
{
    return "frame " + place(rect) + " " + key + " 1 cosmetic";
}

// By way of a path, since the ends of its curves are a little off the circle.
std::string sectorNote(const QPointF& centre, double radius, double from, double over, const std::string& key)
{
    QPainterPath path(centre);
    path.arcTo(QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius), from, over);
    path.closeSubpath();
    return sectorOf(path, key);
}

std::string textNote(const QString& text, const QPointF& topLeft, const std::string& font, const std::string& key)
{
    return "text " + text.toStdString() + " at " + place(QRectF(topLeft, noteTextSize(text, font))) + " " + font + " " +
           key;
}

NotedDrawing::NotedDrawing(const QSize& size)
    : m_size(size)
    , m_engine(std::make_unique<NotingEngine>(*this))
{}

NotedDrawing::~NotedDrawing() = default;

QPaintEngine* NotedDrawing::paintEngine() const
{
    return m_engine.get();
}

int NotedDrawing::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth:
        return m_size.width();
    case PdmHeight:
        return m_size.height();
    case PdmDepth:
        return 32;
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return 96;
    default:
        return QPaintDevice::metric(metric);
    }
}

} // namespace tests

namespace ZP {

QColor CUiResource::getColor(const QString& key)
{
    if (tests::g_colorListener)
        tests::g_colorListener(key);
    if (!tests::keyColors().contains(key))
        tests::g_unknownKeys.push_back(key.toStdString());
    return tests::keyColors().value(key);
}

QFont CUiResource::getFont(const QString& key)
{
    tests::g_unknownKeys.push_back("font of its own: " + key.toStdString());
    return {};
}

QSize CSimpleText::getSize(const QString& text, const QString& fontKey)
{
    return tests::noteTextSize(text, fontKey.toStdString()).toSize();
}

void CSimpleText::drawText(QPainter& painter, const QRect& rect, int alignment, const QString& text,
                           const QString& fontKey, const QString& colorKey)
{
    auto* const drawing = dynamic_cast<tests::NotedDrawing*>(painter.paintEngine()->paintDevice());
    if (!drawing)
        return;
    const QRectF at = painter.combinedTransform().mapRect(QRectF(rect));
    const QSizeF size = tests::noteTextSize(text, fontKey.toStdString());
    const QPointF topLeft = tests::textTopLeft(at, alignment, size);
    const bool cut = !(alignment & Qt::TextDontClip) && !at.contains(QRectF(topLeft, size));
    drawing->note(tests::textNote(text, topLeft, fontKey.toStdString(), colorKey.toStdString()) + (cut ? " cut" : ""));
    if (!(alignment & Qt::TextSingleLine))
        drawing->foldableTexts.push_back(text);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature is the terminal's
bool CBaseWidget::handleEvent(int event, int first, int second, QString text, void* payload)
{
    tests::g_busEvent = {QStringLiteral("%1 %2 %3 %4").arg(event).arg(first).arg(second).arg(text).toStdString(),
                         payload};
    return event == 7;
}

} // namespace ZP
