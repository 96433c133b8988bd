#pragma once

#include "data/RecordSource.h"
#include "lists/ListColumns.h"

#include <QAbstractTableModel>
#include <QDate>
#include <QSqlRecord>

#include <functional>
#include <map>
#include <vector>

// A read-only table over a record source's rows. The row count is known at once (the source
// counts them), so End and the scroll bar reach the last row straight away; rows are read a
// page at a time around what the view shows, and only the pages used last are kept.
class RecordSourceModel : public QAbstractTableModel, private RecordSourceObserver {
    Q_OBJECT

public:
    // The value as stored (a date as its YYYYMMDD number), for whoever reads a cell back.
    static constexpr int RawRole = Qt::UserRole;
    // Rows read at a time, and how many such pages are kept.
    static constexpr int batchSize = 64;
    static constexpr int keptPages = 16;

    RecordSourceModel(RecordSource &source, std::vector<ListColumn> columns,
                      std::function<QDate()> today, QObject *parent = nullptr);
    ~RecordSourceModel() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    QString caption(int column) const;
    // The pages held now (for checking that memory stays bounded).
    int heldPages() const { return static_cast<int>(m_pages.size()); }

private:
    void rowsAboutToReset() override;
    void rowsReset() override;
    void sourceDestroyed() override;
    struct Page {
        std::vector<QSqlRecord> rows;
        unsigned long long lastUse = 0;
    };
    // The row at that position, reading its page when it is not held; null when there is none.
    const QSqlRecord *row(int row) const;
    QVariant raw(int row, int column) const;
    QString display(int row, int column) const;

    RecordSource *m_source; // null once the source is gone (the window is closing down)
    std::vector<ListColumn> m_columns;
    std::function<QDate()> m_today;
    mutable std::vector<int> m_fields; // the record position of each column's field
    int m_rows = 0;
    bool m_resetting = false;
    mutable std::map<int, Page> m_pages; // by page number
    mutable unsigned long long m_uses = 0;
};
