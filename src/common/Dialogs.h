#pragma once

#include <QLoggingCategory>
#include <QString>

Q_DECLARE_LOGGING_CATEGORY(lcDialog)

// Modal message boxes, Yes/No prompts and input boxes. Every dialog shown is logged under
// the category "vendor.dialog" (title and text on one line) before it is shown.
class Dialogs {
public:
    enum class Icon { None, Information, Critical, Question, Exclamation };
    static constexpr int Yes = 6;
    static constexpr int No = 7;
    static constexpr int Cancel = 2;
    // The title a message box gets when the caller names none.
    static QString defaultTitle() { return QStringLiteral("A/P Master"); }

    virtual ~Dialogs() = default;

    void message(const QString &text, Icon icon = Icon::None, const QString &title = {});
    // Returns Yes (6) or No (7). defaultAnswer is the button Enter presses: No for a question
    // whose Yes cannot be undone.
    int yesNo(const QString &text, const QString &title, int defaultAnswer = Yes);
    // Returns Yes (6), No (7) or Cancel (2); Escape answers Cancel.
    int yesNoCancel(const QString &text, const QString &title, int defaultAnswer = Yes);
    // Returns the typed text; an empty text when the user cancelled.
    QString input(const QString &prompt, const QString &title, const QString &defaultText = {});

    static QString oneLine(const QString &text);

protected:
    virtual void showMessage(const QString &text, Icon icon, const QString &title) = 0;
    virtual int askYesNo(const QString &text, const QString &title, int defaultAnswer) = 0;
    virtual int askYesNoCancel(const QString &text, const QString &title, int defaultAnswer) = 0;
    virtual QString askInput(const QString &prompt, const QString &title,
                             const QString &defaultText) = 0;
};
