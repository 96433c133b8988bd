#pragma once

#include "common/PassProgress.h"
#include "support/VendorScreen.h"

#include <QAction>
#include <QGroupBox>
#include <QProgressBar>

#include <functional>

// Counts a pass's steps and runs a piece of work at one of them (another user's write between
// two records, say).
class RecordingProgress : public PassProgress {
public:
    int total = -1;
    int last = 0;
    int ended = 0;
    // The work runs once, at the first advance that reaches `at` (a pass advances a batch
    // of records at a time).
    int at = -1;
    std::function<void()> work;
    void begin(int count) override { total = count; }
    void advance(int done) override
    {
        last = done;
        if (at > 0 && done >= at && work) {
            at = -1;
            work();
        }
    }
    void end() override { ++ended; }
};

// The vendor screen on a few vendors and invoices, with the menu entries at hand.
class UtilitiesFixture : public VendorScreen {
protected:
    void menu(const char *name)
    {
        module.window->action(QString::fromLatin1(name))->trigger();
        QCoreApplication::processEvents();
    }
    void invoice(int vendor, double amount, int date, double checkAmount = 0, int checkDate = 0)
    {
        folder.exec("ap.mdb", QStringLiteral("insert into invoices (vendnumber, invnumber, "
                                             "invamount, invdate, invcheckamount, invcheckdate, "
                                             "invstatus) values (%1, 'I', %2, %3, %4, %5, 1)")
                                  .arg(vendor)
                                  .arg(amount)
                                  .arg(date)
                                  .arg(checkAmount)
                                  .arg(checkDate));
    }
    double column(int vendor, const char *name) { return vendorColumn(vendor, name).toDouble(); }
};
