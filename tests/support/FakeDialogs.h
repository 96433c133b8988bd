#pragma once

#include "common/Dialogs.h"

#include <QStringList>

#include <deque>
#include <vector>

// Records every dialog the module shows and answers Yes/No and input boxes from queues.
class FakeDialogs : public Dialogs {
public:
    struct Shown {
        QString kind; // "message", "yesno" or "input"
        QString title;
        QString text;
        Icon icon = Icon::None;
    };

    std::vector<Shown> shown;
    std::deque<int> yesNoAnswers;       // an empty queue answers No
    std::deque<QString> inputAnswers;   // an empty queue answers "" (Cancel)
    std::vector<QString> inputDefaults; // the default text of each input box, in order

    const Shown *last() const { return shown.empty() ? nullptr : &shown.back(); }
    QStringList texts() const;
    int count(const QString &kind = QStringLiteral("message")) const;

protected:
    void showMessage(const QString &text, Icon icon, const QString &title) override;
    int askYesNo(const QString &text, const QString &title) override;
    QString askInput(const QString &prompt, const QString &title,
                     const QString &defaultText) override;
};
