#include "yearend/TaxIds.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

// The first two digits of an EIN that the IRS has never assigned.
constexpr int impossibleEinPrefixes[] = {0,  7,  8,  9,  17, 18, 19, 28, 29,
                                         49, 69, 70, 78, 79, 89, 96, 97};

bool nineDigits(const QString &text)
{
    static const QRegularExpression nine(QStringLiteral("^[0-9]{9}$"));
    return nine.match(text).hasMatch();
}

} // namespace

namespace TaxIds {

Kind kindOf(const QString &taxId)
{
    static const QRegularExpression ssn(QStringLiteral("^[0-9]{3}-[0-9]{2}-[0-9]{4}$"));
    static const QRegularExpression ein(QStringLiteral("^[0-9]{2}-[0-9]{7}$"));
    const QString id = taxId.trimmed();
    if (ssn.match(id).hasMatch())
        return Kind::Ssn;
    if (ein.match(id).hasMatch())
        return Kind::Ein;
    return Kind::Unknown;
}

QString digits(const QString &taxId)
{
    return taxId.trimmed().remove(QLatin1Char('-'));
}

Fault fault(const QString &taxId)
{
    const QString number = digits(taxId);
    if (taxId.trimmed().isEmpty())
        return Fault::Missing;
    if (!nineDigits(number))
        return Fault::NotNineDigits;
    switch (kindOf(taxId)) {
    case Kind::Ssn: {
        const int area = number.left(3).toInt();
        if (area == 0 || area == 666 || area >= 900 || number.mid(3, 2) == QLatin1String("00") ||
            number.right(4) == QLatin1String("0000"))
            return Fault::ImpossibleSsn;
        return Fault::None;
    }
    case Kind::Ein: {
        const int prefix = number.left(2).toInt();
        if (std::find(std::begin(impossibleEinPrefixes), std::end(impossibleEinPrefixes), prefix) !=
            std::end(impossibleEinPrefixes))
            return Fault::ImpossibleEin;
        return Fault::None;
    }
    case Kind::Unknown:
        break;
    }
    return Fault::KindUnknown;
}

QString explain(Fault fault, const QString &taxId)
{
    const QString id = taxId.trimmed();
    switch (fault) {
    case Fault::None:
        return {};
    case Fault::Missing:
        return QStringLiteral("no tax id");
    case Fault::NotNineDigits:
        return QStringLiteral("the tax id \"%1\" is not 9 digits").arg(id);
    case Fault::ImpossibleSsn:
        return QStringLiteral("the tax id %1 cannot be a social security number (area 000, 666 "
                              "or 900-999, group 00 and serial 0000 are never issued)")
            .arg(id);
    case Fault::ImpossibleEin:
        return QStringLiteral("the tax id %1 cannot be an employer identification number (the "
                              "IRS never assigns the prefix %2)")
            .arg(id, digits(id).left(2));
    case Fault::KindUnknown:
        return QStringLiteral("the tax id %1 does not show whether it is a social security "
                              "number (###-##-####) or an employer identification number "
                              "(##-#######)")
            .arg(id);
    }
    return {};
}

QString masked(const QString &taxId)
{
    const QString last4 = digits(taxId).right(4);
    switch (kindOf(taxId)) {
    case Kind::Ssn:
        return QStringLiteral("***-**-") + last4;
    case Kind::Ein:
        return QStringLiteral("**-***") + last4;
    case Kind::Unknown:
        break;
    }
    return QStringLiteral("*****") + last4;
}

} // namespace TaxIds
