#include "PickerModel.h"

#include "PickerIndex.h"

#include "data/DbError.h"

#include <QLocale>

PickerModel::PickerModel(PickerIndex &index, QObject *parent) :
    QAbstractTableModel(parent), m_index(index)
{
    reload();
}

void PickerModel::setSearchText(const QString &text)
{
    m_text = text;
    reload();
}

void PickerModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || column >= columnCount())
        return;
    m_column = column;
    m_order = order;
    reload();
}

void PickerModel::reload()
{
    beginResetModel();
    m_error.clear();
    try {
        m_index.search(m_text, m_column, m_order == Qt::DescendingOrder);
        m_rows = m_index.rows(0, pageRows);
    } catch (const DbError &error) {
        // The scratch file failed (a full disk, say): an empty list that says why.
        m_rows.clear();
        m_error = error.text();
    }
    m_more = m_rows.size() == pageRows;
    endResetModel();
}

bool PickerModel::canFetchMore(const QModelIndex &parent) const
{
    return !parent.isValid() && m_more;
}

void PickerModel::fetchMore(const QModelIndex &parent)
{
    if (!canFetchMore(parent))
        return;
    QList<QVariantList> page;
    try {
        page = m_index.rows(int(m_rows.size()), pageRows);
    } catch (const DbError &error) {
        m_error = error.text();
    }
    m_more = page.size() == pageRows;
    if (page.isEmpty())
        return;
    beginInsertRows({}, int(m_rows.size()), int(m_rows.size() + page.size()) - 1);
    m_rows += page;
    endInsertRows();
}

QString PickerModel::numberAt(int row) const
{
    if (row < 0 || row >= m_rows.size())
        return {};
    return QString::number(m_rows.at(row).value(0).toDouble(), 'g', 15);
}

bool PickerModel::isText(int column) const
{
    return column >= 0 && column < columnCount() &&
           m_index.columns().at(column).kind == PickerColumn::Kind::Text;
}

int PickerModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int PickerModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_index.columns().size());
}

QVariant PickerModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const PickerColumn::Kind kind = m_index.columns().at(index.column()).kind;
    if (role == Qt::TextAlignmentRole)
        return kind == PickerColumn::Kind::Text ? int(Qt::AlignLeft | Qt::AlignVCenter)
                                                : int(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    const QVariant value = m_rows.at(index.row()).value(index.column());
    switch (kind) {
    case PickerColumn::Kind::Money:
        return QLocale::c().toString(value.toDouble(), 'f', 2);
    case PickerColumn::Kind::Number:
        return QString::number(value.toDouble(), 'g', 15);
    case PickerColumn::Kind::Text:
        break;
    }
    return value.toString();
}

QVariant PickerModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= columnCount())
        return {};
    return m_index.columns().at(section).title;
}
