#include "reports/ReportRequest.h"

#include <QStringList>

QString ReportRequest::text(int marginTop, int marginLeft) const
{
    QStringList lines{QStringLiteral("Crystal"), QStringLiteral("ReportFileName=") + reportFileName,
                      QStringLiteral("WindowTitle=") + windowTitle,
                      QStringLiteral("MarginTop=") + QString::number(marginTop),
                      QStringLiteral("MarginLeft=") + QString::number(marginLeft)};
    auto optional = [&lines](const QString &key, const QString &value) {
        if (!value.isEmpty())
            lines << key + value;
    };
    optional(QStringLiteral("SelectionFormula="), selectionFormula);
    for (size_t i = 0; i < dataFiles.size(); ++i)
        optional(QStringLiteral("DataFiles(%1)=").arg(i), dataFiles[i]);
    for (size_t i = 0; i < sortFields.size(); ++i)
        optional(QStringLiteral("SortFields(%1)=").arg(i), sortFields[i]);
    optional(QStringLiteral("Destination="), destination);
    optional(QStringLiteral("PrintFileName="), printFileName);
    optional(QStringLiteral("PrintFileType="), printFileType);
    return lines.join(QStringLiteral("~\n")) + QLatin1Char('~');
}

void ReportRequest::clear()
{
    dataFiles.fill(QString());
    sortFields.fill(QString());
    windowTitle.clear();
    selectionFormula.clear();
}
