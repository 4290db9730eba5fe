#include "UiUtil/simpletext.h"

#include "standin/theme.h"
#include "tests/support/inkedpixels.h"
#include "tests/support/offscreen.h"
#include "UiResource/uiresource.h"

#include <QFontMetrics>
#include <QImage>
#include <QPainter>

using ZP::CSimpleText;
using ZP::CUiResource;

namespace {

constexpr char kFont[] = "fnt_default_normal_heavy";
constexpr char kRise[] = "ic_clr_entrust_text_rise";
constexpr QRect kRect{20, 10, 100, 24};

QImage canvas()
{
    QImage image(160, 60, QImage::Format_RGB32);
    image.fill(CUiResource::getColor("ic_clr_watchplate_bg"));
    return image;
}

QImage drawn(int alignment, const QString& text, const QString& colorKey = kRise)
{
    QImage image = canvas();
    QPainter painter(&image);
    CSimpleText::drawText(painter, kRect, alignment, text, kFont, colorKey);
    return image;
}

QRect inked(const QImage& image)
{
    return tests::inkedIn(image, image.rect(), CUiResource::getColor("ic_clr_watchplate_bg").rgb());
}

} // namespace

class SimpleTextTest : public Offscreen {};

TEST_F(SimpleTextTest, shouldMeasureOneLineInTheFontOfTheKeyEvenWhenTextHasALineBreak)
{
    const QFontMetrics metrics(CUiResource::getFont(kFont));
    const QSize size = CSimpleText::getSize("计算行高", kFont);
    EXPECT_EQ(size.height(), metrics.height());
    EXPECT_EQ(size.width(), metrics.horizontalAdvance("计算行高"));
    EXPECT_GT(CSimpleText::getSize("计算行高计算行高", kFont).width(), size.width());
    EXPECT_EQ(CSimpleText::getSize("一\n二", kFont).height(), size.height());
    EXPECT_EQ(CSimpleText::getSize("", kFont).width(), 0);
}

TEST_F(SimpleTextTest, shouldDrawInsideTheRectangleWhenAlignedToEitherSide)
{
    const QRect left = inked(drawn(Qt::AlignLeft | Qt::AlignVCenter, "10.23"));
    const QRect right = inked(drawn(Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, "10.23"));
    ASSERT_FALSE(left.isEmpty());
    ASSERT_FALSE(right.isEmpty());
    EXPECT_TRUE(kRect.contains(left));
    EXPECT_TRUE(kRect.contains(right));
    EXPECT_LT(left.left(), kRect.left() + 4);
    EXPECT_GT(right.right(), kRect.right() - 4);
    EXPECT_TRUE(inked(drawn(Qt::AlignCenter, "")).isEmpty());
}

TEST_F(SimpleTextTest, shouldDrawInAnotherColourWhenKeyOrThemeChanges)
{
    EXPECT_NE(drawn(Qt::AlignCenter, "10.23"), drawn(Qt::AlignCenter, "10.23", "ic_clr_entrust_text_fall"));
    for (const standin::Theme theme : {standin::Theme::Dark, standin::Theme::Light}) {
        standin::setTheme(theme);
        const QImage image = drawn(Qt::AlignCenter, "████");
        EXPECT_EQ(image.pixel(kRect.center()), CUiResource::getColor(kRise).rgb());
    }
}

TEST_F(SimpleTextTest, shouldLeaveThePainterAsItWasWhenTextIsDrawn)
{
    QImage image = canvas();
    QPainter painter(&image);
    const QFont font("Monospace", 31);
    const QPen pen(Qt::magenta, 3, Qt::DashLine);
    painter.setFont(font);
    painter.setPen(pen);
    painter.setBrush(Qt::yellow);
    const QFont before = painter.font();
    CSimpleText::drawText(painter, kRect, Qt::AlignCenter, "10.23", kFont, kRise);
    EXPECT_EQ(painter.font(), before);
    EXPECT_EQ(painter.pen(), pen);
    EXPECT_EQ(painter.brush().color(), QColor(Qt::yellow));
}
