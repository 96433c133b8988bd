#include "vendorscreen/VendorLookup.h"

#include "common/Colours.h"
#include "common/ErrorReport.h"
#include "common/Numbers.h"
#include "common/PickedAnswer.h"
#include "common/ProgramRunner.h"
#include "common/StatusLine.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "vendorscreen/ScreenState.h"
#include "vendorscreen/VendorFieldBoxes.h"
#include "vendorscreen/VendorLayout.h"

#include <QAction>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>

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

VendorLookup::VendorLookup(const Widgets &widgets, const VendorFieldBoxes &fields,
                           RecordSource &vendors, std::function<bool()> showFound,
                           ScreenState &state, Dialogs &dialogs, ProgramRunner &programs,
                           StatusLine &status, QObject *parent) :
    QObject(parent),
    m_w(widgets), m_fields(fields), m_vendors(vendors), m_showFound(std::move(showFound)),
    m_state(state), m_dialogs(dialogs), m_programs(programs), m_status(status)
{
    m_w.lookupinput->installEventFilter(this);
    for (QRadioButton *option : m_w.Option1)
        option->installEventFilter(this);
}

int VendorLookup::chosenMethod() const
{
    for (int i = 0; i < static_cast<int>(m_w.Option1.size()); ++i)
        if (m_w.Option1[i]->isChecked())
            return i;
    return 0;
}

void VendorLookup::open()
{
    m_w.cmdlookup->setEnabled(false);
    m_fields.blank();
    emit opening();
    VendorLayout::placeLookup(m_w.fralookup, m_w.over);
    m_w.fralookup->show();
    m_w.fralookup->raise();
    m_w.Option1[m_w.byname->isChecked() ? 1 : 0]->setChecked(true);
    m_w.lookupinput->setFocus();
    m_w.cmdlookup->setEnabled(true);
}

void VendorLookup::go()
{
    const int method = chosenMethod();
    const QString typed = m_w.lookupinput->text();
    if (typed.contains(QLatin1Char('\'')))
        m_w.lookupinput->setText(doubleFirstApostrophe(typed));
    m_state.lastLookupStatement = statement(method, m_w.lookupinput->text());
    if (method == 0)
        m_state.lastLookupNumber = static_cast<long>(Numbers::leadingWhole(typed));

    m_vendors.setDatabaseName(QStringLiteral("ap.mdb"));
    m_vendors.setRecordSource(safeStatement(method, typed));
    try {
        m_vendors.refresh();
    } catch (const DbError &error) {
        showErrorReport(m_dialogs, error);
        return;
    }
    m_w.fralookup->hide();
    // The vendor shown is browsed and its note follows it (the window wires both to the vendor
    // on the screen).
    if (!m_showFound())
        return;
    emit found();
    m_status.set(QStringLiteral("Select an action button along the top of the screen."));
}

void VendorLookup::showNumber(long long number)
{
    const int method = chosenMethod();
    m_w.Option1[0]->setChecked(true);
    m_w.lookupinput->setText(QString::number(number));
    go();
    m_w.Option1[static_cast<size_t>(method)]->setChecked(true);
}

void VendorLookup::cancelLookup()
{
    m_w.fralookup->hide();
    m_fields.frame()->setEnabled(false);
}

void VendorLookup::entryFocused()
{
    m_w.lookupinput->clear();
    Colours::setEntryBackground(m_w.lookupinput, Colours::yellow);
    m_status.show(
        QStringLiteral("Type a suitable entry for the lookup method chosen; then press ENTER."));
}

void VendorLookup::entryLeft()
{
    Colours::setEntryBackground(m_w.lookupinput, Colours::white);
}

void VendorLookup::entryKey(int key)
{
    if (key != Qt::Key_F5)
        return;
    PickedAnswer::clear();
    m_programs.runAndWait(QStringLiteral("venlookp.exe"));
    const QString picked = PickedAnswer::take(QStringLiteral("venlookp"));
    if (picked.isEmpty())
        return;
    // The picker hands back a vendor number: looked up by number, as if typed with Enter.
    m_w.Option1[0]->setChecked(true);
    m_w.lookupinput->setText(picked);
    go();
}

bool VendorLookup::moveAmongMethods(QObject *watched, int key)
{
    // Shift+Tab from the entry reaches the chosen method, Tab from a method the entry, as a
    // group of options is one stop on every desktop.
    const bool isOption =
        std::find(m_w.Option1.begin(), m_w.Option1.end(), watched) != m_w.Option1.end();
    if (watched == m_w.lookupinput && key == Qt::Key_Backtab) {
        for (QRadioButton *option : m_w.Option1)
            if (option->isChecked())
                option->setFocus(Qt::BacktabFocusReason);
        return true;
    }
    if (isOption && key == Qt::Key_Tab) {
        m_w.lookupinput->setFocus(Qt::TabFocusReason);
        return true;
    }
    return false;
}

bool VendorLookup::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::KeyPress &&
        moveAmongMethods(watched, static_cast<QKeyEvent *>(event)->key()))
        return true;
    if (watched == m_w.lookupinput) {
        if (type == QEvent::FocusIn &&
            static_cast<QFocusEvent *>(event)->reason() != Qt::ActiveWindowFocusReason)
            entryFocused();
        else if (type == QEvent::FocusOut)
            entryLeft();
        else if (type == QEvent::KeyPress)
            entryKey(static_cast<QKeyEvent *>(event)->key());
    }
    return QObject::eventFilter(watched, event);
}
