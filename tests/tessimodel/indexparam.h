#pragma once

#include "indexui/tessimodel/ccustommodelindexparam.h"
#include "UiResource/uiresource.h"

#include <limits>
#include <sstream>
#include <string>

// What tests of the index panel are written with.
namespace tests {

// An index panel to which a test can hand a record on its own thread.
class IndexParam : public TC::CCustomModelIndexParam {
public:
    using CCustomModelIndexParam::slotOnData;
};

inline QColor colourByKey(const char* key)
{
    return ZP::CUiResource::getColor(key);
}

// "rise", "fall", "normal", "none" for a default QColor, else the colour itself.
inline std::string colourText(const QColor& colour)
{
    if (!colour.isValid())
        return "none";
    if (colour == colourByKey("ic_clr_entrust_text_rise"))
        return "rise";
    if (colour == colourByKey("ic_clr_entrust_text_fall"))
        return "fall";
    return colour == colourByKey("ic_clr_modulegroup_default_text") ? "normal" : colour.name().toStdString();
}

// "0 最新指数 [--] = none, none": position, label, text, number ("none" for the largest double), colour.
inline std::string rowText(const TC::SIndexParamRow& row)
{
    std::ostringstream text;
    text.precision(12);
    text << row.id << ' ' << row.label.toStdString() << " [" << row.text.toStdString() << "] = ";
    row.value == std::numeric_limits<double>::max() ? text << "none" : text << row.value;
    text << ", " << colourText(row.color);
    return text.str();
}

// All rows, one a line.
inline std::string rowsText(const TC::CCustomModelIndexParam& model)
{
    std::string text;
    for (const auto& row : model.m_rows)
        text += rowText(row) + "\n";
    return text;
}

} // namespace tests
