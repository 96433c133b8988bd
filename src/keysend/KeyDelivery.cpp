#include "keysend/KeyDelivery.h"

#include "keysend/QtKeyStroke.h"

#include <QApplication>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

namespace {

QEvent::Type strokeEventType()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

class StrokeEvent final : public QEvent {
public:
    StrokeEvent(QEvent::Type type, const QtKeyStroke &stroke) : QEvent(type), m_stroke(stroke) {}

    const QtKeyStroke &stroke() const { return m_stroke; }

private:
    QtKeyStroke m_stroke;
};

} // namespace

void KeyDelivery::post(const QtKeyStroke &stroke)
{
    QCoreApplication::postEvent(this, new StrokeEvent(strokeEventType(), stroke));
}

void KeyDelivery::deliverPosted()
{
    QCoreApplication::sendPostedEvents(this, strokeEventType());
}

bool KeyDelivery::event(QEvent *event)
{
    if (event->type() != strokeEventType())
        return QObject::event(event);
    const QtKeyStroke &stroke = static_cast<StrokeEvent *>(event)->stroke();
    if (QWidget *target = QApplication::focusWidget()) {
        QKeyEvent keyEvent(stroke.press ? QEvent::KeyPress : QEvent::KeyRelease, stroke.key,
                           stroke.modifiers, stroke.text);
        QCoreApplication::sendEvent(target, &keyEvent);
    }
    return true;
}
