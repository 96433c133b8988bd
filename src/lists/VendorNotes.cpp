#include "lists/VendorNotes.h"

#include "common/Services.h"
#include "common/Colours.h"
#include "common/Numbers.h"
#include "data/Databases.h"
#include "vendorscreen/VendorWindow.h"

#include <QCoreApplication>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableView>

void VendorNotes::show()
{
    const auto &c = m_window.controls();
    c.cmdnotes->setEnabled(false);
    const long long number = Numbers::leadingWhole(c.Text1[0]->text());
    if (number < 1) {
        c.cmdnotes->setEnabled(true);
        return;
    }
    c.grid1->hide();
    c.grid2->hide();
    c.frasplit->hide();
    c.cmdsplit->setText(QStringLiteral("Show Split Detail"));
    c.notes->show();
    QSqlQuery q = m_window.services().databases.select(
        QStringLiteral("ap.mdb"),
        QStringLiteral("select * from vendnotes where vendnumber = ") + QString::number(number));
    ScreenState &state = m_window.state();
    state.notesVendor = number;
    state.notesRecalled = q.next() ? q.value(QStringLiteral("notes")) : QVariant();
    if (!q.isValid()) {
        c.notes->clear();
        if (state.modifyFlag == 1 || state.addFlag == 1) {
            c.notes->setEnabled(true);
            c.notes->setFocus();
        }
    } else {
        c.notes->setPlainText(state.notesRecalled.toString());
    }
    q.finish();
    QCoreApplication::processEvents();
    c.cmdnotes->setEnabled(true);
}

void VendorNotes::focused()
{
    Colours::setEntryBackground(m_window.controls().notes, Colours::yellow);
}

void VendorNotes::left()
{
    Colours::setEntryBackground(m_window.controls().notes, Colours::white);
}

void VendorNotes::keyTyped()
{
    m_window.state().notesChanged = 1;
}
