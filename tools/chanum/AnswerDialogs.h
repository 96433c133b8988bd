#pragma once

#include "common/QtDialogs.h"

#include <QStringList>

#include <optional>

// The dialogs of the utility as users see them; a question's default answer is No, so that
// Enter alone never changes the vendor file.
class NoByDefaultDialogs : public QtDialogs {
protected:
    int askYesNo(const QString &text, const QString &title, int defaultAnswer) override;
};

// Dialogs answered from a file, one answer a line, in the order they are asked, for runs
// without anyone at the screen (tests, scripts):
//
//     clipboard JSMITH      stands for what the clipboard holds (the first line only)
//     input 120             the text typed into the next input box ("input" alone cancels)
//     yes | no | cancel     the answer to the next question (cancel only where offered)
//
// Every dialog is written to standard output on one line ("message: ...", "question: ...",
// "input: ..."). A question with no answer left, or a line that does not fit, is answered No
// (an input box: cancelled).
class AnswerDialogs : public Dialogs {
public:
    // Throws ProgramError when the file cannot be read.
    static AnswerDialogs fromFile(const QString &fileName);

    // The clipboard's text the file stands in for, if it gives one.
    std::optional<QString> clipboard() const { return m_clipboard; }

protected:
    void showMessage(const QString &text, Icon icon, const QString &title) override;
    int askYesNo(const QString &text, const QString &title, int defaultAnswer) override;
    int askYesNoCancel(const QString &text, const QString &title, int defaultAnswer) override;
    QString askInput(const QString &prompt, const QString &title,
                     const QString &defaultText) override;

private:
    QString next();

    QStringList m_answers;
    std::optional<QString> m_clipboard;
};
