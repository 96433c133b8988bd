#pragma once

#include "keysend/LockKeys.h"

#include <QString>

#include <memory>

class KeyDelivery;

// Sends a key string (KeyStringParser) to the module's own widgets as key presses and
// releases. Each key goes to the widget that has the focus when the key arrives, so that
// "{TAB}abc" types "abc" into the field after the one that had the focus.
//
// CapsLock, NumLock and ScrollLock that are on are switched off (the lock key sent down and up)
// before the string and switched back on after it, so "abc" types lower case under CapsLock. A
// lock the string leaves off that was on is switched on again; a lock the string turns on that
// was off stays on.
//
// The lock states come from the LockKeys given, or from the sender's own RememberedLockKeys.
// Keys whose sender is destroyed before they arrive are dropped, and keys that arrive when no
// widget has the focus go nowhere. Use the sender on the thread of the widgets.
class KeySender {
public:
    enum class Delivery {
        Posted,   // return at once; the keys arrive when the event loop runs
        Delivered // deliver the keys, and any still waiting from earlier, before returning
    };

    // The lock keys are not owned and must outlive the sender; null for the sender's own.
    explicit KeySender(LockKeys *lockKeys = nullptr);
    ~KeySender();
    KeySender(const KeySender &) = delete;
    KeySender &operator=(const KeySender &) = delete;

    void sendKeys(const QString &keys, Delivery delivery = Delivery::Posted);

    LockKeys &lockKeys() { return *m_lockKeys; }

private:
    RememberedLockKeys m_ownLockKeys;
    LockKeys *m_lockKeys;
    std::unique_ptr<KeyDelivery> m_delivery;
};
