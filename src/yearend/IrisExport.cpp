#include "yearend/IrisExport.h"

#include "yearend/IrisTemplates.h"
#include "yearend/PayerRecord.h"
#include "yearend/TaxIds.h"

#include <QFileInfo>

namespace {

using IrisTemplates::Field;

QString tinType(const QString &taxId)
{
    switch (TaxIds::kindOf(taxId)) {
    case TaxIds::Kind::Ssn:
        return QStringLiteral("SSN");
    case TaxIds::Kind::Ein:
        return QStringLiteral("EIN");
    case TaxIds::Kind::Unknown:
        break;
    }
    return {};
}

QString amount(double value)
{
    return QString::number(value, 'f', 2);
}

QString value(Field field, const YearEndCheck::Result &result, const PayerRecord &payer,
              const YearEndCheck::Recipient &r)
{
    switch (field) {
    case Field::TaxYear:
        return QString::number(result.year);
    case Field::PayerTinType:
        return tinType(payer.federalId);
    case Field::PayerTin:
        return TaxIds::digits(payer.federalId);
    case Field::PayerName:
        return payer.name;
    case Field::PayerAddress1:
        return payer.address1;
    case Field::PayerAddress2:
        return payer.address2;
    case Field::PayerCity:
        return payer.city;
    case Field::PayerState:
        return payer.state;
    case Field::PayerZip:
        return payer.zip;
    case Field::RecipientTinType:
        return tinType(r.taxId);
    case Field::RecipientTin:
        return TaxIds::digits(r.taxId);
    case Field::RecipientName:
        return r.name;
    case Field::RecipientAddress1:
        return r.address1;
    case Field::RecipientAddress2:
        return r.address2;
    case Field::RecipientCity:
        return r.city;
    case Field::RecipientState:
        return r.state.toUpper();
    case Field::RecipientZip:
        return r.zip;
    case Field::AccountNumber:
        return QString::number(r.vendor);
    case Field::NonemployeeCompensation:
        return amount(r.amount);
    case Field::Rents:
        return r.type == 1 ? amount(r.amount) : QString();
    case Field::OtherIncome:
        return r.type == 4 ? amount(r.amount) : QString();
    }
    return {};
}

} // namespace

namespace IrisExport {

QString csvField(const QString &value)
{
    if (!value.contains(QLatin1Char(',')) && !value.contains(QLatin1Char('"')) &&
        !value.contains(QLatin1Char('\n')) && !value.contains(QLatin1Char('\r')))
        return value;
    QString quoted = value;
    quoted.replace(QLatin1String("\""), QLatin1String("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

QStringList refusals(const YearEndCheck::Result &result, const PayerRecord &payer)
{
    QStringList why;
    if (!IrisTemplates::find(result.form, result.year)) {
        why << QStringLiteral("There is no IRIS upload layout for the %1 of tax year %2 in this "
                              "program (it has the 1099-NEC and 1099-MISC from 2026 on).")
                   .arg(TaxForms::title(result.form))
                   .arg(result.year);
        return why;
    }
    return taxIdRefusals(result, payer);
}

QStringList taxIdRefusals(const YearEndCheck::Result &result, const PayerRecord &payer)
{
    QStringList why;
    if (payer.federalId.isEmpty())
        why << QStringLiteral("The company record has no federal id: enter the company's "
                              "employer identification number (compfederalid in config.mdb).");
    else if (TaxIds::fault(payer.federalId) != TaxIds::Fault::None)
        why << QStringLiteral("The company record's federal id cannot be filed: ") +
                   TaxIds::explain(TaxIds::fault(payer.federalId), payer.federalId) +
                   QLatin1Char('.');
    for (const YearEndCheck::Recipient &r : result.recipients) {
        const TaxIds::Fault fault = TaxIds::fault(r.taxId);
        if (fault != TaxIds::Fault::None)
            why << QStringLiteral("Vendor %1 (%2): ").arg(r.vendor).arg(r.name) +
                       TaxIds::explain(fault, r.taxId) + QLatin1Char('.');
    }
    return why;
}

QStringList files(const YearEndCheck::Result &result, const PayerRecord &payer)
{
    const IrisTemplates::Template *layout = IrisTemplates::find(result.form, result.year);
    if (!layout)
        return {};
    QStringList headers;
    for (const IrisTemplates::Column &column : layout->columns)
        headers << csvField(QString::fromUtf8(column.header));
    const QString headerRow = headers.join(QLatin1Char(',')) + QStringLiteral("\r\n");
    QStringList out;
    const int limit = IrisTemplates::rowLimit();
    for (size_t n = 0; n < result.recipients.size(); ++n) {
        if (n % static_cast<size_t>(limit) == 0)
            out << headerRow;
        QStringList fields;
        for (const IrisTemplates::Column &column : layout->columns)
            fields << csvField(value(column.field, result, payer, result.recipients[n]));
        out.last() += fields.join(QLatin1Char(',')) + QStringLiteral("\r\n");
    }
    return out;
}

QStringList fileNames(const QString &path, int count)
{
    if (count <= 1)
        return {path};
    const QFileInfo info(path);
    const QString suffix = info.suffix();
    QString stem = path;
    if (!suffix.isEmpty())
        stem.chop(suffix.size() + 1);
    QStringList names;
    for (int n = 1; n <= count; ++n)
        names << stem + QStringLiteral("-%1").arg(n) +
                     (suffix.isEmpty() ? QString() : QLatin1Char('.') + suffix);
    return names;
}

QString defaultPath(TaxForm form, int taxYear)
{
    return QStringLiteral("iris-%1-%2.csv").arg(TaxForms::title(form).toLower()).arg(taxYear);
}

} // namespace IrisExport
