#pragma once

#include <gtest/gtest.h>
#include <QApplication>

// An application without a screen, and the theme as at the start.
class Offscreen : public testing::Test {
protected:
    Offscreen();
    ~Offscreen() override;

private:
    int m_argc = 1;
    char m_name[5] = "test";
    char* m_argv[2] = {m_name, nullptr};
    QApplication m_application;
};
