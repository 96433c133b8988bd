#include "StaffList.h"

#include "common/ProgramError.h"
#include "data/Connection.h"
#include "data/DbError.h"

#include <QDir>
#include <QSqlError>
#include <QSqlQuery>

namespace StaffList {

std::vector<StaffMember> read(const QString &dataFolder)
{
    const QString folder = QDir::toNativeSeparators(QDir(dataFolder).absolutePath());
    const QString path =
        QDir::toNativeSeparators(QDir(dataFolder).absoluteFilePath(QStringLiteral("user.mdb")));
    std::vector<StaffMember> members;
    try {
        // A connection of its own, gone again before the module starts.
        const Connection staff = Connection::readOnly(dataFolder, QStringLiteral("user.mdb"));
        QSqlQuery rows(staff.db());
        if (!rows.exec(QStringLiteral("select username, aplevel from staff order by username")))
            throw ProgramError(QStringLiteral("The staff list %1 cannot be read: %2")
                                   .arg(path, rows.lastError().text()));
        while (rows.next()) {
            const QString name = rows.value(0).toString().trimmed();
            if (!name.isEmpty())
                members.push_back({name, rows.value(1).toInt()});
        }
    } catch (const DbError &error) {
        if (error.code() == DbError::FileNotFound)
            throw ProgramError(
                QStringLiteral("There is no staff list (user.mdb) in %1.").arg(folder));
        throw ProgramError(
            QStringLiteral("The staff list %1 cannot be opened: %2").arg(path, error.text()));
    }
    return members;
}

} // namespace StaffList
