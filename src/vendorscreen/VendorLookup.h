#pragma once

#include <QString>

class VendorWindow;

// The lookup panel: seven ways to find a vendor, each one statement that the vendor record
// source is bound to.
class VendorLookup {
public:
    explicit VendorLookup(VendorWindow &window) : m_window(window) {}

    // The statement a method builds; the value is the entry text after the apostrophe treatment.
    static QString statement(int method, const QString &value);
    // Doubles the first apostrophe only ("O'Br'ien" becomes "O''Br'ien").
    static QString doubleFirstApostrophe(const QString &text);
    // The statement as it is run: text values with every apostrophe of the typed entry doubled,
    // so that no entry can change the statement's structure.
    static QString safeStatement(int method, const QString &typed);

    void open();
    void go();
    void cancelLookup();
    // The entry field's own events.
    void entryFocused();
    void entryLeft();
    void entryKey(int key);

private:
    int chosenMethod() const;
    VendorWindow &m_window;
};
