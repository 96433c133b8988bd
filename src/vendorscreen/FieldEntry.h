#pragma once

#include "vendorscreen/VendorFields.h"

#include <QObject>

#include <functional>

class AccountLookup;
class CurrentVendor;
class Dialogs;
class ProgramRunner;
class QLineEdit;
class RecordSource;
class StatusLine;
class VendorFieldBoxes;
struct ScreenState;
struct Session;

// What happens as the user moves through the 24 vendor fields: the highlight, the prompt in the
// status line, Enter moving on like Tab, function-key texts, the lookup programs, the ZIP code
// in capitals, the G/L account check and the refusal of a vendor number already taken.
class FieldEntry : public QObject {
    Q_OBJECT

public:
    using KeySending = std::function<void(const QString &keys)>;

    // accounts: the chart of accounts the G/L field is checked against; current: the vendor on
    // the screen, whose row a modify finds again.
    FieldEntry(const VendorFieldBoxes &fields, RecordSource &vendors, const CurrentVendor &current,
               ScreenState &state, Session &session, Dialogs &dialogs, AccountLookup &accounts,
               ProgramRunner &programs, StatusLine &status, KeySending sendKeys,
               QObject *parent = nullptr);

    void focused(VendorField field);
    // Returns true when the key was used up.
    bool keyDown(VendorField field, int key);
    // Returns true when the character was used up.
    bool typed(VendorField field, QChar character);
    void left(VendorField field);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void holdFocus(VendorField field);
    // Runs the picker (venlookp, gllookup) and puts the number it hands back into the field.
    void takePicked(VendorField field, const QString &picker);
    void rebindToWholeFile();
    void refuseNumberTaken();

    const VendorFieldBoxes &m_fields;
    RecordSource &m_vendors;
    const CurrentVendor &m_current;
    ScreenState &m_state;
    Session &m_session;
    Dialogs &m_dialogs;
    AccountLookup &m_accounts;
    ProgramRunner &m_programs;
    StatusLine &m_status;
    KeySending m_sendKeys;
};
