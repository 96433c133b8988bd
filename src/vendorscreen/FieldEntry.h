#pragma once

#include <QObject>

#include <functional>

class QLineEdit;
class VendorWindow;

// What happens as the user moves through the 24 vendor fields: the highlight, the prompt in the
// status line, Enter moving on like Tab, function-key texts, the lookup programs, the ZIP code
// in capitals, the G/L account check and the refusal of a vendor number already taken.
class FieldEntry : public QObject {
    Q_OBJECT

public:
    using KeySending = std::function<void(const QString &keys)>;

    FieldEntry(VendorWindow &window, KeySending sendKeys);

    // The status-line prompt of a field; empty for the fields that have none.
    static QString prompt(int index);

    void focused(int index);
    // Returns true when the key was used up.
    bool keyDown(int index, int key);
    // Returns true when the character was used up.
    bool typed(int index, QChar character);
    void left(int index);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void holdFocus(int index);
    VendorWindow &m_window;
    KeySending m_sendKeys;
};
