#include "BaseWidget/basewidget.h"
#include "standin/theme.h"
#include "tests/support/offscreen.h"
#include "UiResource/uiresource.h"

#include <cmath>
#include <set>

using standin::Palette;
using standin::Theme;
using ZP::CUiResource;

namespace {

// What the models and the plate ask for: keys of texts, each drawn on the panel, and the rest.
const QStringList kTextKeys = {"clr_default",
                               "ic_clr_entrust_amount",
                               "ic_clr_entrust_default_text",
                               "ic_clr_entrust_sdk_text",
                               "ic_clr_entrust_sdk_title_text",
                               "ic_clr_entrust_text_fall",
                               "ic_clr_entrust_text_rise",
                               "ic_clr_global_equal",
                               "ic_clr_model_today_amount",
                               "ic_clr_model_today_position",
                               "ic_clr_model_trade_status",
                               "ic_clr_modulegroup_default_text"};
const QStringList kOtherKeys = {"ic_clr_watchplate_bg",    "ic_clr_watchplate_splitter", "ic_clr_watchplate_line0",
                                "ic_clr_watchplate_line1", "ic_clr_watchplate_line2",    "ic_clr_watchplate_line3",
                                "ic_clr_watchplate_line4", "ic_clr_watchplate_line5",    "ic_clr_watchplate_line6",
                                "ic_clr_watchplate_line7"};

// Relative luminance and contrast as the Web Content Accessibility Guidelines define them.
double luminance(const QColor& color)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return a > b ? a / b : b / a;
}

template <class Check>
void inEveryTheme(const Check& check)
{
    for (const Theme theme : {Theme::Dark, Theme::Light}) {
        for (const Palette palette : {Palette::RedUp, Palette::GreenUp, Palette::ColourBlind}) {
            SCOPED_TRACE(testing::Message()
                         << "theme " << static_cast<int>(theme) << ", palette " << static_cast<int>(palette));
            standin::setTheme(theme, palette);
            check();
        }
    }
}

class Listener : public ZP::CBaseWidget {
public:
    using CBaseWidget::CBaseWidget;
    void themeChanged() override { ++changes; }
    int changes = 0;
};

} // namespace

class ThemeTest : public Offscreen {};

TEST_F(ThemeTest, shouldGiveEveryKeyItsColourOrFontWhenAnyThemeIsSet)
{
    inEveryTheme([] {
        for (const QString& key : kTextKeys + kOtherKeys) {
            EXPECT_TRUE(CUiResource::getColor(key).isValid()) << key.toStdString();
            EXPECT_EQ(CUiResource::getColor(key).alpha(), 255) << key.toStdString();
        }
        QStringList all = kTextKeys + kOtherKeys;
        all.sort();
        EXPECT_EQ(standin::themeColorKeys(), all);
        EXPECT_EQ(standin::themeFontKeys(), QStringList({"fnt_default_normal", "fnt_default_normal_heavy"}));
        EXPECT_GT(CUiResource::getFont("fnt_default_normal_heavy").weight(),
                  CUiResource::getFont("fnt_default_normal").weight());
        EXPECT_EQ(CUiResource::getFont("fnt_default_normal").pixelSize(), 12);
    });
}

TEST_F(ThemeTest, shouldGiveInvalidColourAndApplicationFontWhenKeyIsUnknown)
{
    inEveryTheme([] {
        EXPECT_FALSE(CUiResource::getColor("ic_clr_watchplate_line8").isValid());
        EXPECT_FALSE(CUiResource::getColor("").isValid());
        EXPECT_EQ(CUiResource::getFont("fnt_unknown"), QApplication::font());
    });
}

TEST_F(ThemeTest, shouldShowEveryTextWithContrastWhenOnPanelOrPlate)
{
    inEveryTheme([] {
        const standin::ThemeTokens tokens = standin::currentTokens();
        for (const QString& key : kTextKeys) {
            for (const QColor& ground : {tokens.panel, CUiResource::getColor("ic_clr_watchplate_bg")})
                EXPECT_GE(contrast(CUiResource::getColor(key), ground), 3) << key.toStdString();
        }
    });
}

TEST_F(ThemeTest, shouldTellSectorsOfThePlateApartWhenAnyThemeIsSet)
{
    inEveryTheme([] {
        std::set<QRgb> seen = {CUiResource::getColor("ic_clr_watchplate_bg").rgb()};
        for (int line = 0; line < 8; ++line) {
            const QColor color = CUiResource::getColor(QString("ic_clr_watchplate_line%1").arg(line));
            EXPECT_TRUE(seen.insert(color.rgb()).second) << line;
        }
        EXPECT_EQ(CUiResource::getColor("ic_clr_watchplate_line0"), standin::currentTokens().rise);
        EXPECT_EQ(CUiResource::getColor("ic_clr_watchplate_line4"), standin::currentTokens().fall);
    });
}

TEST_F(ThemeTest, shouldShowRiseRedAndFallGreenExceptWhenThePaletteDiffers)
{
    const auto rise = [] { return CUiResource::getColor("ic_clr_entrust_text_rise"); };
    const auto fall = [] { return CUiResource::getColor("ic_clr_entrust_text_fall"); };
    EXPECT_EQ(rise(), QColor("#F2524E"));
    EXPECT_EQ(fall(), QColor("#29B36A"));
    standin::setTheme(Theme::Light);
    EXPECT_EQ(rise(), QColor("#D3302C"));
    EXPECT_EQ(fall(), QColor("#14833F"));
    standin::setTheme(Theme::Light, Palette::GreenUp);
    EXPECT_EQ(rise(), QColor("#14833F"));
    EXPECT_EQ(fall(), QColor("#D3302C"));
    standin::setTheme(Theme::Dark, Palette::ColourBlind);
    EXPECT_EQ(rise(), QColor("#E69F00"));
    EXPECT_EQ(fall(), QColor("#56B4E9"));
    EXPECT_EQ(standin::currentTheme(), Theme::Dark);
    EXPECT_EQ(standin::currentPalette(), Palette::ColourBlind);
}

TEST_F(ThemeTest, shouldTellEveryBaseWidgetWhenThemeIsSet)
{
    Listener window("window", true, nullptr);
    auto* const child = new Listener("child", false, &window);
    standin::setTheme(Theme::Light);
    standin::setTheme(Theme::Light);
    EXPECT_EQ(window.changes, 2);
    EXPECT_EQ(child->changes, 2);
    delete child;
    standin::setTheme(Theme::Dark);
    EXPECT_EQ(window.changes, 3);
}

TEST(ThemeWithoutApplication, shouldGiveColoursWhenNothingCanBeDrawn)
{
    standin::setTheme(Theme::Light);
    EXPECT_EQ(CUiResource::getColor("ic_clr_watchplate_bg"), QColor("#FFFFFF"));
    standin::setTheme(Theme::Dark);
    EXPECT_EQ(CUiResource::getColor("ic_clr_watchplate_bg"), QColor("#141920"));
}
