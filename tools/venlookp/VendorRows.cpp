#include "VendorRows.h"

#include "PickerIndex.h"

#include "data/Connection.h"
#include "data/DbError.h"
#include "data/Money.h"

#include <QHash>
#include <QSqlError>
#include <QSqlQuery>

namespace {

QSqlQuery read(const Connection &connection, const QString &statement)
{
    QSqlQuery query(connection.db());
    query.setForwardOnly(true);
    if (!query.exec(statement))
        throw DbError(DbError::Generic, query.lastError().text());
    return query;
}

} // namespace

namespace VendorRows {

QList<PickerColumn> columns()
{
    using K = PickerColumn::Kind;
    using S = PickerColumn::Search;
    return {{QStringLiteral("Vendor #"), K::Number, S::Start},
            {QStringLiteral("Name"), K::Text, S::Words},
            {QStringLiteral("Contact"), K::Text, S::Words},
            {QStringLiteral("City"), K::Text, S::Words},
            {QStringLiteral("Telephone"), K::Text, S::WordsAndDigits},
            {QStringLiteral("Open balance"), K::Money, S::No}};
}

void load(PickerIndex &index, const QString &folder)
{
    const Connection ap = Connection::readOnly(folder, QStringLiteral("ap.mdb"));
    // One pass over the unpaid invoices (an index of their own) rather than one sum per vendor.
    QHash<qint64, double> open;
    QSqlQuery sums = read(ap, QStringLiteral("select vendnumber, sum(invamount) from invoices "
                                             "where invstatus > 0 and invstatus < 4 "
                                             "group by vendnumber"));
    while (sums.next())
        open.insert(sums.value(0).toLongLong(), Money::fromSum(sums.value(1)));
    sums.finish();
    QSqlQuery vendors = read(ap, QStringLiteral("select vendnumber, vendname, vendcontact, "
                                                "vendcity, vendphone from vendors"));
    while (vendors.next()) {
        const qint64 number = vendors.value(0).toLongLong();
        index.add({number, vendors.value(1), vendors.value(2), vendors.value(3), vendors.value(4),
                   open.value(number, 0.0)});
    }
}

} // namespace VendorRows
