#pragma once

#include "data/RecordSource.h"
#include "lists/ListColumns.h"

#include <QAbstractTableModel>
#include <QDate>

#include <functional>
#include <vector>

// A read-only table over a record source's rows. Rows are read in batches as the view scrolls
// to them, so a long list shows its first rows without reading the rest.
class RecordSourceModel : public QAbstractTableModel, private RecordSourceObserver {
    Q_OBJECT

public:
    // The value as stored (a date as its YYYYMMDD number), for whoever reads a cell back.
    static constexpr int RawRole = Qt::UserRole;
    static constexpr int batchSize = 64;

    RecordSourceModel(RecordSource &source, std::vector<ListColumn> columns,
                      std::function<QDate()> today, QObject *parent = nullptr);
    ~RecordSourceModel() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;

    QString caption(int column) const;

private:
    void rowsAboutToReset() override;
    void rowsReset() override;
    void sourceDestroyed() override;
    QVariant raw(int row, int column) const;
    QString display(int row, int column) const;

    RecordSource *m_source; // null once the source is gone (the window is closing down)
    std::vector<ListColumn> m_columns;
    std::function<QDate()> m_today;
    std::vector<int> m_fields; // the record position of each column's field
    int m_rows = 0;
    bool m_resetting = false;
};
