#include "StaffList.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>

namespace StaffList {
namespace {

StaffListing query(QSqlDatabase &db, const QString &path)
{
    StaffListing listing;
    if (!db.open()) {
        listing.error = QStringLiteral("The staff list %1 cannot be opened: %2")
                            .arg(path, db.lastError().text());
        return listing;
    }
    QSqlQuery rows(db);
    if (!rows.exec(QStringLiteral("select username, aplevel from staff order by username"))) {
        listing.error = QStringLiteral("The staff list %1 cannot be read: %2")
                            .arg(path, rows.lastError().text());
        return listing;
    }
    while (rows.next()) {
        const QString name = rows.value(0).toString().trimmed();
        if (!name.isEmpty())
            listing.members.push_back({name, rows.value(1).toInt()});
    }
    return listing;
}

} // namespace

StaffListing read(const QString &dataFolder)
{
    const QString path = QDir(dataFolder).absoluteFilePath(QStringLiteral("user.mdb"));
    if (!QFileInfo(path).isFile())
        return {{},
                QStringLiteral("There is no staff list (user.mdb) in %1.")
                    .arg(QDir::toNativeSeparators(QDir(dataFolder).absolutePath()))};
    // A connection of its own, gone again before the module starts.
    const QString connection = QStringLiteral("launcher-staff-%1").arg(quintptr(&path));
    StaffListing listing;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=5000"));
        // mode=ro: read-only for the engine as well, and a missing file is never created.
        db.setDatabaseName(QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded) +
                           QStringLiteral("?mode=ro"));
        listing = query(db, QDir::toNativeSeparators(path));
        db.close();
    }
    QSqlDatabase::removeDatabase(connection);
    return listing;
}

} // namespace StaffList
