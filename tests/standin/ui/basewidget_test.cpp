#include "BaseWidget/basewidget.h"

#include "standin/theme.h"
#include "tests/support/offscreen.h"
#include "UiResource/uiresource.h"
#include "UiUtil/simpletext.h"

#include <QImage>
#include <QPainter>

namespace {

// Paints its ground and a text in theme colours, as the terminal's widgets do.
class Plate : public ZP::CBaseWidget {
public:
    explicit Plate(bool ownWindow = false, QWidget* parent = nullptr)
        : CBaseWidget("plate", ownWindow, parent)
    {}

    void themeChanged() override
    {
        ++changes;
        shownWhenChanged = isVisible();
        CBaseWidget::themeChanged();
    }

    int changes = 0;
    int paints = 0;
    bool shownWhenChanged = false;

protected:
    void paintEvent(QPaintEvent*) override
    {
        ++paints;
        QPainter painter(this);
        painter.fillRect(rect(), ZP::CUiResource::getColor("ic_clr_watchplate_bg"));
        ZP::CSimpleText::drawText(painter, rect(), Qt::AlignCenter, "████", "fnt_default_normal",
                                  "ic_clr_entrust_default_text");
    }
};

} // namespace

class BaseWidgetTest : public Offscreen {};

TEST_F(BaseWidgetTest, shouldCarryNameParentAndWindowWhenMade)
{
    Plate window(true);
    EXPECT_EQ(window.objectName(), "plate");
    EXPECT_TRUE(window.isWindow());
    const Plate part(false, &window);
    EXPECT_FALSE(part.isWindow());
    EXPECT_EQ(part.parentWidget(), &window);
    const Plate tool(true, &window);
    EXPECT_TRUE(tool.isWindow());
    EXPECT_EQ(tool.parentWidget(), &window);
}

TEST_F(BaseWidgetTest, shouldReturnFalseWhenAnEventIsHandedToIt)
{
    Plate plate;
    int payload = 0;
    EXPECT_FALSE(plate.handleEvent(1, 2, 3, "text", &payload));
}

TEST_F(BaseWidgetTest, shouldHearOfTheThemeOnceWhenShownFirst)
{
    Plate plate;
    QApplication::processEvents();
    EXPECT_EQ(plate.changes, 0);
    plate.show();
    QApplication::processEvents();
    EXPECT_EQ(plate.changes, 1);
    EXPECT_TRUE(plate.shownWhenChanged);
    plate.hide();
    plate.show();
    QApplication::processEvents();
    EXPECT_EQ(plate.changes, 1);
}

TEST_F(BaseWidgetTest, shouldHearNothingWhenGoneBeforeTheEventLoopRuns)
{
    auto plate = std::make_unique<Plate>();
    plate->show();
    plate.reset();
    EXPECT_NO_THROW(QApplication::processEvents());
}

TEST_F(BaseWidgetTest, shouldPaintAnewInTheNewColoursWhenThemeChanges)
{
    Plate plate;
    plate.resize(120, 40);
    plate.show();
    QApplication::processEvents();
    const int paints = plate.paints;
    const QImage dark = plate.grab().toImage();
    standin::setTheme(standin::Theme::Light);
    QApplication::processEvents();
    EXPECT_GT(plate.paints, paints + 1); // one more than grab's own
    const QImage light = plate.grab().toImage();
    EXPECT_EQ(dark.pixelColor(0, 0), QColor("#141920"));
    EXPECT_EQ(dark.pixelColor(60, 20), QColor("#D9E0EA"));
    EXPECT_EQ(light.pixelColor(0, 0), QColor("#FFFFFF"));
    EXPECT_EQ(light.pixelColor(60, 20), QColor("#1A2230"));
}
