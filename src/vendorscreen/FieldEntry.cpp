#include "vendorscreen/FieldEntry.h"

#include "common/Colours.h"
#include "common/Dialogs.h"
#include "common/ErrorReport.h"
#include "common/Numbers.h"
#include "common/PickedAnswer.h"
#include "common/ProgramRunner.h"
#include "common/Prompts.h"
#include "common/Session.h"
#include "common/StatusLine.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "lists/CurrentVendor.h"
#include "vendorscreen/ScreenState.h"
#include "vendorscreen/VendorFieldBoxes.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSqlRecord>
#include <QTimer>

namespace {

int functionKeyNumber(int key)
{
    if (key == Qt::Key_F1)
        return 1;
    if (key >= Qt::Key_F6 && key <= Qt::Key_F12)
        return key - Qt::Key_F1 + 1;
    return 0;
}

} // namespace

FieldEntry::FieldEntry(const VendorFieldBoxes &fields, RecordSource &vendors,
                       const CurrentVendor &current, ScreenState &state, Session &session,
                       Dialogs &dialogs, AccountLookup &accounts, ProgramRunner &programs,
                       StatusLine &status, KeySending sendKeys, QObject *parent) :
    QObject(parent),
    m_fields(fields), m_vendors(vendors), m_current(current), m_state(state), m_session(session),
    m_dialogs(dialogs), m_accounts(accounts), m_programs(programs), m_status(status),
    m_sendKeys(std::move(sendKeys))
{
    for (const VendorFieldInfo &info : VendorFields::all()) {
        QLineEdit *box = m_fields.box(info.field);
        box->setProperty("index", indexOf(info.field));
        box->installEventFilter(this);
    }
}

// Rebinding to the whole table is what the duplicate-number check searches; it also puts the
// record source back on its first row, in every mode.
void FieldEntry::rebindToWholeFile()
{
    m_vendors.setDatabaseName(QStringLiteral("ap.mdb"));
    m_vendors.setRecordSource(QStringLiteral("vendors"));
    try {
        m_vendors.refresh();
        // In modify mode the save writes over the record the source stands on: keep it on the
        // vendor being edited rather than on the table's first vendor.
        const QSqlRecord &recalled = m_current.row();
        if (m_state.modifyFlag == 1 && !recalled.isEmpty())
            m_vendors.findFirst(
                QStringLiteral("vendnumber = ") +
                QString::number(recalled.value(QStringLiteral("vendnumber")).toLongLong()));
    } catch (const DbError &error) {
        showErrorReport(m_dialogs, error);
    }
}

void FieldEntry::focused(VendorField field)
{
    Colours::setEntryBackground(m_fields.box(field), Colours::yellow);
    if (field == VendorField::Number) {
        rebindToWholeFile();
        m_fields.box(field)->clear();
    }
    if (field == VendorField::GlAccount && m_state.addFlag == 1)
        m_fields.box(field)->clear();
    const QString text = VendorFields::prompt(field);
    if (!text.isEmpty())
        m_status.show(text);
}

bool FieldEntry::keyDown(VendorField field, int key)
{
    QLineEdit *box = m_fields.box(field);
    if (key == Qt::Key_F5 && field == VendorField::Number)
        takePicked(field, QStringLiteral("venlookp"));
    if (key == Qt::Key_F5 && field == VendorField::GlAccount)
        takePicked(field, QStringLiteral("gllookup"));
    const int number = functionKeyNumber(key);
    const QString text = number ? m_session.functionKeyText[number] : QString();
    if (text.isEmpty())
        return key == Qt::Key_F5;
    // City, state and ZIP take a function key's text in place of theirs; the two telephone
    // numbers take it in front (an area code, say).
    if (field == VendorField::City || field == VendorField::State || field == VendorField::Zip)
        box->setText(text);
    else if (field == VendorField::Phone || field == VendorField::Fax)
        box->setText(text + box->text());
    return true;
}

// A picked number goes in as if the user had typed it and pressed Enter: the field is left
// through the keystroke sender, so the checks of leaving it run as for a typed entry.
void FieldEntry::takePicked(VendorField field, const QString &picker)
{
    PickedAnswer::clear();
    m_programs.runAndWait(picker + QStringLiteral(".exe"));
    const QString picked = PickedAnswer::take(picker);
    if (picked.isEmpty())
        return;
    m_fields.box(field)->setText(picked);
    typed(field, QLatin1Char('\r'));
}

bool FieldEntry::typed(VendorField, QChar character)
{
    if (character != QLatin1Char('\r'))
        return false;
    m_sendKeys(QStringLiteral("{TAB}"));
    return true;
}

void FieldEntry::holdFocus(VendorField field)
{
    QLineEdit *box = m_fields.box(field);
    // After the event that took the focus away has finished.
    QTimer::singleShot(0, box, [box] { box->setFocus(Qt::OtherFocusReason); });
}

void FieldEntry::refuseNumberTaken()
{
    const QString number =
        QString::number(Numbers::leadingWhole(m_fields.text(VendorField::Number)));
    if (!m_vendors.findFirst(QStringLiteral("vendnumber = ") + number))
        return;
    m_dialogs.message(QStringLiteral("This vendor number belongs to \n") +
                          m_vendors.value(QStringLiteral("vendname")).toString() +
                          QStringLiteral("\nPlease try again."),
                      Dialogs::Icon::Information, QStringLiteral("New Vendor Number"));
    holdFocus(VendorField::Number);
}

void FieldEntry::left(VendorField field)
{
    Colours::setEntryBackground(m_fields.box(field), Colours::white);
    try {
        if (field == VendorField::Zip)
            m_fields.box(field)->setText(m_fields.text(field).toUpper());
        if (field == VendorField::GlAccount) {
            m_session.messageText = m_fields.text(field);
            Prompts::checkGlAccount(m_accounts, m_dialogs, m_session);
            if (m_session.messageText == QLatin1String("REDO"))
                holdFocus(field);
        }
        if (field == VendorField::Number && m_state.addFlag == 1 && m_vendors.isBound() &&
            m_vendors.hasRecords())
            refuseNumberTaken();
    } catch (const DbError &error) {
        showErrorReport(m_dialogs, error);
    }
}

bool FieldEntry::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = qobject_cast<QLineEdit *>(watched);
    if (!box)
        return false;
    const auto field = static_cast<VendorField>(box->property("index").toInt());
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut: {
        // A message box or another window coming and going is not the user moving on.
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
            break;
        if (event->type() == QEvent::FocusIn)
            focused(field);
        else
            left(field);
        break;
    }
    case QEvent::KeyPress: {
        auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)
            return typed(field, QLatin1Char('\r'));
        if (functionKeyNumber(key->key()) || key->key() == Qt::Key_F5)
            return keyDown(field, key->key());
        break;
    }
    default:
        break;
    }
    return false;
}
