#include "yearend/TaxForms.h"

namespace TaxForms {

QString title(TaxForm form)
{
    switch (form) {
    case TaxForm::Misc:
        return QStringLiteral("1099-MISC");
    case TaxForm::Interest:
        return QStringLiteral("1099-INT");
    case TaxForm::Dividends:
        return QStringLiteral("1099-DIV");
    case TaxForm::Nonemployee:
        return QStringLiteral("1099-NEC");
    }
    return {};
}

std::optional<TaxForm> fromName(const QString &name)
{
    const QString upper = name.trimmed().toUpper();
    if (upper == QLatin1String("MISC"))
        return TaxForm::Misc;
    if (upper == QLatin1String("INT"))
        return TaxForm::Interest;
    if (upper == QLatin1String("DIV"))
        return TaxForm::Dividends;
    if (upper == QLatin1String("NEC"))
        return TaxForm::Nonemployee;
    return std::nullopt;
}

bool issuedFor(TaxForm form, int vendorType)
{
    if (form == TaxForm::Misc)
        return vendorType == 1 || vendorType == 4;
    return vendorType == static_cast<int>(form);
}

bool knownType(int vendorType)
{
    return vendorType >= 0 && vendorType <= 5;
}

} // namespace TaxForms
