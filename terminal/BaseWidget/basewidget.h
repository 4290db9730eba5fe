#pragma once

#include "terminal_api.h"

#include <QString>
#include <QWidget>

namespace ZP {

// Base of the terminal's own widgets. For the GUI thread.
class TERMINAL_API CBaseWidget : public QWidget {
    Q_OBJECT

public:
    // `name` becomes the object name, by which skins and scripts find the widget. `ownWindow` makes it a window
    // of its own instead of a part of `parent`.
    CBaseWidget(const QString& name, bool ownWindow, QWidget* parent);
    ~CBaseWidget() override;

    // An event of the terminal's bus: an event number, two values, a text and a payload that belongs to the
    // sender. True when it was dealt with.
    virtual bool handleEvent(int event, int first, int second, QString text, void* payload);

    // The theme's colours or fonts changed. Also called once the terminal has shown the widget first.
    virtual void themeChanged();
};

} // namespace ZP
