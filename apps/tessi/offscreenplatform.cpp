#include "apps/tessi/offscreenplatform.h"

#include <QString>
#include <QtGlobal>

namespace tessi {

namespace {

// What a desktop session sets for windows of its own: it scales pictures and fonts, or looks for a display.
constexpr const char* kOfDesktops[] = {"QT_SCALE_FACTOR",
                                       "QT_SCREEN_SCALE_FACTORS",
                                       "QT_AUTO_SCREEN_SCALE_FACTOR",
                                       "QT_ENABLE_HIGHDPI_SCALING",
                                       "QT_DEVICE_PIXEL_RATIO",
                                       "QT_USE_PHYSICAL_DPI",
                                       "QT_FONT_DPI",
                                       "QT_QPA_PLATFORMTHEME"};

} // namespace

OffscreenPlatform::OffscreenPlatform()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    for (const char* const name : kOfDesktops)
        qunsetenv(name);
    // A platform looks for the desktop session's folder, and warns where there is no desktop.
    static QtMessageHandler qtsOwn = nullptr;
    qtsOwn = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& message) {
        if (!message.startsWith(QLatin1String("QStandardPaths:")))
            qtsOwn(type, context, message);
    });
}

OffscreenPlatform::~OffscreenPlatform()
{
    qInstallMessageHandler(nullptr);
}

} // namespace tessi
