#include "AccountRows.h"

#include "PickerIndex.h"

#include "data/Connection.h"
#include "data/DbError.h"

#include <QSqlError>
#include <QSqlQuery>

namespace AccountRows {

QList<PickerColumn> columns()
{
    using K = PickerColumn::Kind;
    using S = PickerColumn::Search;
    return {{QStringLiteral("Account"), K::Number, S::Start},
            {QStringLiteral("Name"), K::Text, S::Words},
            {QStringLiteral("Statement description"), K::Text, S::Words},
            {QStringLiteral("Type"), K::Number, S::No}};
}

void load(PickerIndex &index, const QString &folder)
{
    const Connection gl = Connection::readOnly(folder, QStringLiteral("gl.mdb"));
    QSqlQuery accounts(gl.db());
    accounts.setForwardOnly(true);
    if (!accounts.exec(
            QStringLiteral("select glacctnum, glacctname, glstatementdesc, glaccttype from gl0")))
        throw DbError(DbError::Generic, accounts.lastError().text());
    while (accounts.next())
        index.add({accounts.value(0), accounts.value(1), accounts.value(2), accounts.value(3)});
}

} // namespace AccountRows
