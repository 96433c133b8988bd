#include "FileImport.h"

#include "ImportDestination.h"
#include "ImportError.h"
#include "ValueConversion.h"

#include "data/Money.h"

#include <cmath>

namespace {
constexpr qint64 progressEvery = 5000;

qint64 tenThousandths(double amount)
{
    return std::llround(Money::round4(amount) * 10000.0);
}
} // namespace

FileImport::FileImport(const QString &fileName, ImportDestination &destination,
                       FileSummary &summary, Progress progress) :
    m_fileName(fileName),
    m_destination(destination), m_summary(summary), m_progress(std::move(progress))
{
}

void FileImport::beginTable(const SourceTable &table)
{
    m_plan = TablePlans::planFor(m_fileName, table);
    m_countedRows = table.countedRows;
    m_values = QVariantList(qsizetype(m_plan.columns.size()));
    m_moneyRead.assign(m_plan.columns.size(), 0);
    m_timesDropped.assign(m_plan.columns.size(), 0);
    TableSummary summary;
    summary.sourceName = m_plan.sourceName;
    summary.name = m_plan.name;
    m_summary.tables.push_back(summary);
    m_destination.beginTable(m_plan);
    if (m_progress)
        m_progress(m_plan.sourceName, 0, m_countedRows);
}

QString FileImport::rowKey(const SourceRow &row) const
{
    const qint64 number = m_summary.tables.back().rowsRead + 1;
    if (m_plan.columns.empty())
        return QStringLiteral("row %1").arg(number);
    const int key = m_plan.keyColumn;
    return QStringLiteral("row %1 (%2 %3)")
        .arg(number)
        .arg(m_plan.columns[std::size_t(key)].sourceName,
             ValueConversion::shown(row[std::size_t(key)]));
}

void FileImport::row(const SourceRow &row)
{
    for (std::size_t i = 0; i < m_plan.columns.size(); ++i) {
        const ColumnPlan &column = m_plan.columns[i];
        const Converted c = ValueConversion::convert(column, row[i]);
        if (!c.refusal.isEmpty())
            throw ImportError(
                QStringLiteral("table '%1', column '%2', %3: the value %4 cannot be kept, as %5")
                    .arg(m_plan.sourceName, column.sourceName, rowKey(row),
                         ValueConversion::shown(row[i]), c.refusal));
        if (c.timeDropped)
            ++m_timesDropped[i];
        if (column.money && !c.value.isNull())
            m_moneyRead[i] +=
                row[i].tag == 'M' ? row[i].integer : tenThousandths(c.value.toDouble());
        m_values[qsizetype(i)] = c.value;
    }
    m_destination.insert(m_values);
    const qint64 done = ++m_summary.tables.back().rowsRead;
    if (m_progress && done % progressEvery == 0)
        m_progress(m_plan.sourceName, done, m_countedRows);
}

void FileImport::endTable(quint32 rowsRead)
{
    m_destination.endTable();
    TableSummary &summary = m_summary.tables.back();
    if (rowsRead != summary.rowsRead)
        throw ImportError(QStringLiteral("table '%1': the reader counted %2 rows but sent %3")
                              .arg(m_plan.sourceName)
                              .arg(rowsRead)
                              .arg(summary.rowsRead));
    summary.rowsWritten = m_destination.rowCount();
    if (summary.rowsWritten != summary.rowsRead)
        throw ImportError(QStringLiteral("table '%1': %2 rows were read but %3 written")
                              .arg(m_plan.sourceName)
                              .arg(summary.rowsRead)
                              .arg(summary.rowsWritten));
    for (std::size_t i = 0; i < m_plan.columns.size(); ++i) {
        const ColumnPlan &column = m_plan.columns[i];
        if (column.money) {
            const MoneyTotal total{column.name, m_moneyRead[i],
                                   m_destination.moneyTotal(column.name)};
            summary.totals.push_back(total);
            if (total.read != total.written)
                throw ImportError(
                    QStringLiteral("table '%1', column '%2': the total written differs from "
                                   "the total read")
                        .arg(m_plan.sourceName, column.sourceName));
        }
        if (m_timesDropped[i] > 0)
            summary.warnings << QStringLiteral("%1: %2 dates had a time of day, which the "
                                               "module does not keep; the day was kept")
                                    .arg(column.name)
                                    .arg(m_timesDropped[i]);
    }
    if (m_progress)
        m_progress(m_plan.sourceName, summary.rowsRead, m_countedRows);
}
