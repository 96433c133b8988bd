#include "vendorscreen/VendorLookup.h"

#include "common/Services.h"
#include "common/Colours.h"
#include "common/ErrorReport.h"
#include "common/Numbers.h"
#include "common/ProgramRunner.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "lists/InvoiceLists.h"
#include "vendorscreen/ScreenModes.h"
#include "vendorscreen/VendorDisplay.h"
#include "vendorscreen/VendorLayout.h"
#include "vendorscreen/VendorWindow.h"

#include <QAction>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace {
QString wholeNumber(const QString &text)
{
    return QString::number(Numbers::leadingWhole(text));
}

} // namespace

QString VendorLookup::doubleFirstApostrophe(const QString &text)
{
    const qsizetype at = text.indexOf(QLatin1Char('\''));
    if (at < 0)
        return text;
    return text.left(at) + QStringLiteral("''") + text.mid(at + 1);
}

QString VendorLookup::statement(int method, const QString &value)
{
    switch (method) {
    case 0:
        return QStringLiteral("select * from vendors where vendnumber >=") + wholeNumber(value) +
               QStringLiteral(" order by vendnumber");
    case 1:
        return QStringLiteral("select * from vendors where vendname >= '") + value +
               QStringLiteral("' order by vendname");
    case 2:
        return QStringLiteral("select * from vendors where vendcontact >= '") + value +
               QStringLiteral("' order by vendcontact");
    case 3:
        return QStringLiteral("select * from invoices, vendors, vendors inner join invoices "
                              "on invoices.vendnumber = vendors.vendnumber where "
                              "invoices.invnumber = '") +
               value + QLatin1Char('\'');
    case 4:
        return QStringLiteral("select * from invoices, vendors, invoices inner join vendors "
                              "on invoices.vendnumber = vendors.vendnumber where "
                              "invoices.invchecknumber = ") +
               wholeNumber(value);
    case 5:
        return QStringLiteral("select * from invoices, vendors, invoices inner join vendors "
                              "on invoices.vendnumber = vendors.vendnumber where "
                              "invoices.invproduct >= '") +
               value + QStringLiteral("' order by invproduct");
    case 6:
        return QStringLiteral("select * from vendors where vendglacct = ") +
               Numbers::plain(Numbers::leading(value)) + QStringLiteral(" order by vendname");
    default:
        return {};
    }
}

QString VendorLookup::safeStatement(int method, const QString &typed)
{
    QString escaped = typed;
    escaped.replace(QLatin1Char('\''), QStringLiteral("''"));
    return statement(method, escaped);
}

int VendorLookup::chosenMethod() const
{
    const auto &options = m_window.controls().Option1;
    for (int i = 0; i < static_cast<int>(options.size()); ++i)
        if (options[i]->isChecked())
            return i;
    return 0;
}

void VendorLookup::open()
{
    const auto &c = m_window.controls();
    c.cmdlookup->setEnabled(false);
    m_window.blankFields();
    m_window.lists().fitColumns();
    VendorLayout::placeLookup(c.fralookup, c.fravendor);
    c.fralookup->show();
    c.fralookup->raise();
    const bool byName = m_window.action(QStringLiteral("byname"))->isChecked();
    c.Option1[byName ? 1 : 0]->setChecked(true);
    c.lookupinput->setFocus();
    c.cmdlookup->setEnabled(true);
}

void VendorLookup::go()
{
    const auto &c = m_window.controls();
    ScreenState &state = m_window.state();
    const int method = chosenMethod();
    const QString typed = c.lookupinput->text();
    if (typed.contains(QLatin1Char('\'')))
        c.lookupinput->setText(doubleFirstApostrophe(typed));
    state.lastLookupStatement = statement(method, c.lookupinput->text());
    if (method == 0)
        state.lastLookupNumber = static_cast<long>(Numbers::leadingWhole(typed));

    RecordSource &source = m_window.datavendor();
    source.setDatabaseName(QStringLiteral("ap.mdb"));
    source.setRecordSource(safeStatement(method, typed));
    try {
        source.refresh();
    } catch (const DbError &error) {
        showErrorReport(m_window.services().dialogs, error);
        return;
    }
    c.fralookup->hide();
    if (!m_window.display().showCurrent())
        return;
    m_window.lists().refreshChecksIfShown();
    m_window.modes().applyButtons(ScreenModes::Mode::Browse);
    m_window.setStatus(QStringLiteral("Select an action button along the top of the screen."));
}

void VendorLookup::cancelLookup()
{
    m_window.controls().fralookup->hide();
    m_window.controls().fravendor->setEnabled(false);
}

void VendorLookup::entryFocused()
{
    QLineEdit *entry = m_window.controls().lookupinput;
    entry->clear();
    Colours::setEntryBackground(entry, Colours::yellow);
    m_window.setStatus(
        QStringLiteral("Type a suitable entry for the lookup method chosen; then press ENTER."));
}

void VendorLookup::entryLeft()
{
    Colours::setEntryBackground(m_window.controls().lookupinput, Colours::white);
}

void VendorLookup::entryKey(int key)
{
    if (key == Qt::Key_F5)
        m_window.programs().runAndWait(QStringLiteral("venlookp.exe"));
}
