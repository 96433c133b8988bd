#include "lists/VendorNotes.h"

#include "common/Colours.h"
#include "data/Databases.h"
#include "lists/CurrentVendor.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableView>

VendorNotes::VendorNotes(const ListWidgets &widgets, const CurrentVendor &vendor, Databases &dbs,
                         QObject *parent) :
    QObject(parent),
    m_w(widgets), m_current(vendor), m_dbs(dbs)
{
    m_w.notes->installEventFilter(this);
}

namespace {
// Disables a button while a handler runs and enables it again however the handler ends.
class DisabledWhileRunning {
public:
    explicit DisabledWhileRunning(QPushButton *button) : m_button(button)
    {
        m_button->setEnabled(false);
    }
    ~DisabledWhileRunning() { m_button->setEnabled(true); }
    DisabledWhileRunning(const DisabledWhileRunning &) = delete;
    DisabledWhileRunning &operator=(const DisabledWhileRunning &) = delete;

private:
    QPushButton *m_button;
};
} // namespace

void VendorNotes::show(bool editing)
{
    const DisabledWhileRunning running(m_w.cmdnotes);
    if (!m_current.isSet())
        return;
    const long long number = m_current.number();
    m_w.grid1->hide();
    m_w.grid2->hide();
    m_w.frasplit->hide();
    m_w.cmdsplit->setText(QStringLiteral("Show Split Detail"));
    // The caption over the box names what it shows, not the list it took the place of.
    m_w.gridcaption->setText(QStringLiteral("Notes"));
    m_w.notes->show();
    QSqlQuery q = m_dbs.select(QStringLiteral("ap.mdb"),
                               QStringLiteral("select * from vendnotes where vendnumber = ") +
                                   QString::number(number));
    m_recalledVendor = number;
    m_recalled = q.next() ? q.value(QStringLiteral("notes")) : QVariant();
    if (!q.isValid()) {
        m_w.notes->clear();
        if (editing) {
            m_w.notes->setEnabled(true);
            m_w.notes->setFocus();
        }
    } else {
        m_w.notes->setPlainText(m_recalled.toString());
    }
    q.finish();
    QCoreApplication::processEvents();
}

void VendorNotes::focused()
{
    Colours::setEntryBackground(m_w.notes, Colours::yellow);
}

void VendorNotes::left()
{
    Colours::setEntryBackground(m_w.notes, Colours::white);
}

void VendorNotes::keyTyped()
{
    m_changed = true;
}

QString VendorNotes::text() const
{
    return m_w.notes->toPlainText();
}

void VendorNotes::forget()
{
    m_changed = false;
    m_recalledVendor = -1;
    m_recalled = QVariant();
}

void VendorNotes::reloadIfShown(bool editing)
{
    forget();
    if (!m_w.notes->isHidden())
        show(editing);
}

bool VendorNotes::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_w.notes) {
        if (event->type() == QEvent::FocusIn)
            focused();
        else if (event->type() == QEvent::FocusOut)
            left();
        else if (event->type() == QEvent::KeyPress &&
                 !static_cast<QKeyEvent *>(event)->text().isEmpty())
            keyTyped();
    }
    return QObject::eventFilter(watched, event);
}
