#pragma once

#include "apps/tessi/table.h"

#include <QColor>
#include <QString>

#include <vector>

namespace tessi {

// A table of parameters: label and value, and for programs the parameter's number and its colour.
std::vector<Table::Column> paramColumns();

// How a terminal shows what a panel draws in a colour: that of rise, that of fall, or any other.
Table::Tint tintOf(const QString& colourKey);
Table::Tint tintOf(const QColor& colour);

} // namespace tessi
