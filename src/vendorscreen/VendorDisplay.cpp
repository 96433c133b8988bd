#include "vendorscreen/VendorDisplay.h"

#include "common/Dialogs.h"
#include "common/ErrorReport.h"
#include "common/Numbers.h"
#include "data/DbError.h"
#include "data/RecordEdit.h"
#include "data/RecordSource.h"
#include "lists/CurrentVendor.h"
#include "vendorscreen/Form1099Type.h"
#include "vendorscreen/VendorFieldBoxes.h"

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
    return Form1099Type::name(code);
}

bool VendorDisplay::showCurrent()
{
    return show(false);
}

bool VendorDisplay::showAgain()
{
    return show(true);
}

bool VendorDisplay::show(bool fresh)
{
    try {
        fill(fresh);
    } catch (const DbError &error) {
        if (error.code() == DbError::NoCurrentRecord) {
            m_dialogs.message(QStringLiteral("No record to display"), Dialogs::Icon::Information);
            emit noRecord();
        } else {
            showErrorReport(m_dialogs, error);
        }
        return false;
    }
    if (fresh)
        m_current.shownAgain();
    else
        m_current.shown();
    return true;
}

// The totals computed for the vendor shown before are written into this one first; the stored
// columns lag one display behind, as they always have. They are derived totals, written again
// by the next display or save: no need to wait for the disk.
void VendorDisplay::stampTotals()
{
    // Another user writing to the file (a pass over every vendor, say) does not stop the
    // display: these totals are written again by the next display or save.
    try {
        RecordEdit stamp(m_vendors, RecordEdit::Start::Edit, RecordSource::Commit::Light);
        stamp.setValue(QStringLiteral("vendbalcurrent"), m_totals.openTotal());
        stamp.setValue(QStringLiteral("vendbal60"), m_totals.yearTotal());
        stamp.update();
    } catch (const DbError &error) {
        if (error.code() != DbError::RecordLocked)
            throw;
    }
}

void VendorDisplay::fill(bool fresh)
{
    m_fields.blank();
    stampTotals();
    QCoreApplication::processEvents();

    // The rows the source holds were read before the pass; the database has the new values.
    const QSqlRecord row = fresh ? m_vendors.reread() : m_vendors.current();
    if (row.isEmpty())
        throw DbError(DbError::NoCurrentRecord, QStringLiteral("No current record."));
    m_current.setRow(row);
    m_fields.setText(VendorField::Number, row.value(0).toString());
    m_totals.compute();

    if (row.value(QStringLiteral("vendname")).isNull())
        throw DbError(94, QStringLiteral("Invalid use of Null (vendname)."));
    using S = VendorFieldInfo::Shown;
    for (const VendorFieldInfo &info : VendorFields::all()) {
        const QVariant value = row.value(QString::fromLatin1(info.column));
        switch (info.shown) {
        case S::FirstColumn:
            break; // shown before the totals were computed for it
        case S::AsStored:
            m_fields.setText(info.field, value.toString());
            break;
        case S::AsMoney:
            m_fields.setText(info.field, money(value.toDouble()));
            break;
        case S::OpenTotal:
            m_fields.setText(info.field, money(m_totals.openTotal()));
            break;
        case S::YearTotal:
            m_fields.setText(info.field, money(m_totals.yearTotal()));
            break;
        }
    }

    // A 1099 type that is not a valid code is shown, and later saved, as "0".
    static const QRegularExpression plainNumber(QStringLiteral(R"(^\s*-?\d+(\.\d+)?\s*$)"));
    const QString type = m_fields.text(VendorField::Form1099);
    if (!plainNumber.match(type).hasMatch() ||
        form1099Name(static_cast<int>(Numbers::leading(type))).isEmpty())
        m_fields.setText(VendorField::Form1099, QStringLiteral("0"));
    QCoreApplication::processEvents();
}
