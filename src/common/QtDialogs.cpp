#include "common/QtDialogs.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>

namespace {
QMessageBox::Icon boxIcon(Dialogs::Icon icon)
{
    switch (icon) {
    case Dialogs::Icon::Information:
        return QMessageBox::Information;
    case Dialogs::Icon::Critical:
        return QMessageBox::Critical;
    case Dialogs::Icon::Question:
        return QMessageBox::Question;
    case Dialogs::Icon::Exclamation:
        return QMessageBox::Warning;
    case Dialogs::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}
} // namespace

QWidget *QtDialogs::owner() const
{
    // Over the window the user works in (the user fields window asks its own questions), so that
    // closing the dialog gives the keyboard back to that window and not to the main one.
    QWidget *active = QApplication::activeWindow();
    for (QWidget *w = active; w; w = w->parentWidget())
        if (w == m_parent)
            return active;
    return m_parent;
}

void QtDialogs::giveBack(QWidget *window)
{
    // Without a window manager nothing hands the keyboard back when a dialog closes, and the
    // window's shortcuts would stay dead; with one this changes nothing.
    if (window && window->isVisible())
        window->activateWindow();
}

void QtDialogs::showMessage(const QString &text, Icon icon, const QString &title)
{
    QWidget *over = owner();
    QMessageBox box(boxIcon(icon), title, text, QMessageBox::Ok, over);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    box.exec();
    giveBack(over);
}

int QtDialogs::askYesNo(const QString &text, const QString &title)
{
    QWidget *over = owner();
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No, over);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    const int answer = box.exec() == QMessageBox::Yes ? Yes : No;
    giveBack(over);
    return answer;
}

QString QtDialogs::askInput(const QString &prompt, const QString &title, const QString &defaultText)
{
    bool ok = false;
    QWidget *over = owner();
    const QString answer =
        QInputDialog::getText(over, title, prompt, QLineEdit::Normal, defaultText, &ok);
    giveBack(over);
    return ok ? answer : QString();
}
