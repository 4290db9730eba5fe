#include "tests/support/inkedpixels.h"

namespace tests {

QRect inkedIn(const QImage& image, const QRect& area, QRgb ground)
{
    QRect ink;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.pixel(x, y) != ground)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

} // namespace tests
