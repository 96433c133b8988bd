#include "lists/RecordSourceModel.h"

#include "common/Numbers.h"
#include "data/DbError.h"
#include "lists/ListFormats.h"

#include <algorithm>
#include <limits>

RecordSourceModel::RecordSourceModel(RecordSource &source, std::vector<ListColumn> columns,
                                     std::function<QDate()> today, QObject *parent) :
    QAbstractTableModel(parent),
    m_source(&source), m_columns(std::move(columns)), m_today(std::move(today))
{
    m_source->setObserver(this);
    rowsReset();
}

RecordSourceModel::~RecordSourceModel()
{
    if (m_source)
        m_source->setObserver(nullptr);
}

void RecordSourceModel::sourceDestroyed()
{
    // Only the window's destruction gets here: the view goes next and reads nothing meanwhile.
    m_source = nullptr;
    m_rows = 0;
    m_pages.clear();
}

int RecordSourceModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int RecordSourceModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QString RecordSourceModel::caption(int column) const
{
    if (column < 0 || column >= columnCount())
        return {};
    return m_columns[static_cast<size_t>(column)].caption;
}

QVariant RecordSourceModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return caption(section);
    return QAbstractTableModel::headerData(section, orientation, role);
}

void RecordSourceModel::rowsAboutToReset()
{
    beginResetModel();
    m_resetting = true;
}

void RecordSourceModel::rowsReset()
{
    m_pages.clear();
    m_fields.clear();
    long long count = 0;
    try {
        count = m_source ? m_source->rowCount() : 0;
    } catch (const DbError &) {
        // Told from a refresh that is ending, also in an error: the list shows nothing, and the
        // refresh's own error is what the user sees.
    }
    m_rows = static_cast<int>(std::min<long long>(count, std::numeric_limits<int>::max()));
    // Only a reset begun by rowsAboutToReset() is ended here; the first call comes from the
    // constructor.
    if (m_resetting) {
        m_resetting = false;
        endResetModel();
    }
}

const QSqlRecord *RecordSourceModel::row(int row) const
{
    if (!m_source || row < 0 || row >= m_rows)
        return nullptr;
    const int number = row / batchSize;
    auto page = m_pages.find(number);
    if (page == m_pages.end()) {
        if (static_cast<int>(m_pages.size()) >= keptPages) {
            const auto oldest =
                std::min_element(m_pages.begin(), m_pages.end(), [](const auto &a, const auto &b) {
                    return a.second.lastUse < b.second.lastUse;
                });
            m_pages.erase(oldest);
        }
        Page read;
        try {
            read.rows = m_source->readRows(static_cast<long long>(number) * batchSize, batchSize);
        } catch (const DbError &) {
            // A page the engine would not give (the file went away) shows empty; the error
            // reaches the user through the next step that reads.
        }
        page = m_pages.emplace(number, std::move(read)).first;
    }
    page->second.lastUse = ++m_uses;
    const size_t at = static_cast<size_t>(row - number * batchSize);
    if (at >= page->second.rows.size())
        return nullptr; // rows went away since they were counted
    const QSqlRecord &record = page->second.rows[at];
    if (m_fields.empty()) {
        m_fields.reserve(m_columns.size());
        for (const ListColumn &column : m_columns)
            m_fields.push_back(record.indexOf(column.field));
    }
    return &record;
}

QVariant RecordSourceModel::raw(int row, int column) const
{
    const QSqlRecord *record = this->row(row);
    if (!record)
        return {};
    const int field = m_fields[static_cast<size_t>(column)];
    return field < 0 ? QVariant() : record->value(field);
}

QString RecordSourceModel::display(int row, int column) const
{
    using K = ListColumn::Kind;
    const QVariant value = raw(row, column);
    if (value.isNull())
        return {};
    switch (m_columns[static_cast<size_t>(column)].kind) {
    case K::Text:
        return value.toString();
    case K::Whole:
        return Numbers::plain(value.toDouble());
    case K::CheckNumber:
        return value.toDouble() == 0 ? QString() : Numbers::plain(value.toDouble());
    case K::Date:
        return ListFormats::date(value);
    case K::InvoiceStatus:
        return ListFormats::invoiceStatus(value);
    case K::Money:
        return ListFormats::currency(value.toDouble());
    case K::Account:
        return value.toDouble() == 0 ? QString() : ListFormats::accountNumber(value.toDouble());
    case K::Year:
        return value.toLongLong() > 0 ? QString::number(value.toLongLong() / 10000) : QString();
    case K::AgeInDays: {
        const long long n = value.toLongLong();
        const QDate day(static_cast<int>(n / 10000), static_cast<int>(n / 100 % 100),
                        static_cast<int>(n % 100));
        if (!day.isValid() || !m_today)
            return {};
        return QString::number(day.daysTo(m_today()));
    }
    }
    return {};
}

QVariant RecordSourceModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows || index.column() >= columnCount())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return display(index.row(), index.column());
    case RawRole:
        return raw(index.row(), index.column());
    case Qt::TextAlignmentRole:
        if (m_columns[static_cast<size_t>(index.column())].kind == ListColumn::Kind::Text)
            return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    default:
        return {};
    }
}
