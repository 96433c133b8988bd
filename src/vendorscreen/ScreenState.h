#pragma once

#include <QString>
#include <QStringList>

// The vendor screen's own values, shared by its areas while the window is open.
struct ScreenState {
    // At most one of the two is set; both clear in the lookup and browse modes.
    int addFlag = 0;
    int modifyFlag = 0;
    bool editing() const { return addFlag == 1 || modifyFlag == 1; }

    // The last lookup: its statement and, for a lookup by number, the number.
    QString lastLookupStatement;
    long lastLookupNumber = 0;

    // While a save runs (it may wait for another user with the window painted).
    bool saving = false;

    // Errors met by saves since the window opened; never reset, so all saves share the budget.
    int saveRetryCount = 0;

    // The fields' texts when Add or Modify began: what differs is an edit not yet saved.
    QStringList fieldsAtEditStart;
};
