#include "PickerIndex.h"

#include "PickerText.h"

#include "data/DbError.h"

#include <QSqlError>

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

PickerIndex::PickerIndex(const QString &path, QList<PickerColumn> columns) :
    m_columns(std::move(columns)), m_connection(Connection::localFile(path))
{
    const int n = int(m_columns.size());
    // A scratch file: nothing in it needs to survive a crash.
    m_connection.execute(QStringLiteral("pragma journal_mode = off"));
    m_connection.execute(QStringLiteral("pragma synchronous = off"));
    m_connection.execute(QStringLiteral("create table rows (id integer primary key, %1, %2)")
                             .arg(numbered("v", n), numbered("k", n)));
    m_connection.execute(QStringLiteral("create table words (word text, id integer)"));
    // Read through the system's file cache without a copy per page, so that a search touching
    // rows all over the file costs no read calls once the file has been read.
    m_connection.execute(QStringLiteral("pragma mmap_size = 268435456"));
    m_filling = std::make_unique<BulkTransaction>(m_connection);
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
    const int rowWidth = 1 + 2 * int(m_columns.size());
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

void PickerIndex::add(const QVariantList &values)
{
    const int id = ++m_count;
    m_rowValues << id;
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

void PickerIndex::finish()
{
    flush(true);
    m_addRows = QSqlQuery();
    m_addWords = QSqlQuery();
    m_filling->commit();
    m_filling.reset();
    // Indexes made once the rows are in cost a sort each, far less than keeping them as rows
    // come. The order of a column gets its index when the list is first sorted by it.
    m_connection.execute(QStringLiteral("create index words_word on words (word, id)"));
    m_connection.execute(QStringLiteral("create index words_id on words (id, word)"));
    m_connection.execute(QStringLiteral("pragma analysis_limit = 1000"));
    m_connection.execute(QStringLiteral("analyze"));
}

void PickerIndex::ensureOrder(int column)
{
    if (m_ordered.contains(column))
        return;
    m_connection.execute(QStringLiteral("create index rows_k%1 on rows (k%1, id)").arg(column));
    m_ordered.insert(column);
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
    ensureOrder(column);
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
