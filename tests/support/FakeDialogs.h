#pragma once

#include "common/Dialogs.h"

#include <QStringList>

#include <deque>
#include <vector>

// Records every dialog the module shows and answers questions and input boxes from queues.
class FakeDialogs : public Dialogs {
public:
    struct Shown {
        QString kind; // "message", "yesno", "yesnocancel" or "input"
        QString title;
        QString text;
        Icon icon = Icon::None;
        QStringList buttons;   // a question's buttons in order ("Yes", "No", "Cancel")
        int defaultAnswer = 0; // a question's default button (Yes, No or Cancel); 0 otherwise
    };

    std::vector<Shown> shown;
    std::deque<int> yesNoAnswers;       // both kinds of question; an empty queue answers No
    std::deque<QString> inputAnswers;   // an empty queue answers "" (Cancel)
    std::vector<QString> inputDefaults; // the default text of each input box, in order

    const Shown *last() const { return shown.empty() ? nullptr : &shown.back(); }
    QStringList texts() const;
    int count(const QString &kind = QStringLiteral("message")) const;

protected:
    void showMessage(const QString &text, Icon icon, const QString &title) override;
    int askYesNo(const QString &text, const QString &title, int defaultAnswer) override;
    int askYesNoCancel(const QString &text, const QString &title, int defaultAnswer) override;
    QString askInput(const QString &prompt, const QString &title,
                     const QString &defaultText) override;

private:
    int nextAnswer();
};
