#pragma once

#include <gtest/gtest.h>
#include <QApplication>

// An application on the platform that the environment names, and the theme as at the start.
class OnScreen : public testing::Test {
protected:
    OnScreen();
    ~OnScreen() override;

private:
    int m_argc = 1;
    char m_name[5] = "test";
    char* m_argv[2] = {m_name, nullptr};
    QApplication m_application;
};

// The platform of an application without a screen, named before the application is made.
class OffscreenPlatform {
protected:
    OffscreenPlatform();
};

// An application without a screen, and the theme as at the start.
class Offscreen : private OffscreenPlatform, public OnScreen {
protected:
    Offscreen();
    ~Offscreen() override;
};
