#pragma once

#include "keysend/QtKeyStroke.h"

#include <QList>
#include <QString>

struct KeyEvent;
class LockKeys;

// Turns key events into the Qt key events a keyboard gives for them:
// - a lock key going down toggles its state in the lock keys it is given;
// - a letter types upper case when Shift or CapsLock (not both) is on;
// - a keypad digit types its digit only while NumLock is on;
// - a key pressed with CONTROL or ALT types no text;
// - keypad digits pressed while ALT alone is held, NumLock on, type the character of their
//   code once ALT goes up: the OEM code page (437), or the ANSI code page (1252) when the first
//   digit is 0; the code is taken modulo 256 and code 0 or a control character types nothing.
class KeyTranslator {
public:
    explicit KeyTranslator(LockKeys &locks);

    void add(const KeyEvent &event);
    // The key down and up with no modifiers held.
    void tap(int code);

    const QList<QtKeyStroke> &strokes() const { return m_strokes; }

private:
    QtKeyStroke strokeFor(const KeyEvent &event) const;
    void followAltComposition(const KeyEvent &event);
    void typeComposedCharacter();

    LockKeys &m_locks;
    QList<QtKeyStroke> m_strokes;
    bool m_composing = false;
    QString m_composedDigits;
};
