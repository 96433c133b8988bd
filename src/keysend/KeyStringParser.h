#pragma once

#include "keysend/KeyEvent.h"

#include <QList>
#include <QStringView>

// Reads a key string in brace notation into key-down and key-up events:
//   a plain character   its key on the layout, with Shift when the layout needs it
//   "+" "^" "%"         hold SHIFT, CONTROL, ALT for the next key, or for the whole group
//                       when "(" follows; released after that key or after the ")"
//   "(" ... ")"         a group; groups may nest
//   "{NAME}"            a named key (KeyNames), upper or lower case; an unknown name sends no
//                       key and drops the modifiers waiting for it
//   "{NAME n}"          the named key n times (at most maxRepeat); "{NAME 0}" sends nothing
//   "~"                 ENTER
//   "{+}" "{^}" "{%}" "{~}" "{{}" "{}}" "{(}" "{)}"   the character itself, also with a count
// Malformed strings never fail: a "{" without its "}" ends the string with no key, a ")" or
// "}" with nothing to close is ignored, groups still open at the end are closed, and modifiers
// that no key follows are never pressed. Every key pressed is released.
class KeyStringParser {
public:
    static constexpr int maxRepeat = 1000;

    static QList<KeyEvent> parse(QStringView keys);

private:
    explicit KeyStringParser(QStringView keys);

    void run();
    void readBraces();
    void addPending(int modifierCode);
    void openGroup();
    void closeGroup();
    void sendKey(int code, QChar character, int times);
    void sendCharacter(QChar character, int times);
    void press(const QList<int> &modifierCodes);
    void release(const QList<int> &modifierCodes);
    void append(KeyEvent::Type type, int code, QChar character, Qt::KeyboardModifiers extra = {});

    QStringView m_keys;
    qsizetype m_pos = 0;
    QList<int> m_pending;       // modifiers waiting for the next key or group
    QList<QList<int>> m_groups; // for each open group, the modifiers it pressed
    Qt::KeyboardModifiers m_held;
    QList<KeyEvent> m_events;
};
