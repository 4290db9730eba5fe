#include "standin/theme.h"

#include "BaseWidget/basewidget.h"
#include "UiResource/uiresource.h"

#include <QApplication>
#include <QGuiApplication>
#include <QHash>

#include <utility>

namespace standin {

namespace {

constexpr int kTextPixels = 12;

using Colors = QHash<QString, QColor>;

// `share` of the one colour over the other.
QColor mixed(const QColor& over, const QColor& under, double share)
{
    const auto channel = [share](int a, int b) { return qRound(a * share + b * (1 - share)); };
    return {channel(over.red(), under.red()), channel(over.green(), under.green()), channel(over.blue(), under.blue())};
}

// The plate's sectors and squares: the side's colour, fainter from the largest orders to the smallest.
void addPlateLines(Colors& colors, const ThemeTokens& tokens)
{
    constexpr double kShares[] = {1, 0.78, 0.58, 0.4};
    int line = 0;
    for (const QColor& side : {tokens.rise, tokens.fall}) {
        for (const double share : kShares)
            colors.insert(QStringLiteral("ic_clr_watchplate_line%1").arg(line++), mixed(side, tokens.panel, share));
    }
}

Colors themeColors(const ThemeTokens& tokens)
{
    Colors colors = {
        {"clr_default", tokens.quietText},
        {"ic_clr_entrust_amount", tokens.size},
        {"ic_clr_entrust_default_text", tokens.text},
        {"ic_clr_entrust_sdk_text", tokens.text},
        {"ic_clr_entrust_sdk_title_text", tokens.quietText},
        {"ic_clr_entrust_text_fall", tokens.fall},
        {"ic_clr_entrust_text_rise", tokens.rise},
        {"ic_clr_global_equal", tokens.flat},
        {"ic_clr_model_today_amount", tokens.size},
        {"ic_clr_model_today_position", tokens.size},
        {"ic_clr_model_trade_status", tokens.text},
        {"ic_clr_modulegroup_default_text", tokens.text},
        {"ic_clr_watchplate_bg", tokens.panel},
        {"ic_clr_watchplate_splitter", tokens.strongLine},
    };
    addPlateLines(colors, tokens);
    return colors;
}

// The weight of each font.
const QHash<QString, QFont::Weight>& themeFonts()
{
    static const QHash<QString, QFont::Weight> fonts = {
        {"fnt_default_normal", QFont::Normal},
        {"fnt_default_normal_heavy", QFont::DemiBold},
    };
    return fonts;
}

struct CurrentTheme {
    Theme theme = Theme::Dark;
    Palette palette = Palette::RedUp;
    Colors colors = themeColors(themeTokens(Theme::Dark, Palette::RedUp));

    static CurrentTheme& instance()
    {
        static CurrentTheme current;
        return current;
    }
};

ThemeTokens redUpTokens(Theme theme)
{
    if (theme == Theme::Dark) {
        return {.ground = "#0E1116",
                .panel = "#141920",
                .raised = "#1B222B",
                .line = "#222B36",
                .strongLine = "#324051",
                .text = "#D9E0EA",
                .quietText = "#8C98A8",
                .faint = "#566274",
                .rise = "#F2524E",
                .fall = "#29B36A",
                .flat = "#C6CEDA",
                .size = "#E0B84C",
                .accent = "#4C8DFF"};
    }
    return {.ground = "#F3F5F8",
            .panel = "#FFFFFF",
            .raised = "#F8FAFC",
            .line = "#E3E8EE",
            .strongLine = "#C9D2DD",
            .text = "#1A2230",
            .quietText = "#5A6677",
            .faint = "#9AA5B4",
            .rise = "#D3302C",
            .fall = "#14833F",
            .flat = "#3A4555",
            .size = "#9A6B00",
            .accent = "#2563EB"};
}

} // namespace

ThemeTokens themeTokens(Theme theme, Palette palette)
{
    ThemeTokens tokens = redUpTokens(theme);
    if (palette == Palette::GreenUp)
        std::swap(tokens.rise, tokens.fall);
    if (palette == Palette::ColourBlind) {
        tokens.rise = theme == Theme::Dark ? "#E69F00" : "#B06A00";
        tokens.fall = theme == Theme::Dark ? "#56B4E9" : "#0072B2";
    }
    return tokens;
}

Theme currentTheme()
{
    return CurrentTheme::instance().theme;
}

Palette currentPalette()
{
    return CurrentTheme::instance().palette;
}

ThemeTokens currentTokens()
{
    return themeTokens(currentTheme(), currentPalette());
}

void setTheme(Theme theme, Palette palette)
{
    CurrentTheme::instance() = {theme, palette, themeColors(themeTokens(theme, palette))};
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return;
    for (QWidget* const widget : QApplication::allWidgets()) {
        if (auto* const base = qobject_cast<ZP::CBaseWidget*>(widget))
            base->themeChanged();
    }
}

QStringList themeColorKeys()
{
    QStringList keys = CurrentTheme::instance().colors.keys();
    keys.sort();
    return keys;
}

QStringList themeFontKeys()
{
    QStringList keys = themeFonts().keys();
    keys.sort();
    return keys;
}

} // namespace standin

namespace ZP {

QColor CUiResource::getColor(const QString& key)
{
    return standin::CurrentTheme::instance().colors.value(key);
}

QFont CUiResource::getFont(const QString& key)
{
    const auto weight = standin::themeFonts().constFind(key);
    if (weight == standin::themeFonts().constEnd())
        return QGuiApplication::font();
    QFont font(QStringLiteral("Noto Sans CJK SC"));
    font.setPixelSize(standin::kTextPixels);
    font.setWeight(*weight);
    return font;
}

} // namespace ZP
