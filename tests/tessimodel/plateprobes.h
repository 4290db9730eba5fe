#pragma once

#include "tests/tessimodel/platelayout.h"
#include "tests/tessimodel/platestate.h"

#include <QImage>

#include <string>

namespace tests {

// The picture of a widget as an image of that device pixel ratio.
QImage pictureOf(QWidget& widget, double ratio = 1);

// The layout of a plate of that size in the fonts of the theme.
PlateLayout themeLayout(const QSize& size, bool traded);

// Looks at the pixels of a plate's picture, of whatever device pixel ratio, in the colours and fonts of the theme in
// force. Each probe tells what is wrong, a line for each thing, and nothing when all is well.
class PlateProbes {
public:
    // `picture` and `state` outlive it.
    PlateProbes(const QImage& picture, const PlateState& state);

    std::string all() const;

    // The colour at three places of each sector, at 0.7 of the radius, and the ground around the pie. Sectors too
    // narrow to hit are left out, and those that a later one covers.
    std::string sectors() const;
    // Where nothing stands: below the table, right of the heading, beside the circle.
    std::string ground() const;
    // Borders of the cells: one device pixel of the pure colour, ground beside them, and at their places.
    std::string borders() const;
    // Squares of the lines: pure colour up to the edge.
    std::string squares() const;
    // Every text against the same one drawn alone at its place, pixel by pixel.
    std::string texts() const;
    // Right-most inked columns of the numbers.
    std::string numberEdges() const;
    // Characters of the vertical titles, one below the other in the middle of their cell.
    std::string blockTitles() const;

private:
    bool titleIsCovered() const;
    QColor at(const QPointF& logical) const;
    QRect device(const QRect& logical) const;
    std::string wrongColor(const std::string& what, const QPointF& logical, const QColor& expected) const;
    std::string wrongText(const QString& text, const QRect& rect, int alignment, const QString& font) const;
    std::string wrongSquare(int block, int sizeClass) const;
    std::string wrongBlockTitle(int block) const;

    const QImage& m_picture;
    const PlateState& m_state;
    const double m_ratio;
    const PlateLayout m_layout;
    const QColor m_ground, m_splitter;
    mutable QImage m_scratch; // ground, between one text and the next
};

} // namespace tests
