#include "common/Prompts.h"

#include "common/AccountLookup.h"
#include "common/Clock.h"
#include "common/Dialogs.h"
#include "common/Numbers.h"
#include "common/Session.h"

#include <QCoreApplication>
#include <QDate>
#include <QRegularExpression>

#include <optional>

namespace Prompts {
namespace {

const QString promptTail =
    QStringLiteral("\nWhen done, press ENTER or click OK.\n\nClick CANCEL to exit this feature.");

// A date typed the way people write it, month first: 1/31/2026 or 01/31/2026. Empty when the
// answer is not in that form; "bad" when it is, but names no day of the calendar.
QString fromSlashes(const QString &answer, bool &bad)
{
    static const QRegularExpression slashes(QStringLiteral(R"(^(\d{1,2})/(\d{1,2})/(\d{4})$)"));
    bad = false;
    const QRegularExpressionMatch m = slashes.match(answer);
    if (!m.hasMatch())
        return {};
    const QDate day(m.captured(3).toInt(), m.captured(1).toInt(), m.captured(2).toInt());
    if (!day.isValid()) {
        bad = true;
        return {};
    }
    return day.toString(QStringLiteral("yyyyMMdd"));
}

// One date: asked again until it has eight characters, with a line that says why; nothing when
// the user gives up.
std::optional<QString> askDate(Dialogs &dialogs, const Clock &clock, const QString &prompt,
                               const QString &title)
{
    const QString example = QString::number(clock.currentYear()) + QStringLiteral("0131");
    QString why;
    for (;;) {
        const QString typed =
            dialogs.input(why.isEmpty() ? prompt : why + QLatin1Char('\n') + prompt, title)
                .trimmed();
        if (typed.isEmpty())
            return std::nullopt;
        bool notADay = false;
        QString answer = fromSlashes(typed, notADay);
        if (answer.isEmpty())
            answer = typed;
        if (answer.size() == 4)
            answer = QString::number(clock.currentYear()) + answer;
        if (answer.size() == 8 && !notADay)
            return answer;
        why = typed +
              (notADay ? QStringLiteral(" is not a day of the calendar. ")
                       : QStringLiteral(" is not a date this prompt reads. ")) +
              QStringLiteral("Type the date as YYYYMMDD, for example ") + example;
    }
}

} // namespace

void askDateRange(Dialogs &dialogs, const Clock &clock, Session &session)
{
    const QString context = session.messageText;
    const std::optional<QString> from = askDate(
        dialogs, clock, QStringLiteral("Type the FROM date in YYYYMMDD format.") + promptTail,
        QStringLiteral("FROM Date - ") + context);
    if (!from) {
        session.messageText = QStringLiteral("CANCEL");
        return;
    }
    const std::optional<QString> to =
        askDate(dialogs, clock, QStringLiteral("Type the TO date in YYYYMMDD format.") + promptTail,
                QStringLiteral("TO Date - ") + context);
    if (!to) {
        session.messageText = QStringLiteral("CANCEL");
        return;
    }
    const bool swap = Numbers::leading(*to) < Numbers::leading(*from);
    session.messageText = swap ? *to + *from : *from + *to;
}

void checkGlAccount(AccountLookup &accounts, Dialogs &dialogs, Session &session)
{
    const QString number = Numbers::plain(Numbers::leading(session.messageText.trimmed()));
    if (const std::optional<GlAccount> account = accounts.glAccount(number)) {
        session.accountType = account->type;
        session.accountLevel = account->level;
        session.accountName = account->name;
        const QVariant statement = account->statementDescription;
        if (!statement.isNull() && !statement.toString().trimmed().isEmpty())
            session.accountName = statement.toString();
    } else {
        dialogs.message(QStringLiteral("# ") + number + QStringLiteral(" does not exist"),
                        Dialogs::Icon::Critical, QStringLiteral("Invalid G/L Account"));
        session.messageText = QStringLiteral("REDO");
    }
    QCoreApplication::processEvents();
}

void showAccessDenied(Dialogs &dialogs)
{
    dialogs.message(QStringLiteral("Access denied."), Dialogs::Icon::Information,
                    QStringLiteral("Velmora Office"));
}

void showDatabaseMissing(Dialogs &dialogs, const QString &fileName)
{
    dialogs.message(QStringLiteral("The ") + fileName +
                        QStringLiteral(" database is missing.\r\n") +
                        QStringLiteral("Contact Velmora Data technical support for assistance."),
                    Dialogs::Icon::Information, QStringLiteral("Uh-oh..."));
}

} // namespace Prompts
