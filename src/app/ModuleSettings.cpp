#include "app/ModuleSettings.h"

#include "common/Session.h"
#include "common/Dialogs.h"
#include "common/Numbers.h"
#include "data/Databases.h"
#include "data/DbError.h"

#include <QCoreApplication>
#include <QSqlQuery>
#include <QSqlRecord>

namespace ModuleSettings {
namespace {

int levelFrom(const QSqlQuery &q, const char *column)
{
    const QVariant value = q.record().value(QString::fromLatin1(column));
    if (value.isNull())
        throw DbError(94,
                      QStringLiteral("Invalid use of Null (%1).").arg(QString::fromLatin1(column)));
    return static_cast<int>(value.toLongLong());
}

void readSettingsRow(Databases &dbs, Session &session)
{
    const QString file = QStringLiteral("config.mdb");
    ScopedDatabase scope(dbs, file);
    QSqlQuery q = dbs.select(file, QStringLiteral("select * from ap"));
    if (!q.next())
        throw DbError::noCurrentRecord();
    session.accessLevel[0] = levelFrom(q, "apaccess0");
    session.accessLevel[1] = levelFrom(q, "apaccess1");
    session.accessLevel[2] = levelFrom(q, "apaccess2");
    session.accessLevel[3] = levelFrom(q, "apaccess3");
    const QVariant pnet = q.record().value(QStringLiteral("pnetyesno"));
    session.pnetYesNoRead = pnet.isNull() ? QStringLiteral("Y") : pnet.toString().toUpper();
    // Read, then always set to "N": the module behaves as if the setting were "N".
    session.pnetYesNo = QStringLiteral("N");
    for (int i = 1; i <= 12; ++i)
        session.functionKeyText[i] = q.record().value(QStringLiteral("f%1key").arg(i)).toString();
    q.finish();
}

} // namespace

Outcome read(const QString &argument, Databases &dbs, Dialogs &dialogs, Session &session,
             bool &canadian)
{
    if (!argument.isEmpty()) {
        if (argument.size() < 5)
            throw DbError(5, QStringLiteral("Invalid procedure call or argument: the launcher's "
                                            "argument '%1' is too short.")
                                 .arg(argument));
        session.moduleCode = argument.left(3);
        session.userLevel = static_cast<int>(Numbers::leadingWhole(argument.mid(3, 2)));
        session.userName = argument.mid(5);
        readSettingsRow(dbs, session);
        QCoreApplication::processEvents();
        canadian = dbs.exists(QStringLiteral("canada.mdb"));
        if (session.moduleCode.startsWith(QLatin1Char('#')))
            session.moduleCode.replace(0, 1, QLatin1Char('V'));
    }
    if (session.userName.isEmpty() || session.moduleCode != QLatin1String("VDR")) {
        dialogs.message(QStringLiteral("This module cannot be run by itself.\nClick OK to exit..."),
                        Dialogs::Icon::Critical, QStringLiteral("Velmora Office Message"));
        return Outcome::NotFromLauncher;
    }
    if (session.userLevel < session.accessLevel[0]) {
        dialogs.message(
            QStringLiteral("Access denied. See system administrator.\nClick OK to exit..."),
            Dialogs::Icon::Information, QStringLiteral("Velmora Office Message"));
        return Outcome::AccessDenied;
    }
    return Outcome::Run;
}

} // namespace ModuleSettings
