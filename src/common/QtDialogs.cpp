#include "common/QtDialogs.h"

#include "common/ScreenFit.h"

#include <QApplication>
#include <QGridLayout>
#include <QInputDialog>
#include <QMessageBox>
#include <QScreen>
#include <QSpacerItem>

#include <algorithm>

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
// Room the desktop's title bar takes beside the title: the icon and the close button.
constexpr int titleBarButtons = 96;

// A message box is as wide as its text; a short text under a long title would have the desktop
// cut the title ("Invalid...ccount"). The box is made wide enough for its whole title, up to the
// width of the screen.
void widenForTitle(QMessageBox &box)
{
    auto *grid = qobject_cast<QGridLayout *>(box.layout());
    if (!grid)
        return;
    int width = box.fontMetrics().horizontalAdvance(box.windowTitle()) + titleBarButtons;
    if (const QScreen *screen = box.screen())
        width = std::min(width, screen->availableGeometry().width() - titleBarButtons);
    grid->addItem(new QSpacerItem(width, 0, QSizePolicy::Minimum, QSizePolicy::Fixed),
                  grid->rowCount(), 0, 1, grid->columnCount());
}

// Every dialog stays above the always-on-top main window and wholly on the screen.
void prepare(QDialog &dialog)
{
    dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
    ScreenFit::keepOnScreen(&dialog);
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
    prepare(box);
    widenForTitle(box);
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
    prepare(box);
    widenForTitle(box);
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
    QWidget *over = owner();
    QInputDialog dialog(over);
    dialog.setWindowTitle(title);
    dialog.setLabelText(prompt);
    dialog.setTextValue(defaultText);
    prepare(dialog);
    const bool ok = dialog.exec() == QDialog::Accepted;
    giveBack(over);
    return ok ? dialog.textValue() : QString();
}
