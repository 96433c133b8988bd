#include "SignIn.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

#include <pwd.h>
#include <unistd.h>

namespace SignIn {

QString argument(const StaffMember &member)
{
    const int level = std::clamp(member.level, 0, 99);
    return QStringLiteral("VDR%1%2").arg(level, 2, 10, QLatin1Char('0')).arg(member.name);
}

bool choosingAllowed(const QString &dataFolder)
{
    return QFileInfo(QDir(dataFolder).absoluteFilePath(QLatin1String(choiceMarker))).exists();
}

const StaffMember *forLogin(const std::vector<StaffMember> &staff, const QString &login)
{
    const QString wanted = login.trimmed();
    if (wanted.isEmpty())
        return nullptr;
    const auto found = std::find_if(staff.begin(), staff.end(), [&](const StaffMember &m) {
        return m.name.trimmed().compare(wanted, Qt::CaseInsensitive) == 0;
    });
    return found == staff.end() ? nullptr : &*found;
}

QString desktopLoginName()
{
    // The account's name, not $USER, which a shell may have changed.
    if (const passwd *entry = getpwuid(geteuid()))
        return QString::fromLocal8Bit(entry->pw_name);
    return qEnvironmentVariable("USER");
}

} // namespace SignIn
