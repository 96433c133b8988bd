#include "app/StaffRecords.h"

#include "common/Session.h"
#include "common/Dialogs.h"
#include "data/Databases.h"

#include <QCoreApplication>
#include <QDir>
#include <QSqlQuery>
#include <QSqlRecord>

namespace {
const QString staffFile = QStringLiteral("user.mdb");

// Text values go into statements with every apostrophe doubled, so a name never changes the
// statement's structure.
QString quoted(const QString &text)
{
    QString doubled = text;
    doubled.replace(QLatin1Char('\''), QStringLiteral("''"));
    return doubled;
}

int intOf(const QSqlRecord &row, const char *column)
{
    return static_cast<int>(row.value(QString::fromLatin1(column)).toLongLong());
}
} // namespace

void StaffRecords::writeLocation()
{
    if (m_session.staffFlag == 99)
        return;
    if (m_session.workDescription.isEmpty())
        m_session.workDescription = QStringLiteral("none");
    m_session.userName = m_session.userName.trimmed().toUpper();
    ScopedDatabase scope(m_dbs, staffFile);
    m_dbs.execute(staffFile, QStringLiteral("update staff set location = '") +
                                 quoted(m_session.staffLocation) + QStringLiteral("' , work = '") +
                                 quoted(m_session.staffWork) +
                                 QStringLiteral("' where ucase$(username) = '") +
                                 quoted(m_session.userName) + QLatin1Char('\''));
    QCoreApplication::processEvents();
    const QVariant sysuser = m_dbs.scalar(
        staffFile, QStringLiteral("select sysuser from staff where ucase$(username) = '") +
                       quoted(m_session.userName) + QLatin1Char('\''));
    m_session.sysUser = sysuser.isNull() ? 0 : static_cast<int>(sysuser.toLongLong());
    QCoreApplication::processEvents();
}

void StaffRecords::reloadUser()
{
    if (m_session.staffFlag == 99)
        return;
    {
        ScopedDatabase scope(m_dbs, staffFile);
        QSqlQuery q =
            m_dbs.select(staffFile, QStringLiteral("select * from staff where username = '") +
                                        quoted(m_session.userName) + QLatin1Char('\''));
        if (q.next()) {
            const QSqlRecord row = q.record();
            m_session.localDrive = row.value(QStringLiteral("localdrive")).toString();
            m_session.memLevel = intOf(row, "memlevel");
            m_session.arLevel = intOf(row, "arlevel");
            m_session.userLevel = intOf(row, "aplevel");
            m_session.glLevel = intOf(row, "gllevel");
            m_session.prLevel = intOf(row, "prlevel");
            m_session.faLevel = intOf(row, "falevel");
            m_session.evLevel = intOf(row, "evlevel");
            m_session.inLevel = intOf(row, "inlevel");
            m_session.posLevel = intOf(row, "poslevel");
            m_session.cfLevel = intOf(row, "cflevel");
            m_session.memoMail = intOf(row, "memomail");
        } else {
            m_dialogs.message(
                QStringLiteral("User not found in database.\nSee system administrator."),
                Dialogs::Icon::Critical, QStringLiteral("Velmora Office"));
        }
        q.finish();
    }
    QCoreApplication::processEvents();
    QString drive = m_session.localDrive.trimmed();
    if (drive.isEmpty())
        drive = QStringLiteral("C:\\VLMONODE");
    if (drive.endsWith(QLatin1Char('\\')))
        drive.chop(1);
    m_session.localDrive = drive;
    if (!QDir(drive).exists())
        QDir().mkpath(drive);
}
