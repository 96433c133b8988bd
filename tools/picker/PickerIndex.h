#pragma once

#include "data/Connection.h"

#include <QList>
#include <QMultiHash>
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

// The rows a picker lists, copied from the company's database into an index file of the
// picker's own with a table of their words, so that each keystroke is one bounded look-up in an
// index and never a read of the company's tables. Rows are then read a page at a time, in the
// order of any column, either way.
//
// The file can be kept between runs: each row carries a fingerprint of its values, and a kept
// file opened again compares the rows then added with its own, removing those no longer added
// and writing those new or changed, so that a company with one vendor renamed costs one row and
// its words rather than the whole copy.
class PickerIndex {
public:
    // Makes a new index file at that path (a file of the picker's own, never the company's),
    // marked with the identity (the company and program it belongs to) when it is to be kept.
    PickerIndex(const QString &path, QList<PickerColumn> columns, const QString &identity = {});
    // The index kept at that path, opened to be brought up to date with the rows added next;
    // nullptr when there is no whole index there of these columns and that identity (missing,
    // cut short, foreign, or not a database at all). Holds the file's write lock until finish().
    static std::unique_ptr<PickerIndex> openKept(const QString &path, QList<PickerColumn> columns,
                                                 const QString &identity);
    ~PickerIndex();
    PickerIndex(const PickerIndex &) = delete;
    PickerIndex &operator=(const PickerIndex &) = delete;

    // Filling: one call per row, values in the order of the columns; then finish().
    void add(const QVariantList &values);
    void finish();

    const QList<PickerColumn> &columns() const { return m_columns; }
    int count() const { return m_count; }
    // Whether the index is a kept one brought up to date (rather than made anew), and what
    // finish() changed in it: the rows written and the rows taken out.
    bool wasKept() const { return m_updating; }
    int added() const { return m_added; }
    int removed() const { return m_removed; }

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
    struct Kept {}; // the constructor's tag for an existing file
    PickerIndex(Kept, const QString &path, QList<PickerColumn> columns);
    bool readKept(const QString &identity);
    QString signature(const QString &identity) const;
    static QString termCondition(bool correlated);
    // The fingerprint of a row's values as the index stores them.
    qint64 fingerprint(const QVariantList &values) const;
    void write(const QVariantList &values, qint64 print);
    void removeLeftovers();
    // Writes the rows and words waiting in whole batches; with `all` also the rest.
    void flush(bool all);

    static constexpr int batchRows = 8;
    static constexpr int batchWords = 64;

    QList<PickerColumn> m_columns;
    Connection m_connection;
    std::unique_ptr<BulkTransaction> m_filling;
    QVariantList m_rowValues, m_wordValues; // waiting to be written, a batch at a time
    QSqlQuery m_addRows, m_addWords;        // a whole batch of each
    int m_count = 0;
    int m_lastId = 0;
    bool m_updating = false;
    QMultiHash<qint64, int> m_unmatched; // kept rows not (yet) added again: fingerprint -> id
    int m_added = 0, m_removed = 0;
    QStringList m_terms;
    QString m_statement;
    bool m_walking = false;
};
