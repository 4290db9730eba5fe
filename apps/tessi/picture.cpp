#include "apps/tessi/picture.h"

#include "recording/errors.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageWriter>
#include <QSaveFile>
#include <QWidget>

#include <charconv>
#include <cmath>

namespace tessi {

namespace {

std::optional<int> sideOf(const std::string& digits)
{
    int side = 0;
    const char* const end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, side);
    if (error != std::errc() || rest != end || side < 1 || side > Picture::kLongestSide)
        return std::nullopt;
    return side;
}

QImage drawn(QWidget& widget, const Picture& picture)
{
    const auto pixels = [&picture](int side) { return static_cast<int>(std::ceil(side * picture.scale)); };
    QImage image(pixels(picture.width), pixels(picture.height), QImage::Format_RGB32);
    image.setDevicePixelRatio(picture.scale);
    image.fill(Qt::black);
    widget.resize(picture.width, picture.height);
    widget.render(&image);
    return image;
}

} // namespace

std::optional<Picture> pictureOfSize(const std::string& size)
{
    const std::size_t cross = size.find('x');
    if (cross == std::string::npos)
        return std::nullopt;
    const std::optional<int> width = sideOf(size.substr(0, cross));
    const std::optional<int> height = sideOf(size.substr(cross + 1));
    if (!width || !height)
        return std::nullopt;
    Picture picture;
    picture.width = *width;
    picture.height = *height;
    return picture;
}

void writePng(QWidget& widget, const Picture& picture, const std::string& file)
{
    const QString name = QFile::decodeName(QByteArray::fromStdString(file));
    // The new file is renamed over what is there, and would do away with a pipe or a device.
    if (const QFileInfo old(name); old.exists() && !old.isFile())
        throw recording::WriteError(file, "is no regular file");
    QBuffer png;
    QImageWriter writer(&png, "png");
    if (!writer.write(drawn(widget, picture)))
        throw recording::WriteError(file, writer.errorString().toStdString());
    QSaveFile target(name);
    if (!target.open(QIODevice::WriteOnly) || target.write(png.data()) != png.data().size() || !target.commit())
        throw recording::WriteError(file, target.errorString().toStdString());
}

} // namespace tessi
