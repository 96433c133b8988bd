#pragma once

#include <QString>

// What differs between the engines: the module writes its statements in the desktop engine's
// dialect, and a few of them have to be said differently to SQLite or PostgreSQL.
class Dialect {
public:
    virtual ~Dialect() = default;
    virtual QString name() const = 0;
    // The statement as this engine accepts it, with the same rows in the same order.
    virtual QString map(const QString &statement) const = 0;
    // A search criterion (the condition of a find-first) as this engine accepts it. Beyond
    // map(), a date column compared with an empty text finds the rows without a date.
    QString mapCriterion(const QString &criterion) const;
};

class SqliteDialect : public Dialect {
public:
    QString name() const override { return QStringLiteral("SQLite"); }
    QString map(const QString &statement) const override;
};
