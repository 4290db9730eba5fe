#pragma once

#include <QString>

// Colour keys of values as panels show them, for ZP::CUiResource::getColor. Only those with a number in them allocate.
namespace TC::detail {

inline QString riseColorKey()
{
    return QStringLiteral("ic_clr_entrust_text_rise");
}

inline QString fallColorKey()
{
    return QStringLiteral("ic_clr_entrust_text_fall");
}

inline QString defaultTextColorKey()
{
    return QStringLiteral("ic_clr_entrust_default_text");
}

// A price that equals its base, within the tolerance of prices.
inline QString levelColorKey()
{
    return defaultTextColorKey();
}

inline QString plainColorKey()
{
    return QStringLiteral("ic_clr_modulegroup_default_text");
}

inline QString volumeColorKey()
{
    return QStringLiteral("ic_clr_entrust_amount");
}

inline QString amountColorKey()
{
    return QStringLiteral("ic_clr_model_today_amount");
}

inline QString openInterestColorKey()
{
    return QStringLiteral("ic_clr_model_today_position");
}

inline QString settlementColorKey()
{
    return QStringLiteral("ic_clr_global_equal");
}

inline QString phaseColorKey()
{
    return QStringLiteral("ic_clr_model_trade_status");
}

// The watch plate's ground, and its lines from 0 to 7.
inline QString plateGroundColorKey()
{
    return QStringLiteral("ic_clr_watchplate_bg");
}

inline QString plateLineColorKey(int line)
{
    return QStringLiteral("ic_clr_watchplate_line%1").arg(line);
}

} // namespace TC::detail
