#include "common/QtDialogs.h"

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

void QtDialogs::showMessage(const QString &text, Icon icon, const QString &title)
{
    QMessageBox box(boxIcon(icon), title, text, QMessageBox::Ok, m_parent);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    box.exec();
}

int QtDialogs::askYesNo(const QString &text, const QString &title)
{
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No,
                    m_parent);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    return box.exec() == QMessageBox::Yes ? Yes : No;
}

QString QtDialogs::askInput(const QString &prompt, const QString &title, const QString &defaultText)
{
    bool ok = false;
    const QString answer =
        QInputDialog::getText(m_parent, title, prompt, QLineEdit::Normal, defaultText, &ok);
    return ok ? answer : QString();
}
