#include "data/RecordSource.h"

#include "data/Databases.h"
#include "data/DbError.h"
#include "data/Dialect.h"
#include "data/KeyedStatement.h"
#include "data/Money.h"
#include "data/OrderKey.h"
#include "data/PagedStatement.h"
#include "data/RecordEdit.h"
#include "data/Schema.h"

#include <QRegularExpression>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>

#include <algorithm>

RecordSource::RecordSource(Databases &dbs, const QString &name) : m_dbs(dbs), m_name(name) {}

RecordSource::~RecordSource()
{
    if (m_observer)
        m_observer->sourceDestroyed();
    detach();
    letGo();
}

void RecordSource::setDatabaseName(const QString &fileName)
{
    m_fileName = fileName;
}

void RecordSource::setRecordSource(const QString &statement)
{
    m_statement = statement;
}

void RecordSource::setUpdateTable(const QString &table, const QString &keyColumn)
{
    m_table = table;
    m_keyColumn = keyColumn;
}

QString RecordSource::fullStatement() const
{
    // A bare table name stands for all of its rows.
    static const QRegularExpression tableName(QStringLiteral(R"(^\s*\w+\s*$)"));
    if (tableName.match(m_statement).hasMatch())
        return QStringLiteral("select * from ") + m_statement.trimmed();
    return m_statement;
}

void RecordSource::forgetReadsOn()
{
    for (int i = 0; i < 2; ++i) {
        m_readOn[i] = QSqlQuery();
        m_readOnText[i].clear();
    }
}

void RecordSource::detach()
{
    forgetReadsOn();
    m_window = {};
    m_previous = {};
    m_keyed = Keyed::Unknown;
    m_orderKey.reset();
    m_pos = 0;
    m_size = -1;
    m_onFound = false;
    if (m_mode != Mode::None)
        cancelUpdate();
}

void RecordSource::letGo()
{
    forgetReadsOn();
    if (m_bound) {
        m_dbs.closeReader(m_boundFile, m_name);
        m_bound = false;
    }
}

namespace {
// Tells the observer before a change of rows and again when the change is over, also when it
// ends in an error.
class ResetNotice {
public:
    explicit ResetNotice(RecordSourceObserver *observer) : m_observer(observer)
    {
        if (m_observer)
            m_observer->rowsAboutToReset();
    }
    ~ResetNotice()
    {
        if (m_observer)
            m_observer->rowsReset();
    }
    ResetNotice(const ResetNotice &) = delete;
    ResetNotice &operator=(const ResetNotice &) = delete;

private:
    RecordSourceObserver *m_observer;
};
} // namespace

void RecordSource::refresh()
{
    const ResetNotice notice(m_observer);
    detach();
    // The reader's connection is kept from one refresh to the next on the same file: making one
    // costs more than the statement.
    if (m_bound &&
        (m_boundFile.compare(m_fileName, Qt::CaseInsensitive) != 0 || m_statement.isEmpty()))
        letGo();
    if (m_fileName.isEmpty() || m_statement.isEmpty())
        return;
    m_dbs.openReader(m_fileName, m_name);
    m_bound = true;
    m_boundFile = m_fileName;
    try {
        // The first row alone: a lookup shows one row, and a list reads its own pages. A
        // connection the server ended is replaced once.
        try {
            m_window.rows = readRows(0, 1);
        } catch (const DbError &) {
            if (!m_dbs.renewIfGone(m_fileName, m_name))
                throw;
            m_window.rows = readRows(0, 1);
        }
    } catch (const DbError &) {
        detach();
        letGo();
        throw;
    }
    if (m_window.rows.empty())
        m_size = 0;
}

std::vector<QSqlRecord> RecordSource::readRows(long long first, int count)
{
    std::vector<QSqlRecord> rows;
    if (!m_bound || count <= 0)
        return rows;
    QSqlQuery q(m_dbs.openReader(m_fileName, m_name));
    q.setForwardOnly(true);
    const Dialect &dialect = m_dbs.dialect();
    const QString sql =
        PagedStatement::rows(dialect.withFixedTies(dialect.map(fullStatement())), first, count);
    if (!q.exec(sql))
        throw Databases::errorFrom(q.lastError(), m_statement);
    rows.reserve(static_cast<size_t>(count));
    while (q.next())
        rows.push_back(q.record());
    // Ended at once: no read is left open until the next step.
    q.finish();
    return rows;
}

long long RecordSource::rowCount()
{
    if (!m_bound)
        return 0;
    if (m_size < 0) {
        QSqlQuery q(m_dbs.openReader(m_fileName, m_name));
        q.setForwardOnly(true);
        const QString sql = PagedStatement::count(m_dbs.dialect().map(fullStatement()));
        if (!q.exec(sql) || !q.next())
            throw Databases::errorFrom(q.lastError(), m_statement);
        m_size = q.value(0).toLongLong();
        q.finish();
    }
    return m_size;
}

bool RecordSource::hold(long long pos, bool forward)
{
    if (pos < 0 || (m_size >= 0 && pos >= m_size))
        return false;
    if (m_window.holds(pos))
        return true;
    if (m_previous.holds(pos)) {
        std::swap(m_window, m_previous);
        return true;
    }
    // A window right next to the one held is read on from it by key where the order allows.
    const bool onward = forward ? pos == m_window.end() : pos == m_window.first - 1;
    Window read;
    read.first = forward ? pos : std::max(0LL, pos - windowRows + 1);
    const int wanted = forward ? windowRows : static_cast<int>(pos - read.first + 1);
    std::optional<std::vector<QSqlRecord>> byKey;
    if (onward)
        byKey = readOnByKey(forward, wanted);
    if (byKey) {
        read.rows = std::move(*byKey);
        // Fewer rows before the window than its position says: other users deleted some, and
        // the rows read stand just before the window all the same.
        if (!forward)
            read.first = pos - static_cast<long long>(read.rows.size()) + 1;
    } else {
        read.rows = readRows(read.first, wanted);
    }
    if (forward && static_cast<int>(read.rows.size()) < wanted)
        m_size = read.end();
    m_previous = std::move(m_window);
    m_window = std::move(read);
    return m_window.holds(pos);
}

const OrderKey *RecordSource::orderKey()
{
    if (m_keyed == Keyed::Unknown) {
        m_keyed = Keyed::No;
        if (!m_window.rows.empty()) {
            std::optional<OrderKey> key =
                OrderKey::of(m_dbs.openReader(m_fileName, m_name),
                             m_dbs.dialect().map(fullStatement()), m_window.rows.front());
            if (key) {
                m_orderKey = std::make_unique<OrderKey>(std::move(*key));
                m_keyed = Keyed::Yes;
            }
        }
    }
    return m_orderKey.get();
}

std::optional<int> RecordSource::tiesAtEdge(const OrderKey &key, bool forward) const
{
    // The window and, when it lies right next to it on the far side, the window before.
    std::vector<const QSqlRecord *> rows;
    const auto take = [&rows, forward](const Window &w) {
        if (forward)
            for (auto it = w.rows.rbegin(); it != w.rows.rend(); ++it)
                rows.push_back(&*it);
        else
            for (const QSqlRecord &row : w.rows)
                rows.push_back(&row);
    };
    take(m_window);
    const bool adjacent = forward ? m_previous.end() == m_window.first && !m_previous.rows.empty()
                                  : m_previous.first == m_window.end() && !m_previous.rows.empty();
    if (adjacent)
        take(m_previous);
    const QSqlRecord &edge = *rows.front();
    if (!key.complete(edge))
        return std::nullopt;
    int ties = 0;
    for (const QSqlRecord *row : rows) {
        const OrderKey::Same same = key.same(*row, edge);
        if (same == OrderKey::Same::Unknown)
            return std::nullopt;
        if (same == OrderKey::Same::No)
            return ties;
        ++ties;
    }
    // Every row held ties: more may lie beyond them, unless they reach the result's end.
    const long long start = adjacent ? std::min(m_window.first, m_previous.first) : m_window.first;
    const long long end = adjacent ? std::max(m_window.end(), m_previous.end()) : m_window.end();
    const bool whole = forward ? start == 0 : m_size >= 0 && end >= m_size;
    return whole ? std::optional<int>(ties) : std::nullopt;
}

std::optional<std::vector<QSqlRecord>> RecordSource::readOnByKey(bool forward, int count)
{
    if (m_window.rows.empty())
        return std::nullopt;
    const OrderKey *key = orderKey();
    if (!key)
        return std::nullopt;
    const std::optional<int> ties = tiesAtEdge(*key, forward);
    if (!ties)
        return std::nullopt;
    const QSqlRecord &edge = forward ? m_window.rows.back() : m_window.rows.front();
    // The rows with the edge's values that are held already are skipped. The numbers are
    // written into the text (nearly always the same two, a window onward and one tie), so that
    // the server plans the read for them.
    const QString sql =
        KeyedStatement::from(m_dbs.dialect().map(fullStatement()), key->order(), forward) +
        QStringLiteral(" limit %1 offset %2").arg(count).arg(*ties);
    QSqlQuery &q = m_readOn[forward ? 1 : 0];
    QString &prepared = m_readOnText[forward ? 1 : 0];
    if (prepared != sql) {
        q = QSqlQuery(m_dbs.openReader(m_fileName, m_name));
        q.setForwardOnly(true);
        prepared.clear();
        if (!q.prepare(sql))
            throw Databases::errorFrom(q.lastError(), m_statement);
        prepared = sql;
    }
    key->bind(q, edge);
    if (!q.exec())
        throw Databases::errorFrom(q.lastError(), m_statement);
    std::vector<QSqlRecord> rows;
    rows.reserve(static_cast<size_t>(count));
    while (q.next())
        rows.push_back(q.record());
    q.finish();
    if (!forward)
        std::reverse(rows.begin(), rows.end());
    return rows;
}

int RecordSource::fetchedCount() const
{
    return static_cast<int>(m_window.rows.size() + m_previous.rows.size());
}

bool RecordSource::allFetched() const
{
    return !m_bound || (m_size >= 0 && std::max(m_window.end(), m_previous.end()) >= m_size);
}

bool RecordSource::hasRecords() const
{
    return m_bound && m_size != 0;
}

bool RecordSource::bof() const
{
    return !hasRecords() || m_pos < 0;
}

bool RecordSource::eof() const
{
    return !hasRecords() || (m_size >= 0 && m_pos >= m_size);
}

void RecordSource::moveFirst()
{
    m_onFound = false;
    m_pos = 0;
    if (hasRecords())
        hold(0, true);
}

void RecordSource::moveNext()
{
    m_onFound = false;
    if (eof())
        throw DbError::noCurrentRecord();
    // A read that fails leaves the cursor where it was.
    const long long next = m_pos + 1;
    const bool held = hold(next, true);
    m_pos = next;
    if (!held && m_size < 0)
        m_size = next;
}

void RecordSource::movePrevious()
{
    m_onFound = false;
    if (bof())
        throw DbError::noCurrentRecord();
    const long long before = m_pos - 1;
    if (before >= 0 && !hold(before, false)) {
        // Rows went away under the cursor (another user deleted them): it stands on the
        // nearest row read, or before the first.
        m_pos = m_window.rows.empty() ? -1 : m_window.end() - 1;
        return;
    }
    m_pos = before;
}

const QSqlRecord &RecordSource::current() const
{
    if (m_onFound)
        return m_found;
    if (bof() || eof() || !m_window.holds(m_pos))
        throw DbError::noCurrentRecord();
    return m_window.rows[static_cast<size_t>(m_pos - m_window.first)];
}

QSqlRecord &RecordSource::currentRow()
{
    return const_cast<QSqlRecord &>(current());
}

QVariant RecordSource::value(const QString &column) const
{
    const QSqlRecord &row = current();
    const int index = row.indexOf(column);
    if (index < 0)
        throw DbError(DbError::NoSuchColumn,
                      QStringLiteral("Item not found in this collection (%1).").arg(column));
    return row.value(index);
}

bool RecordSource::findFirst(const QString &criterion)
{
    if (!m_bound)
        throw DbError::noCurrentRecord();
    QSqlQuery q(m_dbs.openReader(m_fileName, m_name));
    q.setForwardOnly(true);
    const QString sql =
        QStringLiteral("select * from (%1) as searched where %2 limit 1")
            .arg(m_dbs.dialect().map(fullStatement()), m_dbs.dialect().mapCriterion(criterion));
    if (!q.exec(sql))
        throw Databases::errorFrom(q.lastError(), sql);
    if (!q.next())
        return false;
    m_found = q.record();
    m_onFound = true;
    return true;
}

void RecordSource::beginWrite(Commit commit)
{
    if (m_table.isEmpty())
        throw DbError(DbError::NotUpdatable, QStringLiteral("Database or object is read-only."));
    if (m_writing)
        return;
    // Like the desktop engine's Edit, this takes the write lock now: a record held by another
    // user fails here, not halfway through the update. Inside a caller's write transaction it
    // joins that one.
    m_dbs.beginWrite(m_fileName, commit == Commit::Light ? Databases::Commit::Light
                                                         : Databases::Commit::Durable);
    m_writing = true;
}

void RecordSource::endWrite(bool commit)
{
    if (!m_writing)
        return;
    m_writing = false;
    if (commit)
        m_dbs.commitWrite(m_fileName);
    else
        m_dbs.rollbackWrite(m_fileName);
}

void RecordSource::edit(Commit commit)
{
    const QSqlRecord &row = current();
    beginWrite(commit);
    m_buffer = row;
    m_editKey = row.value(m_keyColumn);
    lockEditedRow();
    m_changed.clear();
    m_mode = Mode::Edit;
}

void RecordSource::lockEditedRow()
{
    // An engine that locks rows rather than the file holds the edited row from now on.
    const QString sql = m_dbs.dialect().lockRow(m_table, m_keyColumn);
    if (sql.isEmpty())
        return;
    QSqlError failed;
    try {
        QSqlQuery &q = m_dbs.prepared(m_fileName, sql);
        q.bindValue(0, m_editKey);
        if (!q.exec())
            failed = q.lastError();
        q.finish();
    } catch (const DbError &) {
        endWrite(false);
        throw;
    }
    if (failed.isValid()) {
        const DbError error = Databases::errorFrom(failed, sql);
        endWrite(false);
        throw error;
    }
}

void RecordSource::addNew(Commit commit)
{
    beginWrite(commit);
    m_buffer = m_dbs.open(m_fileName).record(m_table);
    m_changed.clear();
    m_mode = Mode::Add;
}

void RecordSource::setValue(const QString &column, const QVariant &value)
{
    if (m_mode == Mode::None)
        throw DbError(3020, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    QVariant stored = value;
    if (Schema::isMoney(m_table, column) && !value.isNull())
        stored = Money::round4(value.toDouble());
    if (m_buffer.indexOf(column) < 0)
        m_buffer.append(QSqlField(column));
    m_buffer.setValue(column, stored);
    m_changed.insert(column);
}

void RecordSource::update()
{
    if (m_mode == Mode::None)
        throw DbError(3020, QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    const QStringList columns(m_changed.cbegin(), m_changed.cend());
    QString sql;
    if (m_mode == Mode::Edit) {
        QStringList sets;
        for (const QString &c : columns)
            sets << c + QStringLiteral(" = ?");
        if (sets.isEmpty()) {
            endWrite(true);
            m_mode = Mode::None;
            return;
        }
        sql = QStringLiteral("update %1 set %2 where %3 = ?")
                  .arg(m_table, sets.join(", "), m_keyColumn);
    } else {
        QStringList marks;
        for (qsizetype i = 0; i < columns.size(); ++i)
            marks << QStringLiteral("?");
        sql = QStringLiteral("insert into %1 (%2) values (%3)")
                  .arg(m_table, columns.join(", "), marks.join(", "));
    }
    beginWrite(Commit::Durable);
    QSqlError failed;
    try {
        QSqlQuery &q = m_dbs.prepared(m_fileName, sql);
        int mark = 0;
        for (const QString &c : columns)
            q.bindValue(mark++, m_buffer.value(c));
        if (m_mode == Mode::Edit)
            q.bindValue(mark, m_editKey);
        if (!q.exec())
            failed = q.lastError();
    } catch (const DbError &) {
        endWrite(false);
        throw;
    }
    if (failed.isValid()) {
        // A failed write lets go of the lock at once; the edit stays open for another try.
        const DbError error = Databases::errorFrom(failed, sql);
        endWrite(false);
        throw error;
    }
    endWrite(true);
    if (m_mode == Mode::Edit && (m_onFound || (!eof() && !bof()))) {
        QSqlRecord &row = currentRow();
        for (const QString &c : columns)
            if (row.indexOf(c) >= 0)
                row.setValue(c, m_buffer.value(c));
    }
    m_mode = Mode::None;
}

void RecordSource::updateAtOnce(const QList<QPair<QString, QVariant>> &values, Commit commit)
{
    if (m_table.isEmpty())
        throw DbError(DbError::NotUpdatable, QStringLiteral("Database or object is read-only."));
    const QVariant key = value(m_keyColumn);
    QStringList sets;
    for (const auto &[column, given] : values)
        sets << column + QStringLiteral(" = ?");
    const QString sql = QStringLiteral("update %1 set %2 where %3 = ?")
                            .arg(m_table, sets.join(QStringLiteral(", ")), m_keyColumn);
    const QString own = m_mode == Mode::None && !m_dbs.isWriting(m_fileName)
                            ? m_dbs.dialect().writtenOnItsOwn(sql, commit == Commit::Light)
                            : QString();
    if (own.isEmpty()) {
        RecordEdit edit(*this, RecordEdit::Start::Edit, commit);
        for (const auto &[column, given] : values)
            edit.setValue(column, given);
        edit.update();
        return;
    }
    QList<QVariant> stored;
    for (const auto &[column, given] : values)
        stored << (Schema::isMoney(m_table, column) && !given.isNull()
                       ? QVariant(Money::round4(given.toDouble()))
                       : given);
    // Nothing is written when the statement fails, so a connection the server ended can be
    // replaced and the statement tried once more.
    for (int attempt = 1;; ++attempt) {
        QSqlError failed;
        try {
            QSqlQuery &q = m_dbs.prepared(m_fileName, own);
            int mark = 0;
            for (const QVariant &given : std::as_const(stored))
                q.bindValue(mark++, given);
            q.bindValue(mark, key);
            if (!q.exec())
                failed = q.lastError();
            q.finish();
        } catch (const DbError &) {
            if (attempt > 1 || !m_dbs.renewIfGone(m_fileName))
                throw;
            continue;
        }
        if (!failed.isValid())
            break;
        if (attempt > 1 || !m_dbs.renewIfGone(m_fileName))
            throw Databases::errorFrom(failed, sql);
    }
    if (m_onFound || (!eof() && !bof())) {
        QSqlRecord &row = currentRow();
        for (qsizetype i = 0; i < values.size(); ++i)
            if (row.indexOf(values.at(i).first) >= 0)
                row.setValue(values.at(i).first, stored.at(i));
    }
}

void RecordSource::cancelUpdate()
{
    m_mode = Mode::None;
    m_changed.clear();
    try {
        endWrite(false);
    } catch (const DbError &) {
        m_writing = false; // the engine ended the transaction itself
    }
}

void RecordSource::deleteCurrent()
{
    const QVariant key = value(m_keyColumn);
    if (m_table.isEmpty())
        throw DbError(DbError::NotUpdatable, QStringLiteral("Database or object is read-only."));
    const QString sql = QStringLiteral("delete from %1 where %2 = ?").arg(m_table, m_keyColumn);
    cancelUpdate();
    WriteTransaction tx(m_dbs, m_fileName);
    QSqlQuery q(m_dbs.open(m_fileName));
    q.prepare(sql);
    q.addBindValue(key);
    if (!q.exec())
        throw Databases::errorFrom(q.lastError(), sql);
    tx.commit();
    if (m_onFound) {
        m_onFound = false;
        return;
    }
    const ResetNotice notice(m_observer);
    // The rows after the deleted one have moved up by one; the window left last is read again
    // when it is needed.
    m_previous = {};
    if (m_window.holds(m_pos))
        m_window.rows.erase(m_window.rows.begin() + (m_pos - m_window.first));
    if (m_size > 0)
        --m_size;
    if (!hold(m_pos, true) && m_size < 0)
        m_size = m_pos;
}

QSqlRecord RecordSource::reread() const
{
    const QVariant key = value(m_keyColumn);
    const QString sql = QStringLiteral("select * from %1 where %2 = ?").arg(m_table, m_keyColumn);
    QSqlQuery &q = m_dbs.prepared(m_fileName, sql);
    q.bindValue(0, key);
    if (!q.exec())
        throw Databases::errorFrom(q.lastError(), sql);
    const QSqlRecord row = q.next() ? q.record() : QSqlRecord();
    q.finish(); // the kept read holds nothing open until its next use
    return row;
}
