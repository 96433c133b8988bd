#pragma once

#include "common/Dialogs.h"

#include <QStringList>

// Dialogs nobody answers: every message is kept (and printed to stderr), every question is
// answered No, every input box cancelled.
class ScriptedDialogs : public Dialogs {
public:
    QStringList messages;

protected:
    void showMessage(const QString &text, Icon icon, const QString &title) override;
    int askYesNo(const QString &text, const QString &title, int defaultAnswer) override;
    int askYesNoCancel(const QString &text, const QString &title, int defaultAnswer) override;
    QString askInput(const QString &prompt, const QString &title,
                     const QString &defaultText) override;
};
