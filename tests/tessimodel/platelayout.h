#pragma once

#include <QPointF>
#include <QRect>

#include <algorithm>

namespace tests {

// Where everything of a watch plate in `plate` stands, from its layout rules, for a text of `textHeight`. `traded` says
// whether any sector has volume.
struct PlateLayout {
    PlateLayout(const QRect& plate, int textHeight, bool traded)
        : text(textHeight)
        , row((3 * textHeight + 5) / 10 + textHeight) // three tenths more, rounded
        , title(plate.x(), plate.y(), plate.width(), row)
    {
        // Each part begins in the last row of pixels of the part above it.
        pie = QRect(plate.x(), title.bottom(), plate.width(), std::min(plate.height() - 13 * row, plate.width()));
        table = QRect(plate.x(), traded ? pie.bottom() : title.bottom(), plate.width(), 12 * row);
        drawsPie = traded && pie.height() > 0 && pie.width() > 0;
        centre = QRectF(pie).center();
        radius = 0.5 * 0.95 * std::min(pie.height(), pie.width());
    }

    int tableRight() const { return table.right(); }
    QRect titleCell(int block) const { return {table.x(), table.top() + row + block * 5 * row, 2 * text, 5 * row}; }
    // One pixel narrower than what remains, so that the line at its right is inside the widget.
    QRect bodyCell(int block) const
    {
        const QRect cell = titleCell(block);
        return {cell.x() + cell.width(), cell.y(), table.width() - cell.width() - 1, cell.height()};
    }
    int bodyLeft() const { return table.x() + 2 * text + 5; }

    // Line 0 of a block sums it up, lines 1 to 4 are those of its size classes.
    QRect line(int block, int number) const
    {
        return {bodyLeft(), titleCell(block).y() + number * row, table.right() - bodyLeft() + 1, row};
    }
    QRect square(int block, int sizeClass) const
    {
        const QRect its = line(block, 1 + sizeClass);
        return {its.x(), its.y() + (row - text) / 2, text, text};
    }
    int nameLeft() const { return bodyLeft() + 5 + text; }
    int volumeRight() const { return (nameLeft() + tableRight() + 1) / 2; } // the middle, rounded
    int ratioRight() const { return tableRight() - 5; }

    int text;
    int row;
    QRect title, pie, table;
    bool drawsPie = false;
    QPointF centre; // of the pie's circle
    double radius = 0;
};

} // namespace tests
