#pragma once

#include <optional>
#include <string>

class QWidget;

namespace tessi {

// What a picture of a widget is to look like; the theme is in force when the widget is drawn.
struct Picture {
    static constexpr int kLongestSide = 2000;
    static constexpr double kSmallestScale = 0.5;
    static constexpr double kLargestScale = 4;

    int width = 340;
    int height = 460;
    double scale = 1; // pixels for one of width and height
};

// The two numbers of "340x460", each from 1 to kLongestSide; nothing for any other text.
std::optional<Picture> pictureOfSize(const std::string& size);

// Draws the widget into a PNG file, which an existing regular file gives way to when the new one is complete. Throws
// recording::WriteError, also when anything else has that name.
void writePng(QWidget& widget, const Picture& picture, const std::string& file);

} // namespace tessi
