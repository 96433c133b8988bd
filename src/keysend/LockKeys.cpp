#include "keysend/LockKeys.h"

#include "keysend/KeyNames.h"

bool RememberedLockKeys::isOn(int code) const
{
    switch (code) {
    case KeyNames::CapsLock:
        return m_capsLock;
    case KeyNames::NumLock:
        return m_numLock;
    case KeyNames::ScrollLock:
        return m_scrollLock;
    default:
        return false;
    }
}

void RememberedLockKeys::toggle(int code)
{
    setOn(code, !isOn(code));
}

void RememberedLockKeys::setOn(int code, bool on)
{
    if (bool *state = stateOf(code))
        *state = on;
}

bool *RememberedLockKeys::stateOf(int code)
{
    switch (code) {
    case KeyNames::CapsLock:
        return &m_capsLock;
    case KeyNames::NumLock:
        return &m_numLock;
    case KeyNames::ScrollLock:
        return &m_scrollLock;
    default:
        return nullptr;
    }
}
