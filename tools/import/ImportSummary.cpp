#include "ImportSummary.h"

#include "JetValues.h"

QString ImportSummary::text() const
{
    QStringList lines;
    lines << QStringLiteral("Imported '%1' into '%2'.").arg(source, destination);
    for (const FileSummary &file : files) {
        lines << QString() << file.name;
        for (const QString &w : file.warnings)
            lines << QStringLiteral("  warning: ") + w;
        for (const TableSummary &t : file.tables) {
            const QString name = t.sourceName == t.name
                                     ? t.name
                                     : QStringLiteral("%1 (as %2)").arg(t.sourceName, t.name);
            lines << QStringLiteral("  %1: %2 rows read, %3 rows written")
                         .arg(name)
                         .arg(t.rowsRead)
                         .arg(t.rowsWritten);
            for (const MoneyTotal &m : t.totals)
                lines << QStringLiteral("    total of %1: %2 read, %3 written")
                             .arg(m.column, JetValues::moneyText(m.read),
                                  JetValues::moneyText(m.written));
            for (const QString &w : t.warnings)
                lines << QStringLiteral("    warning: ") + w;
        }
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
