#include "data/EngineSettings.h"

#include "common/DataFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

namespace {

QString lineError(int line, const QString &what)
{
    return QStringLiteral("%1, line %2: %3").arg(QLatin1String(EngineSettings::fileName)).arg(line).arg(what);
}

} // namespace

std::optional<EngineSettings> EngineSettings::ofDataFolder()
{
    return ofPath(DataFiles::pathOf(QLatin1String(fileName)));
}

std::optional<EngineSettings> EngineSettings::ofFolder(const QString &folder)
{
    return ofPath(QDir(folder).absoluteFilePath(QLatin1String(fileName)));
}

std::optional<EngineSettings> EngineSettings::ofPath(const QString &path)
{
    if (!QFileInfo::exists(path))
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        EngineSettings broken;
        broken.error = QStringLiteral("The engine settings file '%1' could not be read: %2")
                           .arg(path, file.errorString());
        return broken;
    }
    return parse(QString::fromUtf8(file.readAll()));
}

EngineSettings EngineSettings::parse(const QString &text)
{
    EngineSettings settings;
    bool inSection = false;
    bool sawSection = false;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size() && settings.error.isEmpty(); ++i) {
        const QString line = lines.at(i).trimmed();
        const int number = i + 1;
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char(';')))
            continue;
        if (line.startsWith(QLatin1Char('['))) {
            inSection = line.compare(QLatin1String("[postgresql]"), Qt::CaseInsensitive) == 0;
            if (!inSection)
                settings.error = lineError(number, QStringLiteral("the only section is [postgresql]."));
            sawSection = true;
            continue;
        }
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (!inSection || equals < 1) {
            settings.error = lineError(
                number, inSection ? QStringLiteral("a setting is written as name=value.")
                                  : QStringLiteral("settings go under the line [postgresql]."));
            continue;
        }
        const QString key = line.left(equals).trimmed().toLower();
        const QString value = line.mid(equals + 1).trimmed();
        if (key == QLatin1String("host")) {
            settings.host = value;
        } else if (key == QLatin1String("database")) {
            settings.database = value;
        } else if (key == QLatin1String("user")) {
            settings.user = value;
        } else if (key == QLatin1String("port")) {
            bool ok = false;
            settings.port = value.toInt(&ok);
            if (!ok || settings.port < 1 || settings.port > 65535)
                settings.error =
                    lineError(number, QStringLiteral("the port is a number from 1 to 65535."));
        } else if (key == QLatin1String("password")) {
            settings.error = lineError(
                number, QStringLiteral("a password is never kept in the data folder; keep it in "
                                       "~/.pgpass or the PGPASSWORD environment variable."));
        } else {
            settings.error = lineError(number, QStringLiteral("unknown setting '%1'.").arg(key));
        }
    }
    if (settings.error.isEmpty() && !sawSection)
        settings.error = QStringLiteral("%1 has no section [postgresql].").arg(QLatin1String(fileName));
    else if (settings.error.isEmpty() && (settings.host.isEmpty() || settings.database.isEmpty()))
        settings.error = QStringLiteral("%1 names no host or no database.").arg(QLatin1String(fileName));
    return settings;
}
