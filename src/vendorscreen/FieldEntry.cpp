#include "vendorscreen/FieldEntry.h"

#include "common/Services.h"
#include "common/Session.h"
#include "common/Colours.h"
#include "common/Dialogs.h"
#include "common/ErrorReport.h"
#include "common/Numbers.h"
#include "common/ProgramRunner.h"
#include "common/Prompts.h"
#include "data/ChartOfAccounts.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "vendorscreen/VendorWindow.h"

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

FieldEntry::FieldEntry(VendorWindow &window, KeySending sendKeys) :
    QObject(&window), m_window(window), m_sendKeys(std::move(sendKeys))
{
    for (QLineEdit *field : m_window.controls().Text1)
        field->installEventFilter(this);
}

QString FieldEntry::prompt(int index)
{
    static const char *prompts[] = {
        "Vendor numbers must be between 0 - 99999",
        "Vendor name is limited to 30 characters",
        "Address 1, Address 2 and City are limited to 30 characters each",
        "Address 1, Address 2 and City are limited to 30 characters each",
        "Address 1, Address 2 and City are limited to 30 characters each",
        "Type the 2-character abbreviation for the state",
        "Type the ZIP code in XXXXX-XXXX format",
        "Type the telephone number in XXX-XXX-XXXX format",
        "Type the fax telephone number in XXX-XXX-XXXX format",
        "Type the name of the person who is your contact at this company",
        "Type the federal tax ID#",
        "Available types:  0=None   1=1099-MISC   2=1099-INT   3=1099-DIV   5-1099-NEC",
        "Type the G/L account to which payments made to this company are posted",
        "Type the year-to-date purchases you have made with this company (no dollar signs, please)",
        "Type the current outstanding balance with this company",
        "Type the 60-day outstanding balance with this company",
        "Type the 90+ day outstanding balance with this company",
        "Type the terms you have with this company",
        "Type the account number assigned to you by this vendor",
    };
    return index >= 0 && index <= 18 ? QString::fromLatin1(prompts[index]) : QString();
}

void FieldEntry::focused(int index)
{
    const auto &field = m_window.controls().Text1;
    Colours::setEntryBackground(field[index], Colours::yellow);
    if (index == 0) {
        // Rebinding to the whole table is what the duplicate-number check searches; it also
        // puts the record source back on its first row, in every mode.
        RecordSource &source = m_window.datavendor();
        source.setDatabaseName(QStringLiteral("ap.mdb"));
        source.setRecordSource(QStringLiteral("vendors"));
        try {
            source.refresh();
            // In modify mode the save writes over the record the source stands on: keep it on
            // the vendor being edited rather than on the table's first vendor.
            const QSqlRecord &recalled = m_window.state().recalled;
            if (m_window.state().modifyFlag == 1 && !recalled.isEmpty())
                source.findFirst(
                    QStringLiteral("vendnumber = ") +
                    QString::number(recalled.value(QStringLiteral("vendnumber")).toLongLong()));
        } catch (const DbError &error) {
            showErrorReport(m_window.services().dialogs, error);
        }
        field[0]->clear();
    }
    if (index == 12 && m_window.state().addFlag == 1)
        field[12]->clear();
    const QString text = prompt(index);
    if (!text.isEmpty())
        m_window.setStatus(text);
}

bool FieldEntry::keyDown(int index, int key)
{
    QLineEdit *field = m_window.controls().Text1[index];
    if (key == Qt::Key_F5 && index == 0)
        m_window.programs().runAndWait(QStringLiteral("venlookp.exe"));
    if (key == Qt::Key_F5 && index == 12)
        m_window.programs().runAndWait(QStringLiteral("gllookup.exe"));
    const int number = functionKeyNumber(key);
    const QString text = number ? m_window.session().functionKeyText[number] : QString();
    if (text.isEmpty())
        return key == Qt::Key_F5;
    if (index >= 4 && index <= 6)
        field->setText(text);
    else if (index == 7 || index == 8)
        field->setText(text + field->text());
    return true;
}

bool FieldEntry::typed(int, QChar character)
{
    if (character != QLatin1Char('\r'))
        return false;
    m_sendKeys(QStringLiteral("{TAB}"));
    return true;
}

void FieldEntry::holdFocus(int index)
{
    QLineEdit *field = m_window.controls().Text1[index];
    // After the event that took the focus away has finished.
    QTimer::singleShot(0, field, [field] { field->setFocus(Qt::OtherFocusReason); });
}

void FieldEntry::left(int index)
{
    const auto &field = m_window.controls().Text1;
    Colours::setEntryBackground(field[index], Colours::white);
    Session &session = m_window.session();
    Dialogs &dialogs = m_window.services().dialogs;
    try {
        if (index == 6)
            field[6]->setText(field[6]->text().toUpper());
        if (index == 12) {
            session.messageText = field[12]->text();
            ChartOfAccounts chart(m_window.services().databases);
            Prompts::checkGlAccount(chart, dialogs, session);
            if (session.messageText == QLatin1String("REDO"))
                holdFocus(12);
        }
        RecordSource &source = m_window.datavendor();
        if (index == 0 && m_window.state().addFlag == 1 && source.isBound() &&
            source.hasRecords()) {
            const QString number = QString::number(Numbers::leadingWhole(field[0]->text()));
            if (source.findFirst(QStringLiteral("vendnumber = ") + number)) {
                dialogs.message(QStringLiteral("This vendor number belongs to \n") +
                                    source.value(QStringLiteral("vendname")).toString() +
                                    QStringLiteral("\nPlease try again."),
                                Dialogs::Icon::Information, QStringLiteral("New Vendor Number"));
                holdFocus(0);
            }
        }
    } catch (const DbError &error) {
        showErrorReport(dialogs, error);
    }
}

bool FieldEntry::eventFilter(QObject *watched, QEvent *event)
{
    auto *field = qobject_cast<QLineEdit *>(watched);
    if (!field)
        return false;
    const int index = field->property("index").toInt();
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut: {
        // A message box or another window coming and going is not the user moving on.
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
            break;
        if (event->type() == QEvent::FocusIn)
            focused(index);
        else
            left(index);
        break;
    }
    case QEvent::KeyPress: {
        auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)
            return typed(index, QLatin1Char('\r'));
        if (functionKeyNumber(key->key()) || key->key() == Qt::Key_F5)
            return keyDown(index, key->key());
        break;
    }
    default:
        break;
    }
    return false;
}
