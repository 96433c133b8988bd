#include "keysend/KeySender.h"

#include "keysend/KeyDelivery.h"
#include "keysend/KeyNames.h"
#include "keysend/KeyStringParser.h"
#include "keysend/KeyTranslator.h"

#include <array>

namespace {
constexpr std::array<int, 3> lockCodes{KeyNames::CapsLock, KeyNames::NumLock, KeyNames::ScrollLock};
} // namespace

KeySender::KeySender(LockKeys *lockKeys) :
    m_lockKeys(lockKeys ? lockKeys : &m_ownLockKeys), m_delivery(std::make_unique<KeyDelivery>())
{
}

KeySender::~KeySender() = default;

void KeySender::sendKeys(const QString &keys, Delivery delivery)
{
    KeyTranslator translator(*m_lockKeys);

    QList<int> switchedOff;
    for (int code : lockCodes) {
        if (m_lockKeys->isOn(code)) {
            translator.tap(code);
            switchedOff.append(code);
        }
    }
    for (const KeyEvent &event : KeyStringParser::parse(keys))
        translator.add(event);
    for (int code : std::as_const(switchedOff)) {
        if (!m_lockKeys->isOn(code))
            translator.tap(code);
    }

    for (const QtKeyStroke &stroke : translator.strokes())
        m_delivery->post(stroke);
    if (delivery == Delivery::Delivered)
        m_delivery->deliverPosted();
}
