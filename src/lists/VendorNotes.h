#pragma once

class VendorWindow;

// The vendor's free-text note, shown in place of the lists; saving it is part of the save.
class VendorNotes {
public:
    explicit VendorNotes(VendorWindow &window) : m_window(window) {}

    void show();
    // The notes box's own events.
    void focused();
    void left();
    void keyTyped();

private:
    VendorWindow &m_window;
};
