#pragma once

#include <QSqlRecord>
#include <QString>
#include <QVariant>

// The vendor screen's own values, shared by its areas while the window is open.
struct ScreenState {
    // At most one of the two is set; both clear in the lookup and browse modes.
    int addFlag = 0;
    int modifyFlag = 0;

    // The open-invoice totals computed last (they outlive one display, on purpose).
    double openTotal = 0.0;
    double yearTotal = 0.0;

    // The last lookup: its statement and, for a lookup by number, the number.
    QString lastLookupStatement;
    long lastLookupNumber = 0;

    // Set by any key typed in the notes box.
    int notesChanged = 0;
    // The notes as they were read when they were shown, and whose they were (-1: none shown),
    // so that a save never writes over notes another user changed meanwhile.
    long long notesVendor = -1;
    QVariant notesRecalled;
    // While a save runs (it may wait for another user with the window painted).
    bool saving = false;

    // Errors met by saves since the window opened; never reset, so all saves share the budget.
    int saveRetryCount = 0;

    // The vendor row as it was read when the vendor was shown, for the multi-user check.
    QSqlRecord recalled;

    // The list under the vendor: 1 unpaid invoices, 2 paid invoices, 3 checks (0 none yet).
    int listKind = 0;
    long listVendor = 0;
    QString listQuery;
};
