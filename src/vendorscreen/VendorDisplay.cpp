#include "vendorscreen/VendorDisplay.h"

#include "common/Dialogs.h"
#include "common/ErrorReport.h"
#include "common/Numbers.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "lists/CurrentVendor.h"
#include "vendorscreen/Form1099Type.h"
#include "vendorscreen/VendorFieldBoxes.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSqlRecord>

#include <array>
#include <vector>

namespace {
// Beyond this the user would see the screen wait: the fields are shown blank meanwhile.
constexpr qint64 frameMsecs = 16;

// The texts the display is putting into the fields, blank until filled. The fields take them in
// one pass, so that each field is painted once, with its new text, instead of blank and then
// filled; a field that keeps its text is not painted at all. Whatever happens, the fields end
// up as the texts set so far say: a display that fails leaves them blank (the vendor number
// only, once it was read).
class FieldTexts {
public:
    explicit FieldTexts(const VendorFieldBoxes &fields) : m_fields(fields) {}
    ~FieldTexts() { show(); }
    FieldTexts(const FieldTexts &) = delete;
    FieldTexts &operator=(const FieldTexts &) = delete;

    void set(VendorField field, const QString &text) { m_texts[at(field)] = text; }
    QString text(VendorField field) const { return m_texts[at(field)]; }
    // Puts the text into its field at once, for what reads the field meanwhile; the field is
    // painted with the others.
    void setNow(VendorField field, const QString &text)
    {
        set(field, text);
        QLineEdit *box = m_fields.box(field);
        if (box->text() == text)
            return;
        box->setUpdatesEnabled(false);
        m_held.push_back(box);
        m_fields.setText(field, text);
    }
    // Every field takes its text; the fields that change are painted when the screen next
    // yields.
    void show()
    {
        for (const VendorFieldInfo &info : VendorFields::all()) {
            const QString &text = m_texts[at(info.field)];
            const QLineEdit *box = m_fields.box(info.field);
            // A text scrolled or selected by the user is shown from its start again.
            if (box->text() != text || box->cursorPosition() != 0 || box->hasSelectedText())
                m_fields.setText(info.field, text);
        }
        for (QLineEdit *box : m_held)
            box->setUpdatesEnabled(true);
        m_held.clear();
    }

private:
    static size_t at(VendorField field) { return static_cast<size_t>(indexOf(field)); }

    const VendorFieldBoxes &m_fields;
    std::array<QString, vendorFieldCount> m_texts;
    std::vector<QLineEdit *> m_held;
};
} // namespace

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
        m_vendors.updateAtOnce({{QStringLiteral("vendbalcurrent"), m_totals.openTotal()},
                                {QStringLiteral("vendbal60"), m_totals.yearTotal()}},
                               RecordSource::Commit::Light);
    } catch (const DbError &error) {
        if (error.code() != DbError::RecordLocked)
            throw;
    }
}

void VendorDisplay::fill(bool fresh)
{
    QElapsedTimer started;
    started.start();
    FieldTexts fields(m_fields); // blank until filled
    stampTotals();
    if (started.elapsed() > frameMsecs)
        fields.show(); // blank while the user waits
    QCoreApplication::processEvents();

    // The rows the source holds were read before the pass; the database has the new values.
    const QSqlRecord row = fresh ? m_vendors.reread() : m_vendors.current();
    if (row.isEmpty())
        throw DbError(DbError::NoCurrentRecord, QStringLiteral("No current record."));
    m_current.setRow(row);
    // The totals are computed for the vendor number the field holds.
    fields.setNow(VendorField::Number, row.value(0).toString());
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
            fields.set(info.field, value.toString());
            break;
        case S::AsMoney:
            fields.set(info.field, money(value.toDouble()));
            break;
        case S::OpenTotal:
            fields.set(info.field, money(m_totals.openTotal()));
            break;
        case S::YearTotal:
            fields.set(info.field, money(m_totals.yearTotal()));
            break;
        }
    }

    // A 1099 type that is not a valid code is shown, and later saved, as "0".
    static const QRegularExpression plainNumber(QStringLiteral(R"(^\s*-?\d+(\.\d+)?\s*$)"));
    const QString type = fields.text(VendorField::Form1099);
    if (!plainNumber.match(type).hasMatch() ||
        form1099Name(static_cast<int>(Numbers::leading(type))).isEmpty())
        fields.set(VendorField::Form1099, QStringLiteral("0"));
    fields.show();
    QCoreApplication::processEvents();
}
