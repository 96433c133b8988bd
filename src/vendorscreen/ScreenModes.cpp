#include "vendorscreen/ScreenModes.h"

#include "common/Dialogs.h"
#include "common/ErrorReport.h"
#include "common/Numbers.h"
#include "common/Prompts.h"
#include "common/Session.h"
#include "common/StatusLine.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "lists/CurrentVendor.h"
#include "vendorscreen/ScreenState.h"
#include "vendorscreen/VendorFieldBoxes.h"

#include <QCoreApplication>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QTableView>

#include <cmath>
#include <optional>

ScreenModes::ScreenModes(const Widgets &widgets, const VendorFieldBoxes &fields, Sources sources,
                         Display display, const CurrentVendor &current, ScreenState &state,
                         Session &session, Dialogs &dialogs, StatusLine &status, QObject *parent) :
    QObject(parent),
    m_w(widgets), m_fields(fields), m_sources(sources), m_display(std::move(display)),
    m_current(current), m_state(state), m_session(session), m_dialogs(dialogs), m_status(status)
{
}

void ScreenModes::whileDisabled(QPushButton *button, const std::function<void()> &work)
{
    m_applied = false;
    button->setEnabled(false);
    try {
        work();
    } catch (const DbError &error) {
        showErrorReport(m_dialogs, error);
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
    using O = std::optional<bool>;
    struct Row {
        QPushButton *button;
        O lookup, browse, addVendor, modify;
    };
    const Row rows[] = {
        {m_w.cmdadd, true, false, true, false},  {m_w.cmdlookup, true, false, {}, {}},
        {m_w.cmdprevious, false, true, {}, {}},  {m_w.cmdnext, false, true, {}, {}},
        {m_w.cmdmodify, false, true, {}, true},  {m_w.cmdsave, false, false, true, true},
        {m_w.cmddelete, false, false, {}, true}, {m_w.cmdcancel, true, true, true, true},
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
        m_w.notes->setEnabled(false);
        m_w.notes->hide();
    } else if (mode != Mode::Browse) {
        m_w.notes->setEnabled(true);
    }
}

bool ScreenModes::mayEdit()
{
    if (m_session.userLevel >= m_session.accessLevel[1])
        return true;
    Prompts::showAccessDenied(m_dialogs);
    return false;
}

void ScreenModes::add()
{
    whileDisabled(m_w.cmdadd, [this] {
        if (!mayEdit())
            return;
        if (m_state.modifyFlag == 1) {
            m_dialogs.message(QStringLiteral("You are currently in edit mode. You must close\n"
                                             "the current screen before you can add a new vendor."),
                              Dialogs::Icon::Information, QStringLiteral("Oops..."));
            return;
        }
        emit userFieldsClosing();
        m_w.fralookup->hide();
        m_state.addFlag = 1;
        m_fields.frame()->setEnabled(true);
        m_fields.blank();
        RecordSource &source = m_sources.vendor;
        source.setDatabaseName(QStringLiteral("ap.mdb"));
        source.setRecordSource(QStringLiteral("vendors"));
        source.refresh();
        m_fields.box(VendorField::Number)->setFocus();
        applyButtons(Mode::AddVendor);
        for (const VendorFieldInfo &info : VendorFields::all()) {
            if (!info.zeroOnAdd)
                continue;
            m_fields.box(info.field)->setEnabled(true);
            m_fields.setText(info.field, QStringLiteral("0"));
        }
        m_state.fieldsAtEditStart = m_fields.texts();
    });
}

void ScreenModes::modify()
{
    whileDisabled(m_w.cmdmodify, [this] {
        if (!mayEdit())
            return;
        if (m_state.addFlag == 1) {
            m_dialogs.message(
                QStringLiteral("You are currently in add vendor mode. You must close\n"
                               "the current screen before you can edit a vendor."),
                Dialogs::Icon::Information, QStringLiteral("Oops..."));
            return;
        }
        emit userFieldsClosing();
        m_fields.frame()->setEnabled(true);
        m_status.show(QStringLiteral("Click on a field to edit"));
        m_state.modifyFlag = 1;
        // Figures kept by the system are for senior users only.
        m_fields.setKeptFiguresEnabled(m_session.userLevel > 90);
        applyButtons(Mode::Modify);
        m_state.fieldsAtEditStart = m_fields.texts();
    });
}

void ScreenModes::cancel()
{
    whileDisabled(m_w.cmdcancel, [this] {
        emit userFieldsClosing();
        m_w.fralookup->hide();
        m_w.frasplit->hide();
        // The fields are locked and emptied in one paint: painting them locked with the old
        // vendor in between, for the moment of the yield below, shows nothing anyone could see.
        QWidget *frame = m_fields.frame();
        frame->setUpdatesEnabled(false);
        const auto paintOnce = qScopeGuard([frame] { frame->setUpdatesEnabled(true); });
        frame->setEnabled(false);
        m_fields.setKeptFiguresEnabled(false);
        m_w.grid1->hide();
        applyButtons(Mode::Lookup);
        release(m_sources.vendor);
        release(m_sources.invoices);
        release(m_sources.checks);
        QCoreApplication::processEvents();
        m_fields.blank();
        frame->setUpdatesEnabled(true);
        m_state.addFlag = 0;
        m_state.modifyFlag = 0;
        emit screenCleared();
    });
    emit lookupRequested();
}

void ScreenModes::move(bool forward)
{
    emit userFieldsClosing();
    try {
        if (forward)
            m_sources.vendor.moveNext();
        else
            m_sources.vendor.movePrevious();
    } catch (const DbError &) {
        // Already past an end: the display below reports that there is no record.
    }
    // The vendor shown is browsed and its note follows it (the window wires both to the
    // vendor on the screen); the open list follows the move.
    if (m_display.showCurrent())
        emit moved();
}

void ScreenModes::vendorShown()
{
    if (m_state.editing()) {
        m_state.addFlag = 0;
        m_state.modifyFlag = 0;
        m_fields.frame()->setEnabled(false);
        m_fields.setKeptFiguresEnabled(false);
    }
    applyButtons(Mode::Browse);
    m_w.notes->setEnabled(false);
}

void ScreenModes::showAgain()
{
    if (m_state.addFlag == 1 || !m_sources.vendor.isBound() || m_current.numberText().isEmpty())
        return;
    if (!m_display.showAgain())
        return;
    if (m_state.modifyFlag == 1)
        m_state.fieldsAtEditStart = m_fields.texts();
}

bool ScreenModes::hasUnsavedEdit(bool notesTyped) const
{
    if (!m_state.editing())
        return false;
    return notesTyped || m_fields.texts() != m_state.fieldsAtEditStart;
}

void ScreenModes::next()
{
    whileDisabled(m_w.cmdnext, [this] { move(true); });
}

void ScreenModes::previous()
{
    whileDisabled(m_w.cmdprevious, [this] { move(false); });
}

void ScreenModes::remove()
{
    whileDisabled(m_w.cmddelete, [this] {
        if (!mayEdit())
            return;
        // Only the YTD purchases and the current unpaid figure stand in the way.
        for (VendorField figure : {VendorField::YtdPurchases, VendorField::CurrentUnpaid}) {
            if (std::fabs(Numbers::leading(m_fields.text(figure))) >= 0.01) {
                m_dialogs.message(
                    QStringLiteral("This account has active YTD purchases and/or unpaid "
                                   "invoices and \r\ncannot be deleted until the year has "
                                   "closed and balances are zero. "),
                    Dialogs::Icon::Critical, QStringLiteral("Delete Vendor"));
                return;
            }
        }
        m_session.lastYesNo =
            m_dialogs.yesNo(QStringLiteral("Click YES to finish the deletion, NO to cancel"),
                            QStringLiteral("Delete Vendor?"), Dialogs::No);
        if (m_session.lastYesNo == Dialogs::No)
            return;
        m_sources.vendor.deleteCurrent();
        cancel();
    });
}
