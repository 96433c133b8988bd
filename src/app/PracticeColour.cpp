#include "app/PracticeColour.h"
#include "common/DataFiles.h"

#include "data/Databases.h"

#include <QFile>
#include <QHash>

namespace PracticeColour {

int fromLine(const QString &line)
{
    static const QHash<QString, int> named = {
        {"BLACK", 0x000000}, {"RED", 0x0000FF},     {"GREEN", 0x00FF00}, {"YELLOW", 0x00FFFF},
        {"BLUE", 0xFF0000},  {"MAGENTA", 0xFF00FF}, {"CYAN", 0xFFFF00},  {"WHITE", 0xFFFFFF},
    };
    constexpr int red = 0x0000FF;
    const QString word = line.trimmed().toUpper();
    if (named.contains(word))
        return named.value(word);
    if (word.startsWith(QLatin1String("&H")) && word.endsWith(QLatin1Char('&')) &&
        word.size() > 3) {
        bool ok = false;
        const qulonglong value = word.mid(2, word.size() - 3).toULongLong(&ok, 16);
        if (ok)
            return static_cast<int>(value & 0xFFFFFF);
    }
    return red;
}

std::optional<int> forDataFolder()
{
    QFile file(DataFiles::pathOf(QStringLiteral("practice.dat")));
    if (!file.exists())
        return std::nullopt;
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return fromLine(QString());
    return fromLine(QString::fromLocal8Bit(file.readLine()));
}

} // namespace PracticeColour
