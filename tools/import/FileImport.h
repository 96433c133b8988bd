#pragma once

#include "ImportSummary.h"
#include "SourceRows.h"
#include "TablePlan.h"

#include <QVariantList>

#include <functional>

class ImportDestination;

// Takes one Access file's tables and rows from the reader, converts them and writes them to
// the destination, keeping the file's summary. A value that cannot be converted stops it with
// an ImportError that names table, column, row and value.
class FileImport : public SourceSink {
public:
    using Progress = std::function<void(const QString &table, qint64 rows, qint64 of)>;
    FileImport(const QString &fileName, ImportDestination &destination, FileSummary &summary,
               Progress progress);

    void beginTable(const SourceTable &table) override;
    void row(const SourceRow &row) override;
    void endTable(quint32 rowsRead) override;

private:
    QString rowKey(const SourceRow &row) const;

    QString m_fileName;
    ImportDestination &m_destination;
    FileSummary &m_summary;
    Progress m_progress;
    TablePlan m_plan;
    qint64 m_countedRows = 0;
    QVariantList m_values;
    std::vector<qint64> m_moneyRead;
    std::vector<qint64> m_timesDropped;
};
