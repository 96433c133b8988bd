#include "PickerIndex.h"

#include "PickerText.h"

#include "data/DbError.h"

#include <QFile>
#include <QSqlError>

#include <cstring>

namespace {

// "v0, v1, v2" for the prefix v and three columns.
QString numbered(const char *prefix, int count)
{
    QStringList names;
    for (int i = 0; i < count; ++i)
        names << QLatin1String(prefix) + QString::number(i);
    return names.join(QStringLiteral(", "));
}

void run(QSqlQuery &query)
{
    if (!query.exec())
        throw DbError(DbError::Generic, query.lastError().text());
}

// The text shown for a number: whole numbers without a decimal point, others in general form.
QString numberText(const QVariant &value)
{
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (!ok)
        return value.toString();
    return QString::number(number, 'g', 15);
}

} // namespace

PickerIndex::PickerIndex(const QString &path, QList<PickerColumn> columns,
                         const QString &identity) :
    m_columns(std::move(columns)), m_connection(Connection::localFile(path))
{
    const int n = int(m_columns.size());
    // Written once and then only read, or replaced whole: nothing in it needs to survive a
    // crash while it is being made (a file cut short is found and made again).
    m_connection.execute(QStringLiteral("pragma journal_mode = off"));
    m_connection.execute(QStringLiteral("pragma synchronous = off"));
    m_connection.execute(QStringLiteral("create table meta (signature text)"));
    m_connection.execute(
        QStringLiteral("create table rows (id integer primary key, h integer, %1, %2)")
            .arg(numbered("v", n), numbered("k", n)));
    m_connection.execute(QStringLiteral("create table words (word text, id integer)"));
    // Read through the system's file cache without a copy per page, so that a search touching
    // rows all over the file costs no read calls once the file has been read.
    m_connection.execute(QStringLiteral("pragma mmap_size = 268435456"));
    m_filling = std::make_unique<BulkTransaction>(m_connection);
    QSqlQuery meta(m_connection.db());
    meta.prepare(QStringLiteral("insert into meta values (?)"));
    meta.addBindValue(signature(identity));
    run(meta);
}

PickerIndex::PickerIndex(Kept, const QString &path, QList<PickerColumn> columns) :
    m_columns(std::move(columns)), m_connection(Connection::localFile(path)), m_updating(true)
{
}

namespace {

// Whether the file is a whole database file: its header is there and the file is as long as
// the header says. A file cut short (a full disk, a copy broken off) fails this before the
// engine could find it out halfway through a search.
bool wholeDatabaseFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray header = file.read(100);
    if (header.size() < 100 || !header.startsWith(QByteArrayView("SQLite format 3\0", 16)))
        return false;
    const auto byte = [&](int at) { return quint32(quint8(header.at(at))); };
    quint32 pageSize = byte(16) << 8 | byte(17);
    if (pageSize == 1)
        pageSize = 65536;
    const quint32 pages = byte(28) << 24 | byte(29) << 16 | byte(30) << 8 | byte(31);
    return pages > 0 && qint64(pageSize) * pages == file.size();
}

} // namespace

std::unique_ptr<PickerIndex> PickerIndex::openKept(const QString &path, QList<PickerColumn> columns,
                                                   const QString &identity)
{
    if (!wholeDatabaseFile(path))
        return nullptr;
    std::unique_ptr<PickerIndex> index(new PickerIndex(Kept{}, path, std::move(columns)));
    try {
        if (!index->readKept(identity))
            return nullptr;
    } catch (const DbError &) {
        return nullptr; // not a database after all, or not one of ours
    }
    return index;
}

bool PickerIndex::readKept(const QString &identity)
{
    m_connection.execute(QStringLiteral("pragma mmap_size = 268435456"));
    // The write lock from the start: a second picker on the same file waits, and then finds
    // the rows this one wrote.
    m_filling = std::make_unique<BulkTransaction>(m_connection);
    QSqlQuery meta(m_connection.db());
    meta.setForwardOnly(true);
    if (!meta.exec(QStringLiteral("select signature from meta")) || !meta.next() ||
        meta.value(0).toString() != signature(identity))
        return false;
    meta.finish();
    QSqlQuery kept(m_connection.db());
    kept.setForwardOnly(true);
    if (!kept.exec(QStringLiteral("select h, id from rows")))
        return false;
    while (kept.next()) {
        const int id = kept.value(1).toInt();
        m_unmatched.insert(kept.value(0).toLongLong(), id);
        m_lastId = std::max(m_lastId, id);
        ++m_count;
    }
    return kept.lastError().type() == QSqlError::NoError;
}

// What the file was made for: the index's own layout, the caller's identity (the company and the
// program) and the columns. A file with any other is not used.
QString PickerIndex::signature(const QString &identity) const
{
    QStringList lines{QStringLiteral("picker index 3"), identity};
    for (const PickerColumn &column : m_columns)
        lines << QStringLiteral("%1|%2|%3").arg(column.title).arg(int(column.kind)).arg(
                     int(column.search));
    return lines.join(QLatin1Char('\n'));
}

PickerIndex::~PickerIndex() = default;

namespace {

// "insert into TABLE values (?, ?), (?, ?), ..." for that many rows of that many values.
QString insertStatement(const QString &table, int width, int rows)
{
    const QString row = QStringLiteral("(?%1)").arg(QStringLiteral(", ?").repeated(width - 1));
    QStringList all;
    for (int i = 0; i < rows; ++i)
        all << row;
    return QStringLiteral("insert into %1 values %2").arg(table, all.join(QLatin1Char(',')));
}

// Writes the values a batch at a time with the prepared statement; with `all` also the rest.
void insertBatches(const Connection &connection, QSqlQuery &batch, const QString &table, int width,
                   int batchRows, QVariantList &values, bool all)
{
    const qsizetype batchValues = qsizetype(width) * batchRows;
    qsizetype done = 0;
    for (; values.size() - done >= batchValues; done += batchValues) {
        for (qsizetype i = done; i < done + batchValues; ++i)
            batch.addBindValue(values.at(i));
        run(batch);
    }
    if (all && values.size() > done) {
        QSqlQuery rest(connection.db());
        rest.prepare(insertStatement(table, width, int((values.size() - done) / width)));
        for (qsizetype i = done; i < values.size(); ++i)
            rest.addBindValue(values.at(i));
        run(rest);
        done = values.size();
    }
    values.remove(0, done);
}

} // namespace

// Several rows in one statement: a statement per row costs more in the driver than in the
// engine, and the driver's binding grows with the square of a statement's values, so a batch
// stays small.
void PickerIndex::flush(bool all)
{
    const int rowWidth = 2 + 2 * int(m_columns.size());
    if (!m_addRows.isActive() && m_addRows.lastQuery().isEmpty()) {
        m_addRows = QSqlQuery(m_connection.db());
        m_addRows.prepare(insertStatement(QStringLiteral("rows"), rowWidth, batchRows));
        m_addWords = QSqlQuery(m_connection.db());
        m_addWords.prepare(insertStatement(QStringLiteral("words"), 2, batchWords));
    }
    insertBatches(m_connection, m_addRows, QStringLiteral("rows"), rowWidth, batchRows, m_rowValues,
                  all);
    insertBatches(m_connection, m_addWords, QStringLiteral("words"), 2, batchWords, m_wordValues,
                  all);
}

namespace {

// A 64-bit FNV-1a hash, fed a value at a time, finished with a mix of its bits: fast enough to
// run over every row of the company at each start, and wide enough that two rows of one
// company never share it.
class RowHash {
public:
    void add(quint64 unit)
    {
        m_hash ^= unit;
        m_hash *= 0x100000001b3ULL;
    }
    void add(const QString &text)
    {
        add(quint64(text.size()));
        for (const QChar c : text)
            add(quint64(c.unicode()));
    }
    void add(double number)
    {
        quint64 bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        add(bits);
    }
    qint64 result() const
    {
        quint64 h = m_hash;
        h ^= h >> 33;
        h *= 0xff51afd7ed558ccdULL;
        h ^= h >> 33;
        h *= 0xc4ceb9fe1a85ec53ULL;
        h ^= h >> 33;
        return qint64(h);
    }

private:
    quint64 m_hash = 0xcbf29ce484222325ULL;
};

} // namespace

qint64 PickerIndex::fingerprint(const QVariantList &values) const
{
    RowHash hash;
    for (int i = 0; i < m_columns.size(); ++i) {
        const QVariant value = values.value(i);
        if (m_columns.at(i).kind == PickerColumn::Kind::Text)
            hash.add(value.toString());
        else
            hash.add(value.toDouble());
    }
    return hash.result();
}

void PickerIndex::add(const QVariantList &values)
{
    const qint64 print = fingerprint(values);
    if (m_updating) {
        // A row the kept file holds as it is: nothing to write.
        const auto kept = m_unmatched.find(print);
        if (kept != m_unmatched.end()) {
            m_unmatched.erase(kept);
            return;
        }
        ++m_added;
    }
    write(values, print);
}

void PickerIndex::write(const QVariantList &values, qint64 print)
{
    const int id = ++m_lastId;
    ++m_count;
    m_rowValues << id << print;
    QVariantList keys;
    QStringList words;
    for (int i = 0; i < m_columns.size(); ++i) {
        const PickerColumn &column = m_columns.at(i);
        const QVariant value = values.value(i);
        const QString text =
            column.kind == PickerColumn::Kind::Text ? value.toString() : numberText(value);
        if (column.kind == PickerColumn::Kind::Text) {
            m_rowValues << (value.isNull() ? QVariant(QString()) : QVariant(text));
            keys << PickerText::fold(text);
        } else {
            m_rowValues << value.toDouble();
            keys << value.toDouble();
        }
        switch (column.search) {
        case PickerColumn::Search::No:
            break;
        case PickerColumn::Search::Start:
            words << PickerText::fold(text);
            break;
        case PickerColumn::Search::WordsAndDigits: {
            QString digits;
            for (const QChar c : text)
                if (c.isDigit())
                    digits += c;
            if (!digits.isEmpty())
                words << digits;
            words << PickerText::words(text);
            break;
        }
        case PickerColumn::Search::Words:
            words << PickerText::words(text);
            break;
        }
    }
    m_rowValues << keys;
    words.removeDuplicates();
    for (const QString &word : std::as_const(words))
        if (!word.isEmpty())
            m_wordValues << word << id;
    flush(false);
}

// The kept rows that were not added again: deleted or changed in the company since.
void PickerIndex::removeLeftovers()
{
    QSqlQuery words(m_connection.db()), rows(m_connection.db());
    words.prepare(QStringLiteral("delete from words where id = ?"));
    rows.prepare(QStringLiteral("delete from rows where id = ?"));
    for (const int id : std::as_const(m_unmatched)) {
        words.addBindValue(id);
        run(words);
        rows.addBindValue(id);
        run(rows);
        ++m_removed;
        --m_count;
    }
    m_unmatched.clear();
    m_unmatched.squeeze();
}

void PickerIndex::finish()
{
    flush(true);
    m_addRows = QSqlQuery();
    m_addWords = QSqlQuery();
    if (m_updating)
        removeLeftovers();
    m_filling->commit();
    m_filling.reset();
    if (m_updating)
        return;
    // Indexes made once the rows are in cost a sort each, far less than keeping them as rows
    // come. Every column's order gets its index now, so that a kept file is only read later.
    m_connection.execute(QStringLiteral("create index words_word on words (word, id)"));
    m_connection.execute(QStringLiteral("create index words_id on words (id, word)"));
    // The fingerprints alone, read at each start: a fraction of the rows' pages.
    m_connection.execute(QStringLiteral("create index rows_h on rows (h)"));
    for (int i = 0; i < m_columns.size(); ++i)
        m_connection.execute(QStringLiteral("create index rows_k%1 on rows (k%1, id)").arg(i));
    m_connection.execute(QStringLiteral("pragma analysis_limit = 1000"));
    m_connection.execute(QStringLiteral("analyze"));
}

// One word of the search: the row has a word starting with it. The first word of a search with
// few matches is looked up as a set ("id in"), every other one as a test of the row ("exists").
QString PickerIndex::termCondition(bool correlated)
{
    const QString range = QStringLiteral("word >= ? and word < ?");
    if (!correlated)
        return QStringLiteral("r.id in (select id from words where %1)").arg(range);
    return QStringLiteral("exists (select 1 from words w where w.id = r.id and w.%1)").arg(range);
}

void PickerIndex::search(const QString &text, int column, bool descending)
{
    column = qBound(0, column, int(m_columns.size()) - 1);
    m_terms = PickerText::words(text);
    // The longest word narrows most: it leads.
    std::stable_sort(m_terms.begin(), m_terms.end(),
                     [](const QString &a, const QString &b) { return a.size() > b.size(); });
    m_walking = false;
    if (!m_terms.isEmpty()) {
        QSqlQuery count(m_connection.db());
        count.prepare(QStringLiteral("select count(*) from (select 1 from words where word >= ? "
                                     "and word < ? limit %1)")
                          .arg(fewMatches + 1));
        count.addBindValue(m_terms.constFirst());
        count.addBindValue(PickerText::prefixEnd(m_terms.constFirst()));
        run(count);
        m_walking = count.next() && count.value(0).toInt() > fewMatches;
    }
    QStringList conditions;
    for (int i = 0; i < m_terms.size(); ++i)
        conditions << termCondition(m_walking || i > 0);
    const QString order = descending ? QStringLiteral(" desc") : QString();
    m_statement =
        QStringLiteral("select %1 from rows r%2 order by r.k%3%4, r.id%4 limit ? offset ?")
            .arg(numbered("r.v", int(m_columns.size())),
                 conditions.isEmpty()
                     ? QString()
                     : QStringLiteral(" where ") + conditions.join(QStringLiteral(" and ")))
            .arg(column)
            .arg(order);
}

QList<QVariantList> PickerIndex::rows(int offset, int limit)
{
    QList<QVariantList> found;
    if (m_statement.isEmpty())
        return found;
    QSqlQuery query(m_connection.db());
    query.setForwardOnly(true);
    query.prepare(m_statement);
    for (int i = 0; i < m_terms.size(); ++i) {
        query.addBindValue(m_terms.at(i));
        query.addBindValue(PickerText::prefixEnd(m_terms.at(i)));
    }
    query.addBindValue(limit);
    query.addBindValue(offset);
    run(query);
    const int n = int(m_columns.size());
    while (query.next()) {
        QVariantList row;
        row.reserve(n);
        for (int i = 0; i < n; ++i)
            row << query.value(i);
        found << row;
    }
    return found;
}
