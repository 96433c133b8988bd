#include "vendorscreen/VendorSaver.h"

#include "common/Services.h"
#include "common/Session.h"
#include "common/Dialogs.h"
#include "common/Numbers.h"
#include "data/Databases.h"
#include "data/DbError.h"
#include "data/Money.h"
#include "data/RecordSource.h"
#include "lists/OpenInvoiceTotals.h"
#include "vendorscreen/ScreenModes.h"
#include "vendorscreen/VendorLayout.h"
#include "vendorscreen/VendorWindow.h"

#include <QEventLoop>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSqlRecord>
#include <QTimer>

namespace {
// The columns a save writes, by field index, and how each field's text is read.
enum class As { Whole, Number, Money, Text };
struct Target {
    const char *column;
    As as;
};
const Target targets[24] = {
    {"vendnumber", As::Whole},   {"vendname", As::Text},       {"vendaddr1", As::Text},
    {"vendaddr2", As::Text},     {"vendcity", As::Text},       {"vendstate", As::Text},
    {"vendzip", As::Text},       {"vendphone", As::Text},      {"vendfax", As::Text},
    {"vendcontact", As::Text},   {"vendtaxid", As::Text},      {"vend1099type", As::Whole},
    {"vendglacct", As::Number},  {"vendytd", As::Money},       {"vendbalcurrent", As::Money},
    {"vendbal60", As::Money},    {"vendbal90", As::Money},     {"vendterms", As::Text},
    {"vendacct", As::Text},      {"email", As::Text},          {"cell_other", As::Text},
    {"vcontact2name", As::Text}, {"vcontact2email", As::Text}, {"vcontact2phone", As::Text},
};

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

bool VendorSaver::numbersAreNumbers()
{
    static const QRegularExpression number(QStringLiteral(R"(^\s*[-+]?(\d+\.?\d*|\.\d+)\s*$)"));
    const auto &field = m_window.controls().Text1;
    for (int i = 0; i < 24; ++i) {
        if (targets[i].as == As::Text || field[i]->text().trimmed().isEmpty())
            continue;
        if (!number.match(field[i]->text()).hasMatch()) {
            m_window.services().dialogs.message(
                VendorLayout::fieldCaption(i) + QStringLiteral(" must be a number; \"") +
                    field[i]->text() + QStringLiteral("\" is not one. Nothing was saved."),
                Dialogs::Icon::Information, QStringLiteral("Velmora Office"));
            field[i]->setFocus();
            return false;
        }
    }
    return true;
}

void VendorSaver::putFields()
{
    RecordSource &source = m_window.datavendor();
    const auto &field = m_window.controls().Text1;
    for (int i = 0; i < 24; ++i) {
        const QString text = field[i]->text();
        QVariant value;
        switch (targets[i].as) {
        case As::Whole:
            value = Numbers::leadingWhole(text);
            break;
        case As::Number:
            value = Numbers::leading(text);
            break;
        case As::Money:
            value = Money::round4(Numbers::leading(text));
            break;
        case As::Text:
            value = text;
            break;
        }
        source.setValue(QString::fromLatin1(targets[i].column), value);
    }
    source.setValue(QStringLiteral("pnet"),
                    pnetFrom(field[7]->text(), m_window.session().pnetYesNo));
}

// The vendor row and its notes are one transaction: a save lands whole or not at all.
VendorSaver::Outcome VendorSaver::writeVendor(bool withNotes, bool &notesKept)
{
    RecordSource &source = m_window.datavendor();
    ScreenState &state = m_window.state();
    const bool adding = state.addFlag == 1;
    const int opening = adding ? StartNew : OpenForEdit;
    for (;;) {
        int step = opening;
        try {
            WriteTransaction tx(m_window.services().databases, QStringLiteral("ap.mdb"),
                                Databases::Commit::Durable, tryWaitMsecs);
            if (adding) {
                source.addNew();
            } else {
                source.edit();
                step = CheckOthers;
                if (changedByAnother(state.recalled, source.reread()))
                    throw DbError(DbError::RecordChanged,
                                  QStringLiteral("The record was changed by another user."));
            }
            step = PutFields;
            putFields();
            step = WriteRecord;
            source.update();
            if (withNotes) {
                step = Notes;
                notesKept = writeNotes();
            }
            step = WriteRecord;
            tx.commit();
            return Outcome::Written;
        } catch (const DbError &error) {
            source.cancelUpdate();
            if (step == Notes) {
                // Nothing of the save was written; the user can try again.
                unexpectedReport(error.code(), Notes);
                return Outcome::Stop;
            }
            ++state.saveRetryCount;
            if (state.saveRetryCount >= retryBudget) {
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
    m_window.setStatus(QStringLiteral("Another user is writing to the vendor file; the save "
                                      "waits (try %1 of %2).")
                           .arg(m_window.state().saveRetryCount)
                           .arg(retryBudget - 1));
    QEventLoop pause;
    QTimer::singleShot(pauseMsecs, &pause, &QEventLoop::quit);
    pause.exec(QEventLoop::ExcludeUserInputEvents);
}

bool VendorSaver::writeNotes()
{
    const long long number = Numbers::leadingWhole(m_window.controls().Text1[0]->text());
    const ScreenState &state = m_window.state();
    RecordSource notes(m_window.services().databases, QStringLiteral("vendnotes"));
    notes.setDatabaseName(QStringLiteral("ap.mdb"));
    notes.setRecordSource(QStringLiteral("select * from vendnotes where vendnumber = ") +
                          QString::number(number));
    notes.setUpdateTable(QStringLiteral("vendnotes"), QStringLiteral("vendnumber"));
    notes.refresh();
    // The notes as they were when the user opened them (none when they never did), against the
    // notes as they are: another user's notes are never written over unseen.
    const QString recalled =
        state.notesVendor == number ? state.notesRecalled.toString() : QString();
    const QString now = notes.hasRecords() ? notes.value(QStringLiteral("notes")).toString()
                                           : QString();
    if (now != recalled)
        return false;
    if (notes.hasRecords())
        notes.edit();
    else
        notes.addNew();
    notes.setValue(QStringLiteral("vendnumber"), number);
    notes.setValue(QStringLiteral("notes"), m_window.controls().notes->toPlainText());
    notes.update();
    return true;
}

void VendorSaver::writeNotesAlone()
{
    try {
        WriteTransaction tx(m_window.services().databases, QStringLiteral("ap.mdb"));
        const bool kept = writeNotes();
        tx.commit();
        if (!kept)
            notesReport();
    } catch (const DbError &error) {
        unexpectedReport(error.code(), Notes);
    }
}

void VendorSaver::save()
{
    const auto &c = m_window.controls();
    ScreenState &state = m_window.state();
    c.cmdsave->setEnabled(false);
    if (c.Text1[0]->text().isEmpty() || c.Text1[1]->text().isEmpty()) {
        m_window.services().dialogs.message(QStringLiteral("Vendor number and name are required."),
                                            Dialogs::Icon::Information);
        c.cmdsave->setEnabled(true);
        return;
    }
    if (state.addFlag != 1 && state.modifyFlag != 1) {
        c.cmdsave->setEnabled(true);
        return;
    }
    if (!numbersAreNumbers()) {
        c.cmdsave->setEnabled(true);
        return;
    }
    try {
        m_window.totals().compute();
    } catch (const DbError &error) {
        unexpectedReport(error.code(), 0);
    }
    if (c.Text1[17]->text().trimmed().isEmpty())
        c.Text1[17]->setText(QStringLiteral("1"));

    const bool withNotes = state.addFlag == 1 || state.notesChanged == 1;
    const QString status = m_window.status();
    bool notesKept = true;
    state.saving = true;
    const Outcome outcome = writeVendor(withNotes, notesKept);
    state.saving = false;
    if (outcome == Outcome::Stop) {
        m_window.setStatus(status);
        c.cmdsave->setEnabled(true);
        return;
    }
    if (outcome == Outcome::GoOn && withNotes)
        writeNotesAlone();
    else if (!notesKept)
        notesReport();
    m_window.modes().cancel();
}

void VendorSaver::writeReport(int code, int step)
{
    m_window.services().dialogs.message(
        QStringLiteral("Having trouble writing the record...\nCode ") + QString::number(code) +
            QLatin1Char('@') + QString::number(step) +
            QStringLiteral("\nIf you continue getting this message, call Velmora Data.\n"
                           "Otherwise, try to save it again."),
        Dialogs::Icon::Information, m_window.session().userName + QStringLiteral(" @ Armaster"));
}

void VendorSaver::changeReport()
{
    m_window.services().dialogs.message(
        QStringLiteral("Another user has modified this record while you were editing it.\n"
                       "Please reload this vendor and redo your changes."),
        Dialogs::Icon::Information, QStringLiteral("Velmora Office"));
}

void VendorSaver::notesReport()
{
    m_window.services().dialogs.message(
        QStringLiteral("Another user has changed this vendor's notes since you opened them, so "
                       "your notes were not saved.\nPlease reload this vendor and redo your "
                       "notes."),
        Dialogs::Icon::Information, QStringLiteral("Velmora Office"));
}

void VendorSaver::unexpectedReport(int code, int step)
{
    m_window.services().dialogs.message(
        QStringLiteral("Code ") + QString::number(code) + QStringLiteral(" near ") +
            QString::number(step) + QStringLiteral("\nUnexpected problem... Call Velmora Data."),
        Dialogs::Icon::Information, m_window.session().userName + QStringLiteral(" @ Apmaster"));
}
