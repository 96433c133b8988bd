#include "common/Prompts.h"

#include "common/Session.h"
#include "common/Clock.h"
#include "common/Dialogs.h"
#include "common/Numbers.h"
#include "common/AccountLookup.h"

#include <QCoreApplication>

#include <optional>

namespace Prompts {
namespace {

const QString promptTail =
    QStringLiteral("\nWhen done, press ENTER or click OK.\n\nClick CANCEL to exit this feature.");

// One date: asked again until it has eight characters; nothing when the user gives up.
std::optional<QString> askDate(Dialogs &dialogs, const Clock &clock, const QString &prompt,
                               const QString &title)
{
    for (;;) {
        QString answer = dialogs.input(prompt, title).trimmed();
        if (answer.isEmpty())
            return std::nullopt;
        if (answer.size() == 4)
            answer = QString::number(clock.currentYear()) + answer;
        if (answer.size() == 8)
            return answer;
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
