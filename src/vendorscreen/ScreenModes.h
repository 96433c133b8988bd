#pragma once

#include <functional>

class QPushButton;
class VendorWindow;

// The vendor screen's modes and the buttons along the top: Add, Modify, Cancel, Next,
// Previous and Delete, with the access checks and the wrong-mode messages.
class ScreenModes {
public:
    enum class Mode { Lookup, Browse, AddVendor, Modify };

    explicit ScreenModes(VendorWindow &window) : m_window(window) {}

    // The buttons' enabled state for a mode, all in one place; a button the mode leaves
    // "as before" keeps its state.
    void applyButtons(Mode mode);

    void add();
    void modify();
    void cancel();
    void next();
    void previous();
    void remove();

private:
    // Runs a button's work with the button disabled, so that a second click meanwhile is
    // ignored; a database failure gets the shared error report.
    void whileDisabled(QPushButton *button, const std::function<void()> &work);
    bool mayEdit();
    void move(bool forward);
    VendorWindow &m_window;
    bool m_applied = false;
};
