#include "lists/RecordSourceModel.h"

#include "common/Numbers.h"
#include "lists/ListFormats.h"

#include <QSqlRecord>

#include <algorithm>

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

bool RecordSourceModel::canFetchMore(const QModelIndex &parent) const
{
    return m_source && !parent.isValid() &&
           (m_rows < m_source->fetchedCount() || !m_source->allFetched());
}

void RecordSourceModel::fetchMore(const QModelIndex &parent)
{
    if (!m_source || parent.isValid())
        return;
    m_source->fetchMore(m_rows + batchSize - m_source->fetchedCount());
    const int available = std::min(m_source->fetchedCount(), m_rows + batchSize);
    if (available <= m_rows)
        return;
    beginInsertRows({}, m_rows, available - 1);
    m_rows = available;
    endInsertRows();
}

void RecordSourceModel::rowsAboutToReset()
{
    beginResetModel();
    m_resetting = true;
}

void RecordSourceModel::rowsReset()
{
    // The first batch comes at once, as a list is expected to show its first rows straight away.
    m_source->fetchMore(batchSize - m_source->fetchedCount());
    m_rows = std::min(m_source->fetchedCount(), static_cast<int>(batchSize));
    m_fields.assign(m_columns.size(), -1);
    if (m_rows > 0) {
        const QSqlRecord &first = m_source->rowAt(0);
        for (size_t c = 0; c < m_columns.size(); ++c)
            m_fields[c] = first.indexOf(m_columns[c].field);
    }
    // Only a reset begun by rowsAboutToReset() is ended here; the first call comes from the
    // constructor.
    if (m_resetting) {
        m_resetting = false;
        endResetModel();
    }
}

QVariant RecordSourceModel::raw(int row, int column) const
{
    const int field = m_fields[static_cast<size_t>(column)];
    if (field < 0 || !m_source)
        return {};
    return m_source->rowAt(row).value(field);
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
