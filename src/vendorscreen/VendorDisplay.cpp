#include "vendorscreen/VendorDisplay.h"

#include "common/Services.h"
#include "common/Dialogs.h"
#include "common/ErrorReport.h"
#include "common/Numbers.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "lists/OpenInvoiceTotals.h"
#include "vendorscreen/ScreenModes.h"
#include "vendorscreen/VendorWindow.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSqlRecord>

QString VendorDisplay::money(double value)
{
    return QString::number(value, 'f', 2);
}

QString VendorDisplay::form1099Name(int code)
{
    switch (code) {
    case 0:
        return QStringLiteral("None");
    case 1:
        return QStringLiteral("1099-MISC");
    case 2:
        return QStringLiteral("1099-INT");
    case 3:
        return QStringLiteral("1099-DIV");
    case 5:
        return QStringLiteral("1099-NEC");
    default:
        return {};
    }
}

bool VendorDisplay::showCurrent()
{
    try {
        fill();
        return true;
    } catch (const DbError &error) {
        if (error.code() == DbError::NoCurrentRecord) {
            m_window.services().dialogs.message(QStringLiteral("No record to display"),
                                                Dialogs::Icon::Information);
            m_window.modes().cancel();
        } else {
            showErrorReport(m_window.services().dialogs, error);
        }
        return false;
    }
}

void VendorDisplay::fill()
{
    RecordSource &source = m_window.datavendor();
    const auto &field = m_window.controls().Text1;
    ScreenState &state = m_window.state();
    m_window.blankFields();

    // The totals computed for the vendor shown before are written into this one first; the
    // stored columns lag one display behind, as they always have.
    // Derived totals, written again by the next display or save: no need to wait for the disk.
    source.edit(RecordSource::Commit::Light);
    source.setValue(QStringLiteral("vendbalcurrent"), state.openTotal);
    source.setValue(QStringLiteral("vendbal60"), state.yearTotal);
    source.update();
    QCoreApplication::processEvents();

    const QSqlRecord row = source.current();
    state.recalled = row;
    auto text = [&row](const char *column) {
        return row.value(QString::fromLatin1(column)).toString();
    };
    field[0]->setText(row.value(0).toString());
    m_window.totals().compute();

    const QVariant name = row.value(QStringLiteral("vendname"));
    if (name.isNull())
        throw DbError(94, QStringLiteral("Invalid use of Null (vendname)."));
    field[1]->setText(name.toString());
    const char *columns[] = {"vendaddr1", "vendaddr2",    "vendcity",  "vendstate",
                             "vendzip",   "vendphone",    "vendfax",   "vendcontact",
                             "vendtaxid", "vend1099type", "vendglacct"};
    for (int i = 2; i <= 12; ++i)
        field[i]->setText(text(columns[i - 2]));
    field[13]->setText(money(row.value(QStringLiteral("vendytd")).toDouble()));
    field[14]->setText(money(state.openTotal));
    field[15]->setText(money(state.yearTotal));
    const char *later[] = {"vendbal90",  "vendterms",     "vendacct",       "email",
                           "cell_other", "vcontact2name", "vcontact2email", "vcontact2phone"};
    for (int i = 16; i <= 23; ++i)
        field[i]->setText(text(later[i - 16]));

    // A 1099 type that is not a valid code is shown, and later saved, as "0".
    static const QRegularExpression plainNumber(QStringLiteral(R"(^\s*-?\d+(\.\d+)?\s*$)"));
    const QString type = field[11]->text();
    if (!plainNumber.match(type).hasMatch() ||
        form1099Name(static_cast<int>(Numbers::leading(type))).isEmpty())
        field[11]->setText(QStringLiteral("0"));
    QCoreApplication::processEvents();
}
