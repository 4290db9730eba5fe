#pragma once

namespace tessi {

// What widgets that are drawn and never shown need of the environment, whatever the desktop session has made of it: a
// platform without a display, and no scaling. Before the application; one at a time.
class OffscreenPlatform {
public:
    OffscreenPlatform();
    ~OffscreenPlatform();
    OffscreenPlatform(const OffscreenPlatform&) = delete;
    OffscreenPlatform& operator=(const OffscreenPlatform&) = delete;
};

} // namespace tessi
