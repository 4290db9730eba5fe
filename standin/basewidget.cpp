#include "BaseWidget/basewidget.h"

#include <QCoreApplication>
#include <QEvent>

namespace ZP {

namespace {

// Calls themeChanged once, after the widget was shown first. Belongs to the widget.
class FirstShow : public QObject {
public:
    explicit FirstShow(CBaseWidget* widget)
        : QObject(widget)
        , m_widget(widget)
    {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show) {
            m_widget->removeEventFilter(this);
            // Not before the widget has dealt with the event itself.
            QCoreApplication::postEvent(this, new QEvent(QEvent::User));
        }
        return QObject::eventFilter(watched, event);
    }

    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        deleteLater();
        m_widget->themeChanged();
        return true;
    }

private:
    CBaseWidget* const m_widget;
};

} // namespace

CBaseWidget::CBaseWidget(const QString& name, bool ownWindow, QWidget* parent)
    : QWidget(parent, ownWindow ? Qt::Window : Qt::Widget)
{
    setObjectName(name);
    new FirstShow(this);
}

CBaseWidget::~CBaseWidget() = default;

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature is the terminal's
bool CBaseWidget::handleEvent(int, int, int, QString, void*)
{
    return false;
}

void CBaseWidget::themeChanged()
{
    update();
}

} // namespace ZP
