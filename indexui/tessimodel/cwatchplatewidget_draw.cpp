#include "Common/numberformat.h"
#include "Env/appconfig.h"
#include "indexui/tessimodel/cwatchplatewidget_data.h"
#include "indexui/tessimodel/detail/colorkeys.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "UiResource/uiresource.h"
#include "UiUtil/simpletext.h"

#include <boost/thread/locks.hpp>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QRect>
#include <QString>

#include <algorithm>
#include <cmath>

namespace TC {

using namespace detail;
using ZP::CSimpleText;
using ZP::CUiResource;

namespace {

constexpr int kBlockRows = 5;  // a summary and four lines
constexpr int kTableRows = 12; // a heading, two blocks, and room below them
constexpr int kRowsBesidePie = 1 + kTableRows;
constexpr double kLineSpacing = 0.3; // of the height of a text
constexpr int kMargin = 5;
constexpr int kCharacterGap = 2; // between the characters of a vertical title
constexpr double kPieShare = 0.95;
constexpr double kFullCircle = 360; // degrees, counter-clockwise from three o'clock
constexpr double kTopAngle = 90;
constexpr float kLeastRatio = 1e-6F; // a smaller share has no sector

QString normalFont()
{
    return QStringLiteral("fnt_default_normal");
}

QString heavyFont()
{
    return QStringLiteral("fnt_default_normal_heavy");
}

// The embedded edition has text colours of its own.
QString headingColorKey()
{
    return CAppConfig::isClientType(CLIENT_TYPE_SDK) ? QStringLiteral("ic_clr_entrust_sdk_text")
                                                     : defaultTextColorKey();
}

QString blockTitleColorKey()
{
    return CAppConfig::isClientType(CLIENT_TYPE_SDK) ? QStringLiteral("ic_clr_entrust_sdk_title_text")
                                                     : defaultTextColorKey();
}

QString blockTitle(int direction)
{
    return direction == kActiveBuy ? QStringLiteral("主动买入") : QStringLiteral("主动卖出");
}

QString sizeClassName(int sizeClass)
{
    static const QString names[kPlateSizeClasses] = {QStringLiteral("特大"), QStringLiteral("大单"),
                                                     QStringLiteral("中单"), QStringLiteral("小单")};
    return names[sizeClass];
}

QString percentage(float ratio)
{
    return ZP::formatDoubleNumber(ratio, 1, utils::FORMAT_NUMBER_PERCENT, false, QStringLiteral("非法值"));
}

// All sizes follow from the height of a line of text, so that the plate scales with the font.
struct RowSizes {
    int text;
    int row;
};

RowSizes rowSizes()
{
    const int text = CSimpleText::getSize(QStringLiteral("计算行高"), heavyFont()).height();
    return {text, truncated32(text * kLineSpacing + 0.5) + text};
}

struct Layout {
    QRect title;
    QRect pie;
    QRect table;
};

// One below the other, neighbours sharing a row of pixels. What the title and the table leave belongs to the pie; where
// they leave less than nothing the table moves up.
Layout layoutOf(const QRect& rect, int row, bool hasVolume)
{
    Layout layout;
    layout.title = QRect(rect.left(), rect.top(), rect.width(), row);
    const int pieHeight = hasVolume ? std::min(rect.height() - kRowsBesidePie * row, rect.width()) : 0;
    layout.pie = QRect(rect.left(), layout.title.bottom(), rect.width(), pieHeight);
    const int tableTop = hasVolume ? layout.pie.bottom() : layout.title.bottom();
    layout.table = QRect(rect.left(), tableTop, rect.width(), kTableRows * row);
    return layout;
}

// Draws one picture of a plate.
class PlatePainter {
public:
    PlatePainter(QPainter& painter, const WatchPlateData& data)
        : m_painter(painter)
        , m_data(data)
    {}

    void draw(const QRect& rect)
    {
        const Layout layout = layoutOf(rect, m_sizes.row, m_data.hasVolume());
        drawTitle(layout.title);
        drawPie(layout.pie);
        drawTable(layout.table);
    }

private:
    void drawTitle(const QRect& rect)
    {
        fillGround(rect);
        CSimpleText::drawText(m_painter, rect, Qt::AlignCenter, QStringLiteral("龙虎看盘（逐笔） "), normalFont(),
                              defaultTextColorKey());
    }

    // Counter-clockwise from the top, in the order of the items: the sells from huge to small, then the buys from small
    // to huge.
    void drawPie(const QRect& rect)
    {
        const boost::unique_lock<boost::recursive_mutex> lock(m_data.m_mutex);
        const double radius = std::min(rect.height(), rect.width()) * 0.5 * kPieShare;
        if (m_data.m_items.empty() || !(radius > 0))
            return;

        m_painter.save();
        m_painter.setRenderHint(QPainter::Antialiasing);
        fillGround(rect);
        m_painter.setPen(Qt::NoPen);
        const QPointF centre = QRectF(rect).center();
        const QRectF circle(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
        double angle = 0;
        for (const WatchPlateItem& item : m_data.m_items) {
            if (!std::isfinite(item.ratio) || !(std::abs(item.ratio) > kLeastRatio))
                continue;
            const double sweep = static_cast<double>(item.ratio) * kFullCircle;
            QPainterPath sector(centre);
            sector.arcTo(circle, std::fmod(angle, kFullCircle) + kTopAngle, sweep);
            sector.closeSubpath();
            m_painter.setBrush(CUiResource::getColor(QString::fromStdString(item.colorKey)));
            m_painter.drawPath(sector);
            angle += sweep;
        }
        m_painter.restore();
    }

    void drawTable(const QRect& rect)
    {
        fillGround(rect);
        drawHeading(rect);
        const int blockHeight = kBlockRows * m_sizes.row;
        for (const int direction : {kActiveBuy, kActiveSell}) {
            const int top = rect.top() + m_sizes.row + direction * blockHeight;
            const QRect title(rect.left(), top, 2 * m_sizes.text, blockHeight);
            const QRect body(rect.left() + title.width(), top, rect.width() - title.width(), blockHeight);
            drawBorders(title, body);
            drawBlockTitle(title, blockTitle(direction));
            drawSummary(body, direction);
            for (int sizeClass = 0; sizeClass < kPlateSizeClasses; ++sizeClass)
                drawSizeClass(body, direction, sizeClass);
        }
    }

    void drawHeading(const QRect& table)
    {
        const QString text = QStringLiteral("逐笔成交成交量统计");
        const int width = CSimpleText::getSize(text, heavyFont()).width();
        const QRect rect(table.left(), table.top(), width, m_sizes.row);
        CSimpleText::drawText(m_painter, rect, Qt::AlignLeft | Qt::AlignVCenter, text, heavyFont(), headingColorKey());
    }

    // The cells' common edges lie on one another, and the outer one on the last pixel within the plate.
    void drawBorders(const QRect& title, const QRect& body)
    {
        QPen pen(CUiResource::getColor(QStringLiteral("ic_clr_watchplate_splitter")), 1);
        pen.setCosmetic(true); // one device pixel, whatever the screen's ratio
        m_painter.setPen(pen);
        m_painter.setBrush(Qt::NoBrush);
        m_painter.drawRect(title);
        m_painter.drawRect(body.adjusted(0, 0, -1, 0));
    }

    // One character below the other, from the top of the cell where they do not fit.
    void drawBlockTitle(const QRect& cell, const QString& title)
    {
        const int height = CSimpleText::getSize(title, heavyFont()).height() + kCharacterGap;
        int top = cell.top() + std::max(0, cell.height() - height * title.size()) / 2;
        const QString colorKey = blockTitleColorKey();
        for (const QChar character : title) {
            const QRect rect(cell.left(), top, cell.width(), height);
            CSimpleText::drawText(m_painter, rect, Qt::AlignCenter, character, heavyFont(), colorKey);
            top += height;
        }
    }

    void drawSummary(const QRect& body, int direction)
    {
        const QString count = QString::number(m_data.orderCountOf(direction));
        const QString average = ZP::formatDoubleNumber(m_data.averageOf(direction), 1);
        const int left = body.left() + kMargin;
        drawLine(left, body.right(), body.top(), Qt::AlignLeft, QStringLiteral("共%1单 %2手/单").arg(count, average));
    }

    void drawSizeClass(const QRect& body, int direction, int sizeClass)
    {
        const WatchPlateItem item = m_data.itemOf(direction, sizeClass);
        const int top = body.top() + (1 + sizeClass) * m_sizes.row;
        const int left = body.left() + kMargin;
        const int nameLeft = left + kMargin + m_sizes.text;
        const int right = body.right();
        const int volumeRight = truncated32((right - nameLeft) * 0.5 + nameLeft + 0.5);

        const QRect square(left, top + (m_sizes.row - m_sizes.text) / 2, m_sizes.text, m_sizes.text);
        m_painter.fillRect(square, CUiResource::getColor(plateLineColorKey(plateLine(direction, sizeClass))));
        drawLine(nameLeft, right, top, Qt::AlignLeft, sizeClassName(sizeClass));
        drawLine(nameLeft, volumeRight, top, Qt::AlignRight, ZP::formatIntNumber(item.volume));
        drawLine(nameLeft, right - kMargin, top, Qt::AlignRight, percentage(item.ratio));
    }

    // A text between two columns of pixels. Never clipped: a number without its first digits would be a wrong one.
    void drawLine(int left, int right, int top, Qt::Alignment side, const QString& text)
    {
        const QRect rect(left, top, right - left + 1, m_sizes.row);
        const int flags = static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextDontClip;
        CSimpleText::drawText(m_painter, rect, flags, text, heavyFont(), defaultTextColorKey());
    }

    void fillGround(const QRect& rect) { m_painter.fillRect(rect, CUiResource::getColor(plateGroundColorKey())); }

    QPainter& m_painter;
    const WatchPlateData& m_data;
    const RowSizes m_sizes = rowSizes();
};

} // namespace

void WatchPlateData::draw(QPainter& painter, const QRect& rect) const
{
    painter.save();
    PlatePainter(painter, *this).draw(rect);
    painter.restore();
}

} // namespace TC
