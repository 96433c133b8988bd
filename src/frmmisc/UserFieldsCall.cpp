#include "frmmisc/UserFieldsCall.h"

#include "common/Numbers.h"

QString UserFieldsCall::databaseFile() const
{
    switch (kind) {
    case Kind::Employee:
        return QStringLiteral("emp.mdb");
    case Kind::Member:
        return QStringLiteral("master.mdb");
    case Kind::Vendor:
        return QStringLiteral("ap.mdb");
    case Kind::None:
        break;
    }
    return {};
}

QString UserFieldsCall::reportLayout() const
{
    switch (kind) {
    case Kind::Employee:
        return QStringLiteral("miscinfo1e.rpt");
    case Kind::Member:
        return QStringLiteral("miscinfo1m.rpt");
    case Kind::Vendor:
        return QStringLiteral("miscinfo1v.rpt");
    case Kind::None:
        break;
    }
    return {};
}

UserFieldsCall UserFieldsCall::parse(const QString &callingCode)
{
    UserFieldsCall call;
    call.code = callingCode.left(3);
    const QString letters = call.code.toUpper();
    if (letters == QLatin1String("EDT"))
        call.kind = Kind::Employee;
    else if (letters == QLatin1String("DEF") || letters == QLatin1String("ABC"))
        call.kind = Kind::Member;
    else if (letters == QLatin1String("DOR") || letters == QLatin1String("VEN"))
        call.kind = Kind::Vendor;
    QString number = callingCode.mid(3);
    if (number.startsWith(QLatin1Char('~')))
        number.remove(0, 1);
    // Written into statements as a number, never as the text that came in.
    call.account = Numbers::leadingWhole(number);
    return call;
}
