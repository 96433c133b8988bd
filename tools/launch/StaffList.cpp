#include "StaffList.h"

#include "data/Connection.h"
#include "data/DbError.h"

#include <QDir>
#include <QSqlError>
#include <QSqlQuery>

namespace StaffList {

StaffListing read(const QString &dataFolder)
{
    const QString folder = QDir::toNativeSeparators(QDir(dataFolder).absolutePath());
    const QString path =
        QDir::toNativeSeparators(QDir(dataFolder).absoluteFilePath(QStringLiteral("user.mdb")));
    StaffListing listing;
    try {
        // A connection of its own, gone again before the module starts.
        const Connection staff = Connection::readOnly(dataFolder, QStringLiteral("user.mdb"));
        QSqlQuery rows(staff.db());
        if (!rows.exec(QStringLiteral("select username, aplevel from staff order by username")))
            return {{},
                    QStringLiteral("The staff list %1 cannot be read: %2")
                        .arg(path, rows.lastError().text())};
        while (rows.next()) {
            const QString name = rows.value(0).toString().trimmed();
            if (!name.isEmpty())
                listing.members.push_back({name, rows.value(1).toInt()});
        }
    } catch (const DbError &error) {
        if (error.code() == DbError::FileNotFound)
            return {{}, QStringLiteral("There is no staff list (user.mdb) in %1.").arg(folder)};
        return {{},
                QStringLiteral("The staff list %1 cannot be opened: %2").arg(path, error.text())};
    }
    return listing;
}

} // namespace StaffList
