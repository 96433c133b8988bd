#include "yearend/YearEndSettings.h"

#include "yearend/TaxThresholds.h"

#include <QDir>
#include <QFile>

namespace {

bool readYesNo(const QString &value, bool &result)
{
    const QString lower = value.toLower();
    if (lower == QLatin1String("yes") || lower == QLatin1String("true") ||
        lower == QLatin1String("1")) {
        result = true;
        return true;
    }
    if (lower == QLatin1String("no") || lower == QLatin1String("false") ||
        lower == QLatin1String("0")) {
        result = false;
        return true;
    }
    return false;
}

} // namespace

YearEndSettings YearEndSettings::ofDataFolder()
{
    QFile file(QDir::current().filePath(QString::fromLatin1(fileName)));
    if (!file.exists())
        return {};
    if (!file.open(QIODevice::ReadOnly)) {
        YearEndSettings settings;
        settings.error = QStringLiteral("%1 cannot be read: %2")
                             .arg(QString::fromLatin1(fileName), file.errorString());
        return settings;
    }
    return parse(QString::fromUtf8(file.readAll()));
}

YearEndSettings YearEndSettings::parse(const QString &text)
{
    YearEndSettings settings;
    QString section;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int n = 0; n < lines.size(); ++n) {
        const QString line = lines[n].trimmed();
        auto wrong = [&](const QString &why) {
            settings.error = QStringLiteral("%1, line %2 (\"%3\"): %4")
                                 .arg(QString::fromLatin1(fileName))
                                 .arg(n + 1)
                                 .arg(line, why);
            return settings;
        };
        if (line.isEmpty() || line.startsWith(QLatin1Char(';')) ||
            line.startsWith(QLatin1Char('#')))
            continue;
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) {
            section = line.mid(1, line.size() - 2).trimmed().toLower();
            if (section != QLatin1String("runs") && section != QLatin1String("indexed"))
                return wrong(QStringLiteral("the sections are [runs] and [indexed]"));
            continue;
        }
        const int equals = line.indexOf(QLatin1Char('='));
        if (equals < 0 || section.isEmpty())
            return wrong(QStringLiteral("expected name=value under [runs] or [indexed]"));
        const QString key = line.left(equals).trimmed().toLower();
        const QString value = line.mid(equals + 1).trimmed();
        bool ok = false;
        if (section == QLatin1String("runs")) {
            if (key == QLatin1String("legalthreshold")) {
                if (!readYesNo(value, settings.legalThreshold))
                    return wrong(QStringLiteral("legalthreshold is yes or no"));
            } else if (key == QLatin1String("taxyear")) {
                settings.taxYear = value.toInt(&ok);
                if (!ok || settings.taxYear < 1990 || settings.taxYear > 9999)
                    return wrong(QStringLiteral("taxyear is a year such as 2026"));
            } else {
                return wrong(QStringLiteral("[runs] knows legalthreshold and taxyear"));
            }
            continue;
        }
        const int year = key.toInt(&ok);
        if (!ok || year < TaxThresholds::firstIndexedYear || year > 9999)
            return wrong(QStringLiteral("[indexed] takes tax years from %1 on")
                             .arg(TaxThresholds::firstIndexedYear));
        const int amount = value.toInt(&ok);
        if (!ok || amount <= 0 || amount % 100 != 0)
            return wrong(
                QStringLiteral("an indexed threshold is whole dollars, a multiple of 100"));
        settings.indexed.insert(year, amount);
    }
    return settings;
}
