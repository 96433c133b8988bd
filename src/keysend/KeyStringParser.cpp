#include "keysend/KeyStringParser.h"

#include "keysend/KeyNames.h"
#include "keysend/KeyboardLayout.h"

#include <algorithm>
#include <utility>

namespace {

bool isLiteralInBraces(QChar c)
{
    return QStringView(u"+^%~{}()").contains(c);
}

bool allDigits(QStringView text)
{
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

int repeatCount(QStringView digits)
{
    // More digits than maxRepeat has can only mean more than maxRepeat.
    if (digits.size() > 4)
        return KeyStringParser::maxRepeat;
    return std::min(digits.toInt(), KeyStringParser::maxRepeat);
}

} // namespace

QList<KeyEvent> KeyStringParser::parse(QStringView keys)
{
    KeyStringParser parser(keys);
    parser.run();
    return parser.m_events;
}

KeyStringParser::KeyStringParser(QStringView keys) : m_keys(keys) {}

void KeyStringParser::run()
{
    while (m_pos < m_keys.size()) {
        const QChar c = m_keys.at(m_pos++);
        switch (c.unicode()) {
        case u'+':
            addPending(KeyNames::Shift);
            break;
        case u'^':
            addPending(KeyNames::Control);
            break;
        case u'%':
            addPending(KeyNames::Alt);
            break;
        case u'(':
            openGroup();
            break;
        case u')':
            closeGroup();
            break;
        case u'{':
            readBraces();
            break;
        case u'}':
            break;
        case u'~':
            sendKey(KeyNames::Enter, {}, 1);
            break;
        default:
            sendCharacter(c, 1);
            break;
        }
    }
    m_pending.clear();
    while (!m_groups.isEmpty())
        closeGroup();
}

void KeyStringParser::readBraces()
{
    // The name ends at the first "}" after its first character, so that "{}}" names "}".
    const qsizetype start = m_pos;
    const qsizetype end = start < m_keys.size() ? m_keys.indexOf(u'}', start + 1) : -1;
    if (end < 0) {
        m_pos = m_keys.size();
        m_pending.clear();
        return;
    }
    m_pos = end + 1;

    QStringView name = m_keys.sliced(start, end - start);
    int times = 1;
    const qsizetype blank = name.lastIndexOf(u' ');
    if (blank > 0 && allDigits(name.sliced(blank + 1))) {
        times = repeatCount(name.sliced(blank + 1));
        name = name.first(blank);
    }

    if (name.size() == 1 && isLiteralInBraces(name.front())) {
        sendCharacter(name.front(), times);
        return;
    }
    const int code = KeyNames::code(name);
    if (code == KeyNames::NoKey) {
        m_pending.clear();
        return;
    }
    sendKey(code, {}, times);
}

void KeyStringParser::addPending(int modifierCode)
{
    if (m_held.testFlag(KeyNames::modifierOf(modifierCode)) || m_pending.contains(modifierCode))
        return;
    m_pending.append(modifierCode);
}

void KeyStringParser::openGroup()
{
    const QList<int> modifiers = std::exchange(m_pending, {});
    press(modifiers);
    m_groups.append(modifiers);
}

void KeyStringParser::closeGroup()
{
    m_pending.clear();
    if (!m_groups.isEmpty())
        release(m_groups.takeLast());
}

void KeyStringParser::sendKey(int code, QChar character, int times)
{
    const QList<int> modifiers = std::exchange(m_pending, {});
    if (times <= 0)
        return;
    Qt::KeyboardModifiers layoutShift;
    if (!character.isNull() && KeyboardLayout::keyFor(character).shift)
        layoutShift = Qt::ShiftModifier;
    press(modifiers);
    for (int i = 0; i < times; ++i) {
        append(KeyEvent::Type::Down, code, character, layoutShift);
        append(KeyEvent::Type::Up, code, character, layoutShift);
    }
    release(modifiers);
}

void KeyStringParser::sendCharacter(QChar character, int times)
{
    sendKey(KeyboardLayout::keyFor(character).code, character, times);
}

void KeyStringParser::press(const QList<int> &modifierCodes)
{
    for (int code : modifierCodes) {
        append(KeyEvent::Type::Down, code, {});
        m_held |= KeyNames::modifierOf(code);
    }
}

void KeyStringParser::release(const QList<int> &modifierCodes)
{
    for (auto it = modifierCodes.crbegin(); it != modifierCodes.crend(); ++it) {
        append(KeyEvent::Type::Up, *it, {});
        m_held &= ~Qt::KeyboardModifiers(KeyNames::modifierOf(*it));
    }
}

void KeyStringParser::append(KeyEvent::Type type, int code, QChar character,
                             Qt::KeyboardModifiers extra)
{
    m_events.append(KeyEvent{type, code, character, m_held | extra});
}
