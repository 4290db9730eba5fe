#pragma once

#include <QImage>
#include <QRect>

namespace tests {

// The smallest rectangle around all pixels of `area` that are not ground; empty when there are none. In pixels of the
// image, whatever its device pixel ratio.
QRect inkedIn(const QImage& image, const QRect& area, QRgb ground);

} // namespace tests
