#include "yearend/YearEndReport.h"

#include "yearend/PayerRecord.h"
#include "yearend/TaxIds.h"
#include "yearend/TaxThresholds.h"

#include <QLocale>

namespace {

QString money(double amount)
{
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(amount, 'f', 2);
}

} // namespace

namespace YearEndReport {

QString text(const YearEndCheck::Result &result, const PayerRecord &payer)
{
    QString out;
    out += QStringLiteral("Year-end check: %1, tax year %2, threshold %3 or more\n")
               .arg(TaxForms::title(result.form))
               .arg(result.year)
               .arg(TaxThresholds::dollars(result.threshold));
    out += QStringLiteral("Payer: %1, federal id %2\n\n")
               .arg(payer.name.isEmpty() ? QStringLiteral("(no company name)") : payer.name,
                    payer.federalId.isEmpty() ? QStringLiteral("(none)") : payer.federalId);
    double total = 0;
    out += QStringLiteral("Vendors that get the form: %1\n").arg(result.recipients.size());
    // Joined, not formatted with arg(): a name may hold "%1".
    auto line = [](const QString &vendor, const QString &name, const QString &id,
                   const QString &amount) {
        return vendor.rightJustified(6) + QStringLiteral("  ") + name.leftJustified(34, ' ', true) +
               QStringLiteral("  ") + id.leftJustified(11, ' ', true) + QStringLiteral("  ") +
               amount.rightJustified(14) + QLatin1Char('\n');
    };
    out += line(QStringLiteral("Vendor"), QStringLiteral("Name"), QStringLiteral("Tax id"),
                QStringLiteral("Amount"));
    for (const YearEndCheck::Recipient &r : result.recipients) {
        out += line(QString::number(r.vendor), r.name, r.taxId, money(r.amount));
        total += r.amount;
    }
    out += QStringLiteral("Total").leftJustified(55) + QStringLiteral("  ") +
           money(total).rightJustified(14) + QStringLiteral("\n\n");
    out += QStringLiteral("Problems: %1\n").arg(result.problems.size());
    for (const YearEndCheck::Problem &p : result.problems)
        out += QString::number(p.vendor).rightJustified(6) + QStringLiteral("  ") + p.name +
               QStringLiteral(": ") + p.text + QLatin1Char('\n');
    if (result.problems.empty())
        out += QStringLiteral("None found.\n");
    return out;
}

} // namespace YearEndReport
