#pragma once

#include <QString>
#include <QVariant>
#include <QVariantList>

#include <functional>

// A record selection formula ("{invoices.vendnumber} = 12 and {invoices.invstatus} >= 1")
// turned into an SQL condition. Field references become column names checked against the
// report's tables; numbers and texts become bound values, so that nothing of the formula's text
// reaches the statement's text.
struct SqlCondition {
    QString sql;         // "(\"t0\".\"vendnumber\" = ?) AND ..."
    QVariantList values; // the bound values, in order
};

// Answers a field reference: the column as the statement names it, or an error text
// ("There is no table vendorz in this report").
struct FieldAnswer {
    QString sql;
    QString error;
};
using FieldResolver = std::function<FieldAnswer(const QString &table, const QString &field)>;

class SelectionFormula {
public:
    // Parses the whole formula. A NumberedError (ReportFailure) names its position (from 1) in
    // the formula.
    static SqlCondition parse(const QString &formula, const FieldResolver &fields);

    // A sort field: "+" or "-" and one field reference. Gives "col ASC" / "col DESC".
    static QString sortField(const QString &text, const FieldResolver &fields);
};
