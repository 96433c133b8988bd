#include "vendor/VendorSaver.h"

#include "app/Services.h"
#include "app/Session.h"
#include "common/Dialogs.h"
#include "common/Numbers.h"
#include "data/DbError.h"
#include "data/Money.h"
#include "data/RecordSource.h"
#include "lists/OpenInvoiceTotals.h"
#include "vendor/ScreenModes.h"
#include "vendor/VendorLayout.h"
#include "vendor/VendorWindow.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSqlRecord>

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
// edit and are left out of the comparison.
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
        if (a.isNull() != b.isNull() || a.toString() != b.toString())
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

VendorSaver::Outcome VendorSaver::writeVendor()
{
    RecordSource &source = m_window.datavendor();
    ScreenState &state = m_window.state();
    const bool adding = state.addFlag == 1;
    int step = adding ? StartNew : OpenForEdit;
    for (;;) {
        try {
            if (step == OpenForEdit) {
                source.edit();
                step = CheckOthers;
            }
            if (step == StartNew) {
                source.addNew();
                step = PutFields;
            }
            if (step == CheckOthers) {
                if (changedByAnother(state.recalled, source.reread()))
                    throw DbError(DbError::RecordChanged,
                                  QStringLiteral("The record was changed by another user."));
                step = PutFields;
            }
            if (step == PutFields) {
                putFields();
                step = WriteRecord;
            }
            source.update();
            return Outcome::Written;
        } catch (const DbError &error) {
            ++state.saveRetryCount;
            if (state.saveRetryCount >= retryBudget) {
                source.cancelUpdate();
                writeReport(error.code(), step);
                return Outcome::Stop;
            }
            if (step == OpenForEdit || step == StartNew || step == WriteRecord)
                continue;
            source.cancelUpdate();
            changeReport();
            return Outcome::GoOn;
        }
    }
}

void VendorSaver::writeNotes()
{
    const long long number = Numbers::leadingWhole(m_window.controls().Text1[0]->text());
    RecordSource notes(m_window.services().databases, QStringLiteral("vendnotes"));
    notes.setDatabaseName(QStringLiteral("ap.mdb"));
    notes.setRecordSource(QStringLiteral("select * from vendnotes where vendnumber = ") +
                          QString::number(number));
    notes.setUpdateTable(QStringLiteral("vendnotes"), QStringLiteral("vendnumber"));
    notes.refresh();
    if (notes.hasRecords())
        notes.edit();
    else
        notes.addNew();
    notes.setValue(QStringLiteral("vendnumber"), number);
    notes.setValue(QStringLiteral("notes"), m_window.controls().notes->toPlainText());
    notes.update();
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

    if (writeVendor() == Outcome::Stop) {
        c.cmdsave->setEnabled(true);
        return;
    }
    if (state.addFlag == 1 || state.notesChanged == 1) {
        try {
            writeNotes();
        } catch (const DbError &error) {
            unexpectedReport(error.code(), Notes);
        }
    }
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

void VendorSaver::unexpectedReport(int code, int step)
{
    m_window.services().dialogs.message(
        QStringLiteral("Code ") + QString::number(code) + QStringLiteral(" near ") +
            QString::number(step) + QStringLiteral("\nUnexpected problem... Call Velmora Data."),
        Dialogs::Icon::Information, m_window.session().userName + QStringLiteral(" @ Apmaster"));
}
