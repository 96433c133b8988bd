#pragma once

#include <QString>

class QAction;
class QMenu;

// What start-up and closing do to the module's main window, and nothing more: they are handed
// this, not the window.
class StartupView {
public:
    virtual ~StartupView() = default;

    virtual void setTopmost(bool on) = 0;
    virtual bool isTopmost() const = 0;
    virtual void centreOnScreen() = 0;
    virtual void setBackgroundColour(int bgr) = 0;
    // A Canadian company's addresses: "Province" and "Code" for state and ZIP.
    virtual void useCanadianLabels() = 0;
    virtual void setCaption(const QString &caption) = 0;
    // The grids' columns keep their design-time shares of the width from now on.
    virtual void rememberGridWidths() = 0;
    // A menu entry or menu by its name ("mnurecalc", "eoy"); nullptr when there is none.
    virtual QAction *action(const QString &name) const = 0;
    virtual QMenu *menu(const QString &name) const = 0;
    virtual void showScreen() = 0;
    virtual void hideScreen() = 0;

    // The read-only snapshot of the chart of accounts the split panel names accounts from.
    virtual void openAccountNames() = 0;
    virtual void closeAccountNames() = 0;
    // Lets go of every record source and list cursor of the screen.
    virtual void releaseRecordSources() = 0;
    // Unloads the user-defined information window when it is open.
    virtual void closeUserFields() = 0;
    virtual void openLookup() = 0;

    // True from the end of start-up until the closing steps have run.
    virtual bool started() const = 0;
    virtual void setStarted(bool on) = 0;
};
