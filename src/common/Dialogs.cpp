#include "common/Dialogs.h"

Q_LOGGING_CATEGORY(lcDialog, "vendor.dialog", QtWarningMsg)

QString Dialogs::oneLine(const QString &text)
{
    QString line = text;
    line.replace(QStringLiteral("\r\n"), QStringLiteral("\\n"));
    line.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
    line.replace(QLatin1Char('\r'), QStringLiteral("\\n"));
    return line;
}

void Dialogs::message(const QString &text, Icon icon, const QString &title)
{
    const QString shownTitle = title.isEmpty() ? defaultTitle() : title;
    qCInfo(lcDialog).noquote() << "message" << shownTitle << "|" << oneLine(text);
    showMessage(text, icon, shownTitle);
}

int Dialogs::yesNo(const QString &text, const QString &title, int defaultAnswer)
{
    qCInfo(lcDialog).noquote() << "yesno" << title << "|" << oneLine(text);
    return askYesNo(text, title, defaultAnswer);
}

int Dialogs::yesNoCancel(const QString &text, const QString &title, int defaultAnswer)
{
    qCInfo(lcDialog).noquote() << "yesnocancel" << title << "|" << oneLine(text);
    return askYesNoCancel(text, title, defaultAnswer);
}

QString Dialogs::input(const QString &prompt, const QString &title, const QString &defaultText)
{
    qCInfo(lcDialog).noquote() << "input" << title << "|" << oneLine(prompt);
    return askInput(prompt, title, defaultText);
}
