#include "vendorscreen/ScreenModes.h"

#include "common/Services.h"
#include "common/Session.h"
#include "common/Dialogs.h"
#include "common/ErrorReport.h"
#include "common/Prompts.h"
#include "common/Numbers.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "lists/InvoiceLists.h"
#include "vendorscreen/VendorDisplay.h"
#include "vendorscreen/VendorWindow.h"

#include <QCoreApplication>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>

#include <cmath>
#include <optional>

void ScreenModes::whileDisabled(QPushButton *button, const std::function<void()> &work)
{
    m_applied = false;
    button->setEnabled(false);
    try {
        work();
    } catch (const DbError &error) {
        showErrorReport(m_window.services().dialogs, error);
    }
    // A handler that changed the mode leaves the button as the mode wants it.
    if (!m_applied)
        button->setEnabled(true);
}

namespace {
void release(RecordSource &source)
{
    source.setDatabaseName(QString());
    source.setRecordSource(QString());
    source.refresh();
}
} // namespace

void ScreenModes::applyButtons(Mode mode)
{
    m_applied = true;
    const auto &c = m_window.controls();
    using O = std::optional<bool>;
    struct Row {
        QPushButton *button;
        O lookup, browse, addVendor, modify;
    };
    const Row rows[] = {
        {c.cmdadd, true, false, true, false},  {c.cmdlookup, true, false, {}, {}},
        {c.cmdprevious, false, true, {}, {}},  {c.cmdnext, false, true, {}, {}},
        {c.cmdmodify, false, true, {}, true},  {c.cmdsave, false, false, true, true},
        {c.cmddelete, false, false, {}, true}, {c.cmdcancel, true, true, true, true},
    };
    for (const Row &row : rows) {
        const O state = mode == Mode::Lookup      ? row.lookup
                        : mode == Mode::Browse    ? row.browse
                        : mode == Mode::AddVendor ? row.addVendor
                                                  : row.modify;
        if (state)
            row.button->setEnabled(*state);
    }
    if (mode == Mode::Lookup) {
        c.notes->setEnabled(false);
        c.notes->hide();
    } else if (mode != Mode::Browse) {
        c.notes->setEnabled(true);
    }
}

bool ScreenModes::mayEdit()
{
    const Session &session = m_window.session();
    if (session.userLevel >= session.accessLevel[1])
        return true;
    Prompts::showAccessDenied(m_window.services().dialogs);
    return false;
}

void ScreenModes::add()
{
    whileDisabled(m_window.controls().cmdadd, [this] {
        const auto &c = m_window.controls();
        Dialogs &dialogs = m_window.services().dialogs;
        ScreenState &state = m_window.state();
        if (!mayEdit())
            return;
        if (state.modifyFlag == 1) {
            dialogs.message(QStringLiteral("You are currently in edit mode. You must close\n"
                                           "the current screen before you can add a new vendor."),
                            Dialogs::Icon::Information, QStringLiteral("Oops..."));
            return;
        }
        m_window.closeUserFields();
        c.fralookup->hide();
        state.addFlag = 1;
        c.fravendor->setEnabled(true);
        m_window.blankFields();
        RecordSource &source = m_window.datavendor();
        source.setDatabaseName(QStringLiteral("ap.mdb"));
        source.setRecordSource(QStringLiteral("vendors"));
        source.refresh();
        c.Text1[0]->setFocus();
        applyButtons(Mode::AddVendor);
        for (int i = 11; i <= 16; ++i) {
            c.Text1[i]->setEnabled(true);
            c.Text1[i]->setText(QStringLiteral("0"));
        }
    });
}

void ScreenModes::modify()
{
    whileDisabled(m_window.controls().cmdmodify, [this] {
        const auto &c = m_window.controls();
        ScreenState &state = m_window.state();
        if (!mayEdit())
            return;
        if (state.addFlag == 1) {
            m_window.services().dialogs.message(
                QStringLiteral("You are currently in add vendor mode. You must close\n"
                               "the current screen before you can edit a vendor."),
                Dialogs::Icon::Information, QStringLiteral("Oops..."));
            return;
        }
        m_window.closeUserFields();
        c.fravendor->setEnabled(true);
        m_window.setStatus(QStringLiteral("Click on a field to edit"));
        state.modifyFlag = 1;
        // Figures kept by the system are for senior users only.
        const bool senior = m_window.session().userLevel > 90;
        for (int i = 13; i <= 16; ++i)
            c.Text1[i]->setEnabled(senior);
        applyButtons(Mode::Modify);
    });
}

void ScreenModes::cancel()
{
    whileDisabled(m_window.controls().cmdcancel, [this] {
        const auto &c = m_window.controls();
        m_window.closeUserFields();
        c.fralookup->hide();
        c.frasplit->hide();
        c.fravendor->setEnabled(false);
        for (int i = 13; i <= 16; ++i)
            c.Text1[i]->setEnabled(false);
        c.grid1->hide();
        applyButtons(Mode::Lookup);
        release(m_window.datavendor());
        release(m_window.datainvoice());
        release(m_window.datachecks());
        QCoreApplication::processEvents();
        m_window.blankFields();
        m_window.state().addFlag = 0;
        m_window.state().modifyFlag = 0;
        m_window.state().notesChanged = 0;
        m_window.state().notesVendor = -1;
        m_window.state().notesRecalled = QVariant();
    });
    m_window.openLookup();
}

void ScreenModes::move(bool forward)
{
    m_window.closeUserFields();
    try {
        if (forward)
            m_window.datavendor().moveNext();
        else
            m_window.datavendor().movePrevious();
    } catch (const DbError &) {
        // Already past an end: the display below reports that there is no record.
    }
    if (!m_window.display().showCurrent())
        return;
    m_window.lists().refreshOpenList();
}

void ScreenModes::next()
{
    whileDisabled(m_window.controls().cmdnext, [this] { move(true); });
}

void ScreenModes::previous()
{
    whileDisabled(m_window.controls().cmdprevious, [this] { move(false); });
}

void ScreenModes::remove()
{
    whileDisabled(m_window.controls().cmddelete, [this] {
        const auto &c = m_window.controls();
        Dialogs &dialogs = m_window.services().dialogs;
        if (!mayEdit())
            return;
        // Only the YTD purchases and the current unpaid figure stand in the way.
        for (int i : {13, 14}) {
            if (std::fabs(Numbers::leading(c.Text1[i]->text())) >= 0.01) {
                dialogs.message(
                    QStringLiteral("This account has active YTD purchases and/or unpaid "
                                   "invoices and \r\ncannot be deleted until the year has "
                                   "closed and balances are zero. "),
                    Dialogs::Icon::Critical, QStringLiteral("Delete Vendor"));
                return;
            }
        }
        m_window.session().lastYesNo =
            dialogs.yesNo(QStringLiteral("Click YES to finish the deletion, NO to cancel"),
                          QStringLiteral("Delete Vendor?"));
        if (m_window.session().lastYesNo == Dialogs::No)
            return;
        m_window.datavendor().deleteCurrent();
        cancel();
    });
}
