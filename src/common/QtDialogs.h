#pragma once

#include "common/Dialogs.h"

class QWidget;

// The dialogs users see: QMessageBox and QInputDialog over the given parent window.
class QtDialogs : public Dialogs {
public:
    explicit QtDialogs(QWidget *parent = nullptr) : m_parent(parent) {}
    void setParent(QWidget *parent) { m_parent = parent; }

protected:
    void showMessage(const QString &text, Icon icon, const QString &title) override;
    int askYesNo(const QString &text, const QString &title, int defaultAnswer) override;
    int askYesNoCancel(const QString &text, const QString &title, int defaultAnswer) override;
    QString askInput(const QString &prompt, const QString &title,
                     const QString &defaultText) override;

private:
    // The active window when it is the parent or one of the parent's own windows, else the parent.
    QWidget *owner() const;
    static void giveBack(QWidget *window);
    // A question box with Yes, No and, when asked for, Cancel; returns Yes, No or Cancel.
    int ask(const QString &text, const QString &title, bool withCancel, int defaultAnswer);

    QWidget *m_parent;
};
