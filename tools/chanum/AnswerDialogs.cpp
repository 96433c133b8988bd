#include "AnswerDialogs.h"

#include "common/ProgramError.h"

#include <QFile>
#include <QMessageBox>

#include <cstdio>

int NoByDefaultDialogs::askYesNo(const QString &text, const QString &title, int)
{
    return QtDialogs::askYesNo(text, title, No);
}

AnswerDialogs AnswerDialogs::fromFile(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw ProgramError(QStringLiteral("The answers file %1 cannot be read: %2")
                               .arg(fileName, file.errorString()));
    AnswerDialogs dialogs;
    QStringList lines = QString::fromUtf8(file.read(64 * 1024)).split(QLatin1Char('\n'));
    const QString clip = QStringLiteral("clipboard");
    if (!lines.isEmpty() && (lines.first() == clip || lines.first().startsWith(clip + ' ')))
        dialogs.m_clipboard = lines.takeFirst().mid(clip.size() + 1);
    dialogs.m_answers = lines;
    return dialogs;
}

QString AnswerDialogs::next()
{
    while (!m_answers.isEmpty()) {
        const QString line = m_answers.takeFirst();
        if (!line.trimmed().isEmpty())
            return line;
    }
    return {};
}

void AnswerDialogs::showMessage(const QString &text, Icon, const QString &title)
{
    std::printf("message: %s: %s\n", qPrintable(title), qPrintable(oneLine(text)));
    std::fflush(stdout);
}

int AnswerDialogs::askYesNo(const QString &text, const QString &title, int)
{
    const QString answer = next().trimmed();
    const int result = answer.compare(QLatin1String("yes"), Qt::CaseInsensitive) == 0 ? Yes : No;
    std::printf("question: %s: %s -> %s\n", qPrintable(title), qPrintable(oneLine(text)),
                result == Yes ? "yes" : "no");
    std::fflush(stdout);
    return result;
}

int AnswerDialogs::askYesNoCancel(const QString &text, const QString &title, int)
{
    const QString answer = next().trimmed().toLower();
    const int result = answer == QLatin1String("yes")      ? Yes
                       : answer == QLatin1String("cancel") ? Cancel
                                                           : No;
    std::printf("question: %s: %s -> %s\n", qPrintable(title), qPrintable(oneLine(text)),
                qPrintable(answer == QLatin1String("yes") || answer == QLatin1String("cancel")
                               ? answer
                               : QStringLiteral("no")));
    std::fflush(stdout);
    return result;
}

QString AnswerDialogs::askInput(const QString &prompt, const QString &title, const QString &)
{
    const QString line = next();
    const QString input = QStringLiteral("input");
    const QString answer = line.startsWith(input + ' ') ? line.mid(input.size() + 1) : QString();
    std::printf("input: %s: %s -> %s\n", qPrintable(title), qPrintable(oneLine(prompt)),
                qPrintable(answer));
    std::fflush(stdout);
    return answer;
}
