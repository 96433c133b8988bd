#include "yearend/PayerRecord.h"

#include "data/Databases.h"

#include <QSqlQuery>
#include <QSqlRecord>

PayerRecord PayerRecord::read(Databases &databases)
{
    const QString file = QStringLiteral("config.mdb");
    const ScopedDatabase config(databases, file);
    QSqlQuery q = databases.select(file, QStringLiteral("select * from company"));
    const QSqlRecord row = q.next() ? q.record() : QSqlRecord();
    q.finish();
    auto upper = [&row](const char *column) {
        return row.value(QString::fromLatin1(column)).toString().trimmed().toUpper();
    };
    PayerRecord payer;
    payer.name = upper("compname");
    payer.address1 = upper("compaddr1");
    payer.address2 = upper("compaddr2");
    payer.city = upper("compcity");
    payer.state = upper("compstate");
    payer.zip = upper("compzip");
    payer.federalId = upper("compfederalid");
    return payer;
}
