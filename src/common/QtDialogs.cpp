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

int QtDialogs::ask(const QString &text, const QString &title, bool withCancel, int defaultAnswer)
{
    QWidget *over = owner();
    QMessageBox::StandardButtons buttons = QMessageBox::Yes | QMessageBox::No;
    if (withCancel)
        buttons |= QMessageBox::Cancel;
    QMessageBox box(QMessageBox::Question, title, text, buttons, over);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    box.setDefaultButton(defaultAnswer == No       ? QMessageBox::No
                         : defaultAnswer == Cancel ? QMessageBox::Cancel
                                                   : QMessageBox::Yes);
    // Escape is Cancel where there is one, else No: never the answer that acts.
    box.setEscapeButton(withCancel ? QMessageBox::Cancel : QMessageBox::No);
    const int pressed = box.exec();
    giveBack(over);
    if (pressed == QMessageBox::Yes)
        return Yes;
    return pressed == QMessageBox::Cancel ? Cancel : No;
}

int QtDialogs::askYesNo(const QString &text, const QString &title, int defaultAnswer)
{
    return ask(text, title, false, defaultAnswer);
}

int QtDialogs::askYesNoCancel(const QString &text, const QString &title, int defaultAnswer)
{
    return ask(text, title, true, defaultAnswer);
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
