#include "VersionInfo.h"

#include "common/ProgramError.h"
#include "data/EngineSettings.h"

#include <QClipboard>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>
#include <QSqlDatabase>

#include <libpq-fe.h>
#include <sqlite3.h>

namespace {

QString line(const char *label, const QString &value)
{
    return QStringLiteral("%1 %2\n").arg(QString::fromLatin1(label), -19).arg(value);
}

// libpq gives 150005 for 15.5 and, before version 10, 90624 for 9.6.24.
QString postgresClientVersion()
{
    const int v = PQlibVersion();
    if (v >= 100000)
        return QStringLiteral("libpq %1.%2").arg(v / 10000).arg(v % 10000);
    return QStringLiteral("libpq %1.%2.%3").arg(v / 10000).arg(v / 100 % 100).arg(v % 100);
}

// The module keeps its window places under these names (see common/ScreenFit.cpp).
QString moduleSettingsFile()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Velmora"),
                     QStringLiteral("apmaster"))
        .fileName();
}

} // namespace

VersionInfo::Passed VersionInfo::parse(const QStringList &arguments)
{
    // The module's line splits into "anne@apmaster", "21.12.28a", "SysUser:", "3"; a caller
    // that quotes it whole gives one word, so the words are joined before they are read.
    static const QRegularExpression form(
        QStringLiteral(R"(^([^@\s]+)@(\S+)\s+(\S+)\s+SysUser:\s*(-?\d{1,9})$)"));
    const QRegularExpressionMatch match = form.match(arguments.join(QLatin1Char(' ')).trimmed());
    if (!match.hasMatch())
        throw ProgramError(
            QStringLiteral("The version window expects \"%1\", not \"%2\".")
                .arg(QString::fromLatin1(usageForm), arguments.join(QLatin1Char(' '))),
            wrongWords);
    return Passed{match.captured(1), match.captured(2), match.captured(3),
                  match.captured(4).toInt()};
}

QString VersionInfo::installedPackageVersion()
{
    QProcess query;
    query.start(QStringLiteral("dpkg-query"),
                {QStringLiteral("-W"), QStringLiteral("-f=${db:Status-Status}\t${Version}"),
                 QStringLiteral("apmaster")});
    if (!query.waitForFinished(10000) || query.exitStatus() != QProcess::NormalExit ||
        query.exitCode() != 0)
        return {};
    const QStringList fields = QString::fromLocal8Bit(query.readAllStandardOutput()).split(u'\t');
    // A removed package whose configuration remains is known to dpkg but not installed.
    if (fields.size() != 2 || fields[0] != QLatin1String("installed"))
        return {};
    return fields[1].trimmed();
}

VersionInfo::VersionInfo(Passed passed, QString dataFolder, PackageQuery packageQuery) :
    m_passed(std::move(passed)), m_dataFolder(std::move(dataFolder)),
    m_packageQuery(std::move(packageQuery))
{
}

QString VersionInfo::engineLine() const
{
    const std::optional<EngineSettings> server = EngineSettings::ofFolder(m_dataFolder);
    if (!server)
        return QStringLiteral("SQLite files");
    if (!server->error.isEmpty())
        return QStringLiteral("%1 cannot be used: %2")
            .arg(QString::fromLatin1(EngineSettings::fileName), server->error);
    QString text = QStringLiteral("PostgreSQL server %1 port %2, database %3")
                       .arg(server->host)
                       .arg(server->port)
                       .arg(server->database);
    if (!server->user.isEmpty())
        text += QStringLiteral(", user ") + server->user;
    return text;
}

QString VersionInfo::text() const
{
    const QString package = m_packageQuery();
    const bool driver = QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE"));
    return line("User:", m_passed.user) + line("Program:", m_passed.program) +
           line("Version:", m_passed.version) +
           line("System user:", QString::number(m_passed.sysUser)) +
           line("Package:", package.isEmpty() ? QStringLiteral("not installed (built from source)")
                                              : QStringLiteral("apmaster ") + package) +
           line("Qt:", QStringLiteral("Qt ") + QString::fromLatin1(qVersion())) +
           line("SQLite:",
                QStringLiteral("SQLite %1, Qt's SQLite driver %2")
                    .arg(QString::fromLatin1(sqlite3_libversion()),
                         driver ? QStringLiteral("available") : QStringLiteral("missing"))) +
           line("PostgreSQL client:", postgresClientVersion()) +
           line("Data folder:", QDir::toNativeSeparators(m_dataFolder)) +
           line("Engine:", engineLine()) + line("Settings file:", moduleSettingsFile());
}

void VersionInfo::copyTo(QClipboard *clipboard) const
{
    clipboard->setText(text());
}
