#include "keysend/KeyTranslator.h"

#include "keysend/CodePages.h"
#include "keysend/KeyEvent.h"
#include "keysend/KeyNames.h"
#include "keysend/KeyboardLayout.h"
#include "keysend/LockKeys.h"

namespace {

bool isLockKey(int code)
{
    return code == KeyNames::CapsLock || code == KeyNames::NumLock || code == KeyNames::ScrollLock;
}

bool isKeypadDigit(int code)
{
    return code >= KeyNames::Numpad0 && code <= KeyNames::Numpad9;
}

Qt::Key keyOfCharacter(QChar ch)
{
    return static_cast<Qt::Key>(ch.toUpper().unicode());
}

QChar withCase(QChar ch, bool upper)
{
    return upper ? ch.toUpper() : ch.toLower();
}

// The control characters of the BACKSPACE, TAB, ENTER and ESC keys.
bool isControlKeyCode(int code)
{
    return code == KeyNames::Backspace || code == KeyNames::Tab || code == KeyNames::Enter ||
           code == KeyNames::Escape;
}

} // namespace

KeyTranslator::KeyTranslator(LockKeys &locks) : m_locks(locks) {}

void KeyTranslator::add(const KeyEvent &event)
{
    const bool down = event.type == KeyEvent::Type::Down;
    if (down && isLockKey(event.code))
        m_locks.toggle(event.code);
    m_strokes.append(strokeFor(event));
    followAltComposition(event);
}

void KeyTranslator::tap(int code)
{
    add(KeyEvent{KeyEvent::Type::Down, code, {}, {}});
    add(KeyEvent{KeyEvent::Type::Up, code, {}, {}});
}

QtKeyStroke KeyTranslator::strokeFor(const KeyEvent &event) const
{
    const bool shift = event.modifiers.testFlag(Qt::ShiftModifier);
    const bool typesText = !(event.modifiers & (Qt::ControlModifier | Qt::AltModifier));
    const bool capsLock = m_locks.isOn(KeyNames::CapsLock);

    QtKeyStroke stroke;
    stroke.press = event.type == KeyEvent::Type::Down;
    stroke.modifiers = event.modifiers;

    if (event.character.isNull()) {
        const KeyNames::QtKey qtKey = KeyNames::qtKey(event.code);
        stroke.key = qtKey.key;
        stroke.modifiers |= qtKey.modifiers;
        QChar typed;
        if (isKeypadDigit(event.code)) {
            if (m_locks.isOn(KeyNames::NumLock))
                typed = QChar(u'0' + (event.code - KeyNames::Numpad0));
        } else {
            typed = KeyboardLayout::characterFor(event.code, shift);
        }
        if (typesText && !typed.isNull())
            stroke.text = typed;
        return stroke;
    }

    QChar typed = event.character;
    if (event.code != KeyNames::NoKey)
        typed = KeyboardLayout::characterFor(event.code, shift);
    else if (shift)
        typed = typed.toUpper();
    if (typed.isLetter() && capsLock)
        typed = withCase(typed, !typed.isUpper());

    stroke.key =
        isControlKeyCode(event.code) ? KeyNames::qtKey(event.code).key : keyOfCharacter(typed);
    if (typesText)
        stroke.text = typed;
    return stroke;
}

void KeyTranslator::followAltComposition(const KeyEvent &event)
{
    const bool down = event.type == KeyEvent::Type::Down;
    if (event.code == KeyNames::Alt) {
        if (down) {
            m_composing = event.modifiers == Qt::NoModifier;
            m_composedDigits.clear();
        } else {
            if (m_composing)
                typeComposedCharacter();
            m_composing = false;
        }
        return;
    }
    if (!m_composing || !down)
        return;
    if (isKeypadDigit(event.code) && event.modifiers == Qt::AltModifier &&
        m_locks.isOn(KeyNames::NumLock)) {
        m_composedDigits += QChar(u'0' + (event.code - KeyNames::Numpad0));
    } else {
        m_composing = false;
    }
}

void KeyTranslator::typeComposedCharacter()
{
    if (m_composedDigits.isEmpty())
        return;
    int code = 0;
    for (const QChar digit : std::as_const(m_composedDigits))
        code = (code * 10 + digit.digitValue()) % 256;
    const bool ansi = m_composedDigits.front() == u'0';
    const QChar typed = ansi ? CodePages::fromAnsi(code) : CodePages::fromOem(code);
    if (typed.isNull() || typed.category() == QChar::Other_Control)
        return;
    const Qt::Key key = keyOfCharacter(typed);
    m_strokes.append(QtKeyStroke{true, key, {}, QString(typed)});
    m_strokes.append(QtKeyStroke{false, key, {}, QString(typed)});
}
