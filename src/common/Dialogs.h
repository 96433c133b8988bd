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
    // The title a message box gets when the caller names none.
    static QString defaultTitle() { return QStringLiteral("A/P Master"); }

    virtual ~Dialogs() = default;

    void message(const QString &text, Icon icon = Icon::None, const QString &title = {});
    // Returns Yes (6) or No (7).
    int yesNo(const QString &text, const QString &title);
    // Returns the typed text; an empty text when the user cancelled.
    QString input(const QString &prompt, const QString &title, const QString &defaultText = {});

    static QString oneLine(const QString &text);

protected:
    virtual void showMessage(const QString &text, Icon icon, const QString &title) = 0;
    virtual int askYesNo(const QString &text, const QString &title) = 0;
    virtual QString askInput(const QString &prompt, const QString &title,
                             const QString &defaultText) = 0;
};
