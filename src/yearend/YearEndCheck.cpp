#include "yearend/YearEndCheck.h"

#include "data/Databases.h"
#include "yearend/TaxIds.h"
#include "yearend/TaxThresholds.h"

#include <QLocale>
#include <QRegularExpression>
#include <QSet>
#include <QSqlQuery>

#include <algorithm>

namespace {

QString money(double amount)
{
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(amount, 'f', 2);
}

struct Row {
    YearEndCheck::Recipient vendor;
};

} // namespace

bool YearEndCheck::usAddress(const QString &state, const QString &zip)
{
    static const QSet<QString> states = [] {
        const char *codes[] = {"AL", "AK", "AZ", "AR", "CA", "CO", "CT", "DE", "FL", "GA",
                               "HI", "ID", "IL", "IN", "IA", "KS", "KY", "LA", "ME", "MD",
                               "MA", "MI", "MN", "MS", "MO", "MT", "NE", "NV", "NH", "NJ",
                               "NM", "NY", "NC", "ND", "OH", "OK", "OR", "PA", "RI", "SC",
                               "SD", "TN", "TX", "UT", "VT", "VA", "WA", "WV", "WI", "WY",
                               "DC", "PR", "GU", "VI", "AS", "MP", "AA", "AE", "AP"};
        QSet<QString> set;
        for (const char *code : codes)
            set.insert(QString::fromLatin1(code));
        return set;
    }();
    static const QRegularExpression usZip(QStringLiteral("^[0-9]{5}(-?[0-9]{4})?$"));
    return states.contains(state.trimmed().toUpper()) && usZip.match(zip.trimmed()).hasMatch();
}

YearEndCheck::Result YearEndCheck::run(TaxForm form, int taxYear, const QMap<int, double> &indexed)
{
    Result result;
    result.form = form;
    result.year = taxYear;
    result.threshold = TaxThresholds::legal(form, taxYear, indexed);

    const QString file = QStringLiteral("ap.mdb");
    std::vector<Row> rows;
    {
        QSqlQuery q = m_databases.select(
            file, QStringLiteral("select vendnumber, vendname, vendaddr1, vendaddr2, vendcity, "
                                 "vendstate, vendzip, vendtaxid, vend1099type, vendytd from "
                                 "vendors order by vendnumber"));
        while (q.next()) {
            Row row;
            Recipient &v = row.vendor;
            v.vendor = q.value(0).toLongLong();
            v.name = q.value(1).toString().trimmed();
            v.address1 = q.value(2).toString().trimmed();
            v.address2 = q.value(3).toString().trimmed();
            v.city = q.value(4).toString().trimmed();
            v.state = q.value(5).toString().trimmed();
            v.zip = q.value(6).toString().trimmed();
            v.taxId = q.value(7).toString().trimmed();
            v.type = q.value(8).toInt();
            v.amount = q.value(9).toDouble();
            rows.push_back(std::move(row));
        }
        q.finish();
    }

    QMultiHash<QString, const Recipient *> byTaxId;
    for (const Row &row : rows)
        if (!row.vendor.taxId.isEmpty())
            byTaxId.insert(TaxIds::digits(row.vendor.taxId), &row.vendor);

    auto problem = [&result](const Recipient &v, Rule rule, const QString &text) {
        result.problems.push_back(Problem{v.vendor, v.name, rule, text});
    };
    const bool necOrMisc = form == TaxForm::Nonemployee || form == TaxForm::Misc;
    for (const Row &row : rows) {
        const Recipient &v = row.vendor;
        const bool reaches = TaxThresholds::reaches(v.amount, form, taxYear, indexed);
        if (!TaxForms::knownType(v.type))
            problem(v, Rule::UnknownType,
                    QStringLiteral("the 1099 type %1 is none of the known kinds (0 None, 1 MISC, "
                                   "2 INT, 3 DIV, 4 MISC, 5 NEC)")
                        .arg(v.type));
        if (necOrMisc && v.type == 0 && reaches)
            problem(v, Rule::TypeNone,
                    QStringLiteral("paid %1, at or over the %2 threshold of the %3, but its 1099 "
                                   "type is None")
                        .arg(money(v.amount), TaxThresholds::dollars(result.threshold),
                             TaxForms::title(form)));
        if (!TaxForms::issuedFor(form, v.type) || !reaches)
            continue;
        result.recipients.push_back(v);
        const TaxIds::Fault fault = TaxIds::fault(v.taxId);
        if (fault != TaxIds::Fault::None)
            problem(v, Rule::TaxId, TaxIds::explain(fault, v.taxId));
        if (v.name.isEmpty())
            problem(v, Rule::Name, QStringLiteral("no name"));
        QStringList missing;
        if (v.address1.isEmpty() && v.address2.isEmpty())
            missing << QStringLiteral("street");
        if (v.city.isEmpty())
            missing << QStringLiteral("city");
        if (v.state.isEmpty())
            missing << QStringLiteral("state");
        if (v.zip.isEmpty())
            missing << QStringLiteral("ZIP");
        if (!missing.isEmpty())
            problem(
                v, Rule::Address,
                QStringLiteral("the address has no %1").arg(missing.join(QStringLiteral(", "))));
        else if (!usAddress(v.state, v.zip))
            problem(
                v, Rule::Foreign,
                QStringLiteral("not a US address (state \"%1\", ZIP \"%2\")").arg(v.state, v.zip));
        if (!v.taxId.isEmpty()) {
            QList<const Recipient *> same = byTaxId.values(TaxIds::digits(v.taxId));
            std::sort(same.begin(), same.end(),
                      [](const Recipient *a, const Recipient *b) { return a->vendor < b->vendor; });
            for (const Recipient *other : same)
                if (other->vendor != v.vendor)
                    problem(v, Rule::DuplicateId,
                            QStringLiteral("the same tax id as vendor %1 (%2)")
                                .arg(other->vendor)
                                .arg(other->name));
        }
    }
    std::stable_sort(result.problems.begin(), result.problems.end(),
                     [](const Problem &a, const Problem &b) { return a.vendor < b.vendor; });
    return result;
}
