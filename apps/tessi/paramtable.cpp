#include "apps/tessi/paramtable.h"

#include "UiResource/uiresource.h"

namespace tessi {

namespace {

constexpr char kRiseKey[] = "ic_clr_entrust_text_rise";
constexpr char kFallKey[] = "ic_clr_entrust_text_fall";

template <class Colour>
Table::Tint tintAmong(const Colour& colour, const Colour& rise, const Colour& fall)
{
    if (colour == rise)
        return Table::Tint::Rise;
    return colour == fall ? Table::Tint::Fall : Table::Tint::None;
}

} // namespace

std::vector<Table::Column> paramColumns()
{
    return {{.name = "label"},
            {.name = "value", .alignRight = true},
            {.name = "id", .numeric = true, .forPrograms = true},
            {.name = "colour", .forPrograms = true}};
}

Table::Tint tintOf(const QString& colourKey)
{
    return tintAmong(colourKey, QString(kRiseKey), QString(kFallKey));
}

Table::Tint tintOf(const QColor& colour)
{
    return tintAmong(colour, ZP::CUiResource::getColor(kRiseKey), ZP::CUiResource::getColor(kFallKey));
}

} // namespace tessi
