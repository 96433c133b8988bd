#include "vendorscreen/VendorSaver.h"

#include "common/Dialogs.h"
#include "common/HandlerGuard.h"
#include "common/Numbers.h"
#include "common/Session.h"
#include "common/StatusLine.h"
#include "data/Databases.h"
#include "data/DbError.h"
#include "data/Money.h"
#include "data/RecordEdit.h"
#include "data/RecordSource.h"
#include "lists/CurrentVendor.h"
#include "vendorscreen/Form1099Type.h"
#include "vendorscreen/ScreenState.h"
#include "vendorscreen/VendorFieldBoxes.h"

#include <QEventLoop>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSqlRecord>
#include <QTimer>

namespace {
// The totals columns are rewritten by every display, so they say nothing about another user's
// edit and are left out of the comparison. An empty text and a missing one look the same on the
// screen, and a save writes the one for the other: that is no edit either.
bool changedByAnother(const QSqlRecord &recalled, const QSqlRecord &now)
{
    if (now.isEmpty())
        return true;
    for (int i = 0; i < now.count(); ++i) {
        const QString name = now.fieldName(i);
        if (name == QLatin1String("vendbalcurrent") || name == QLatin1String("vendbal60"))
            continue;
        const int at = recalled.indexOf(name);
        if (at < 0)
            continue;
        const QVariant a = recalled.value(at);
        const QVariant b = now.value(i);
        if (a.toString() != b.toString())
            return true;
    }
    return false;
}
} // namespace

QString VendorSaver::pnetFrom(const QString &phone, const QString &setting)
{
    if (setting == QLatin1String("N"))
        return {};
    QString digits;
    for (const QChar c : phone)
        if (c.isDigit() || c == QLatin1Char('-'))
            digits += c;
    return QStringLiteral("S") + digits + QStringLiteral("S");
}

VendorSaver::VendorSaver(QPushButton *cmdsave, const VendorFieldBoxes &fields,
                         RecordSource &vendors, const CurrentVendor &current, Asks asks,
                         ScreenState &state, const Session &session, Databases &dbs,
                         Dialogs &dialogs, StatusLine &status, QObject *parent) :
    QObject(parent),
    m_cmdsave(cmdsave), m_fields(fields), m_vendors(vendors), m_current(current),
    m_asks(std::move(asks)), m_state(state), m_session(session), m_dbs(dbs), m_dialogs(dialogs),
    m_status(status)
{
}

// A vendor of an unknown kind would be left out of every 1099 run without a word.
bool VendorSaver::form1099TypeIsKnown()
{
    const QString text = m_fields.text(VendorField::Form1099);
    if (Form1099Type::codeOf(text))
        return true;
    m_dialogs.message(QStringLiteral("1099 Type must be one of ") + Form1099Type::allowedCodes() +
                          QStringLiteral("; \"") + text +
                          QStringLiteral("\" is not one. Nothing was saved."),
                      Dialogs::Icon::Information, QStringLiteral("Velmora Office"));
    m_fields.box(VendorField::Form1099)->setFocus();
    return false;
}

bool VendorSaver::numbersAreNumbers()
{
    static const QRegularExpression number(QStringLiteral(R"(^\s*[-+]?(\d+\.?\d*|\.\d+)\s*$)"));
    for (const VendorFieldInfo &info : VendorFields::all()) {
        const QString text = m_fields.text(info.field);
        if (info.kind == VendorFieldInfo::Kind::Text || text.trimmed().isEmpty())
            continue;
        if (!number.match(text).hasMatch()) {
            m_dialogs.message(VendorFields::caption(info.field) +
                                  QStringLiteral(" must be a number; \"") + text +
                                  QStringLiteral("\" is not one. Nothing was saved."),
                              Dialogs::Icon::Information, QStringLiteral("Velmora Office"));
            m_fields.box(info.field)->setFocus();
            return false;
        }
    }
    return true;
}

void VendorSaver::putFields()
{
    using K = VendorFieldInfo::Kind;
    for (const VendorFieldInfo &info : VendorFields::all()) {
        const QString text = m_fields.text(info.field);
        QVariant value;
        switch (info.kind) {
        case K::Whole:
            value = Numbers::leadingWhole(text);
            break;
        case K::Number:
            value = Numbers::leading(text);
            break;
        case K::Money:
            value = Money::round4(Numbers::leading(text));
            break;
        case K::Text:
            value = text;
            break;
        }
        m_vendors.setValue(QString::fromLatin1(info.column), value);
    }
    m_vendors.setValue(QStringLiteral("pnet"),
                       pnetFrom(m_fields.text(VendorField::Phone), m_session.pnetYesNo));
}

// The vendor row and its notes are one transaction: a save lands whole or not at all.
VendorSaver::Outcome VendorSaver::writeVendor(bool withNotes, bool &notesKept)
{
    const bool adding = m_state.addFlag == 1;
    const int opening = adding ? StartNew : OpenForEdit;
    for (;;) {
        int step = opening;
        try {
            WriteTransaction tx(m_dbs, QStringLiteral("ap.mdb"), Databases::Commit::Durable,
                                tryWaitMsecs);
            // Left by an error, the edit is cancelled and the transaction rolled back.
            RecordEdit record(m_vendors,
                              adding ? RecordEdit::Start::AddNew : RecordEdit::Start::Edit);
            if (!adding) {
                step = CheckOthers;
                if (changedByAnother(m_current.row(), m_vendors.reread()))
                    throw DbError(DbError::RecordChanged,
                                  QStringLiteral("The record was changed by another user."));
            }
            step = PutFields;
            putFields();
            step = WriteRecord;
            record.update();
            if (withNotes) {
                step = Notes;
                notesKept = writeNotes();
            }
            step = WriteRecord;
            tx.commit();
            return Outcome::Written;
        } catch (const DbError &error) {
            if (step == Notes) {
                // Nothing of the save was written; the user can try again.
                unexpectedReport(error.code(), Notes);
                return Outcome::Stop;
            }
            ++m_state.saveRetryCount;
            if (m_state.saveRetryCount >= retryBudget) {
                writeReport(error.code(), step);
                return Outcome::Stop;
            }
            if (step == OpenForEdit || step == StartNew || step == WriteRecord) {
                waitBeforeRetry();
                continue;
            }
            changeReport();
            return Outcome::GoOn;
        }
    }
}

void VendorSaver::waitBeforeRetry()
{
    // The window stays painted while the save waits; what the user types waits with it.
    m_status.show(QStringLiteral("Another user is writing to the vendor file; the save "
                                 "waits (try %1 of %2).")
                      .arg(m_state.saveRetryCount)
                      .arg(retryBudget - 1));
    QEventLoop pause;
    QTimer::singleShot(pauseMsecs, &pause, &QEventLoop::quit);
    pause.exec(QEventLoop::ExcludeUserInputEvents);
}

bool VendorSaver::writeNotes()
{
    const long long number = m_current.number();
    RecordSource notes(m_dbs, QStringLiteral("vendnotes"));
    notes.setDatabaseName(QStringLiteral("ap.mdb"));
    notes.setRecordSource(QStringLiteral("select * from vendnotes where vendnumber = ") +
                          QString::number(number));
    notes.setUpdateTable(QStringLiteral("vendnotes"), QStringLiteral("vendnumber"));
    notes.refresh();
    // The notes as they were when the user opened them (none when they never did), against the
    // notes as they are: another user's notes are never written over unseen.
    const NoteShown shown = m_asks.note();
    const QString recalled = shown.recalledVendor == number ? shown.recalled : QString();
    const QString now =
        notes.hasRecords() ? notes.value(QStringLiteral("notes")).toString() : QString();
    if (now != recalled)
        return false;
    RecordEdit record(notes,
                      notes.hasRecords() ? RecordEdit::Start::Edit : RecordEdit::Start::AddNew);
    record.setValue(QStringLiteral("vendnumber"), number);
    record.setValue(QStringLiteral("notes"), shown.text);
    record.update();
    return true;
}

void VendorSaver::writeNotesAlone()
{
    try {
        WriteTransaction tx(m_dbs, QStringLiteral("ap.mdb"));
        const bool kept = writeNotes();
        tx.commit();
        if (!kept)
            notesReport();
    } catch (const DbError &error) {
        unexpectedReport(error.code(), Notes);
    }
}

bool VendorSaver::save()
{
    m_cmdsave->setEnabled(false);
    if (m_fields.text(VendorField::Number).isEmpty() ||
        m_fields.text(VendorField::Name).isEmpty()) {
        m_dialogs.message(QStringLiteral("Vendor number and name are required."),
                          Dialogs::Icon::Information);
        m_cmdsave->setEnabled(true);
        return false;
    }
    if (!m_state.editing() || !form1099TypeIsKnown() || !numbersAreNumbers()) {
        m_cmdsave->setEnabled(true);
        return false;
    }
    try {
        m_asks.computeTotals();
    } catch (const DbError &error) {
        unexpectedReport(error.code(), 0);
    }
    if (m_fields.text(VendorField::Terms).trimmed().isEmpty())
        m_fields.setText(VendorField::Terms, QStringLiteral("1"));

    const bool withNotes = m_state.addFlag == 1 || m_asks.note().typed;
    const QString status = m_status.text();
    bool notesKept = true;
    m_state.saving = true;
    const Outcome outcome = writeVendor(withNotes, notesKept);
    m_state.saving = false;
    if (outcome == Outcome::Stop) {
        m_status.show(status);
        m_cmdsave->setEnabled(true);
        return false;
    }
    if (outcome == Outcome::GoOn && withNotes)
        writeNotesAlone();
    else if (!notesKept)
        notesReport();
    emit finished();
    return true;
}

void VendorSaver::writeReport(int code, int step)
{
    m_dialogs.message(QStringLiteral("Having trouble writing the record...Code ") +
                          QString::number(code) + QLatin1Char('@') + QString::number(step) +
                          QStringLiteral("\nIf you continue getting this message, call Velmora "
                                         "Data.Otherwise, try to save it again."),
                      Dialogs::Icon::Information,
                      m_session.userName + QStringLiteral(" @ Armaster"));
}

void VendorSaver::changeReport()
{
    m_dialogs.message(
        QStringLiteral("Another user has modified this record while you were editing it.\n"
                       "Please reload this vendor and redo your changes."),
        Dialogs::Icon::Information, QStringLiteral("Velmora Office"));
}

void VendorSaver::notesReport()
{
    m_dialogs.message(
        QStringLiteral("Another user has changed this vendor's notes since you opened them, so "
                       "your notes were not saved.\nPlease reload this vendor and redo your "
                       "notes."),
        Dialogs::Icon::Information, QStringLiteral("Velmora Office"));
}

void VendorSaver::unexpectedReport(int code, int step)
{
    HandlerGuard::unexpectedReport(m_dialogs, m_session.userName, code, step);
}
