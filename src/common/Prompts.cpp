#include "common/Prompts.h"

#include "app/Session.h"
#include "common/Clock.h"
#include "common/Dialogs.h"
#include "common/Numbers.h"
#include "data/Databases.h"

#include <QCoreApplication>
#include <QSqlQuery>
#include <QSqlRecord>

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

void checkGlAccount(Databases &dbs, Dialogs &dialogs, Session &session)
{
    const QString number = Numbers::plain(Numbers::leading(session.messageText.trimmed()));
    const QString file = QStringLiteral("gl.mdb");
    {
        ScopedDatabase scope(dbs, file);
        QSqlQuery q =
            dbs.select(file, QStringLiteral("select glacctnum, glacctname,glstatementdesc, "
                                            "glaccttype, gllevel from gl0 where glacctnum = ") +
                                 number);
        if (q.next()) {
            const QSqlRecord row = q.record();
            session.accountType = row.value(QStringLiteral("glaccttype")).toInt();
            session.accountLevel = row.value(QStringLiteral("gllevel")).toInt();
            session.accountName = row.value(QStringLiteral("glacctname")).toString();
            const QVariant statement = row.value(QStringLiteral("glstatementdesc"));
            if (!statement.isNull() && !statement.toString().trimmed().isEmpty())
                session.accountName = statement.toString();
        } else {
            dialogs.message(QStringLiteral("# ") + number + QStringLiteral(" does not exist"),
                            Dialogs::Icon::Critical, QStringLiteral("Invalid G/L Account"));
            session.messageText = QStringLiteral("REDO");
        }
        q.finish();
    }
    QCoreApplication::processEvents();
}

} // namespace Prompts
