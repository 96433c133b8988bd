#pragma once

#include <QString>

// Where the clauses of a select statement begin, at its top level only: outside quoted text,
// quoted names and parentheses. -1 for a clause that is not there.
struct StatementClauses {
    qsizetype from = -1;
    qsizetype where = -1;
    qsizetype order = -1; // "order" of "order by"
    // group, having, limit, union, intersect, except or distinct: a statement to be read whole
    bool other = false;

    static StatementClauses of(const QString &sql);
};

// The statement without surrounding blanks and without a closing semicolon.
QString bareStatement(const QString &sql);
