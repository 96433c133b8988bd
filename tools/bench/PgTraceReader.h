#pragma once

#include "StatementLog.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

// Reads what the PostgreSQL client library writes when a connection is traced (PQtrace): one
// record per protocol message, "time<TAB>F|B<TAB>length<TAB>type<TAB>contents". A statement
// sent as text is a Query record (its text raw, so its length is what says where it ends);
// each row of its answer is a DataRow record.
namespace PgTraceReader {

struct Query {
    QByteArray sentAt; // "YYYY-MM-DD HH:MM:SS.uuuuuu", orders the statements of several traces
    QString text;
    int rows = 0;
};

// The statements sent in the trace, in order, each with the rows that came back for it.
std::vector<Query> queries(const QByteArray &trace);

// What a statement the driver sent does: "PREPARE name AS text" (name and text), "EXECUTE name"
// or "EXECUTE name (values)" (name and the values as text), "DEALLOCATE name"; anything else
// is Plain (its text as it is).
struct Command {
    RanStatement::Kind kind = RanStatement::Kind::Plain;
    QString name;
    QString text;
    QStringList values;
};
Command command(const QString &statement);

// The values of an EXECUTE's list as the driver writes them (quoted texts with '' for a
// quote, an optional type before or a cast after, numbers, TRUE and FALSE, NULL), each as the
// server reads it in text form; NULL is a null QString.
QStringList values(const QString &list);

} // namespace PgTraceReader
