#pragma once

// The states of the lock keys CAPSLOCK (20), NUMLOCK (144) and SCROLLLOCK (145). The sender
// reads them before sending and toggles one each time it sends that lock key down.
class LockKeys {
public:
    virtual ~LockKeys() = default;
    virtual bool isOn(int code) const = 0;
    virtual void toggle(int code) = 0;
};

// Lock states kept in this object, all off at first. Qt cannot read the keyboard's lock lights
// portably, so the sender remembers what its own keys did. Other codes are never on.
class RememberedLockKeys final : public LockKeys {
public:
    bool isOn(int code) const override;
    void toggle(int code) override;
    void setOn(int code, bool on);

private:
    bool *stateOf(int code);

    bool m_capsLock = false;
    bool m_numLock = false;
    bool m_scrollLock = false;
};
