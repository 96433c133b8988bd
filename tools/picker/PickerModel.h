#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QVariant>

class PickerIndex;

// The picker's list: the rows of the index that match the search text, in the chosen order,
// read a page at a time as the view scrolls to them (so memory follows what was looked at, not
// the size of the company).
class PickerModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit PickerModel(PickerIndex &index, QObject *parent = nullptr);

    void setSearchText(const QString &text);
    QString searchText() const { return m_text; }
    int sortColumn() const { return m_column; }
    Qt::SortOrder sortOrder() const { return m_order; }
    // Why the list could not be read ("" when it could).
    QString error() const { return m_error; }
    // Whether the column holds text (left-aligned) rather than numbers.
    bool isText(int column) const;
    // The number (first column) of the row, as handed back.
    QString numberAt(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    void sort(int column, Qt::SortOrder order) override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;

    static constexpr int pageRows = 50;

private:
    void reload();

    PickerIndex &m_index;
    QString m_text;
    int m_column = 1; // the name, as a bookkeeper thinks of a vendor or an account
    Qt::SortOrder m_order = Qt::AscendingOrder;
    QList<QVariantList> m_rows;
    bool m_more = false;
    QString m_error;
};
