#include "lists/EnterSwallower.h"

#include <QKeyEvent>

bool EnterSwallower::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease ||
        event->type() == QEvent::ShortcutOverride) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            // Accepting the shortcut override keeps a window shortcut on Enter from firing.
            event->accept();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}
