#pragma once

#include "data/Connection.h"

#include <QList>
#include <QSet>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <memory>

class BulkTransaction;

// One column of a picker's list, and whether and how its text is searched.
struct PickerColumn {
    enum class Kind { Number, Text, Money };
    enum class Search {
        No,
        Words,          // any word of the text, from its start
        WordsAndDigits, // the same, and the digits of the whole text as one word (telephone)
        Start           // the start of the whole text (the number)
    };
    QString title;
    Kind kind = Kind::Text;
    Search search = Search::No;
};

// The rows a picker lists, copied once from the company's database into a scratch file of the
// picker's own with a table of their words, so that each keystroke is one bounded look-up in an
// index and never a read of the company's tables. Rows are then read a page at a time, in the
// order of any column, either way.
class PickerIndex {
public:
    // Makes the scratch file at that path (a file of the picker's own, never the company's).
    PickerIndex(const QString &path, QList<PickerColumn> columns);
    ~PickerIndex();
    PickerIndex(const PickerIndex &) = delete;
    PickerIndex &operator=(const PickerIndex &) = delete;

    // Filling: one call per row, values in the order of the columns; then finish().
    void add(const QVariantList &values);
    void finish();

    const QList<PickerColumn> &columns() const { return m_columns; }
    int count() const { return m_count; }

    // The rows the search text matches (every word of it starting a searched word of the row),
    // in the order of the column. Rows are read with rows().
    void search(const QString &text, int column, bool descending);
    QList<QVariantList> rows(int offset, int limit);
    // Whether the last search walks the sorted rows (many matches) rather than sorting the
    // matches (few); for the benchmark.
    bool walking() const { return m_walking; }

    // A search matching more rows than this walks the list in its order.
    static constexpr int fewMatches = 2000;

private:
    static QString termCondition(bool correlated);
    // Writes the rows and words waiting in whole batches; with `all` also the rest.
    void flush(bool all);
    void ensureOrder(int column);

    static constexpr int batchRows = 8;
    static constexpr int batchWords = 64;

    QList<PickerColumn> m_columns;
    Connection m_connection;
    std::unique_ptr<BulkTransaction> m_filling;
    QVariantList m_rowValues, m_wordValues; // waiting to be written, a batch at a time
    QSqlQuery m_addRows, m_addWords;        // a whole batch of each
    QSet<int> m_ordered;                    // the columns whose order has its index
    int m_count = 0;
    QStringList m_terms;
    QString m_statement;
    bool m_walking = false;
};
