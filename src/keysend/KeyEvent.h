#pragma once

#include <QChar>
#include <Qt>

// One key going down or up, as read from a key string.
struct KeyEvent {
    enum class Type { Down, Up };

    Type type = Type::Down;
    // The virtual-key code (KeyNames); 0 for a typed character that no key of the layout gives.
    int code = 0;
    // The character, for a key typed as a plain character of the string; null for a named key
    // and for the modifier keys.
    QChar character;
    // SHIFT, CONTROL and ALT held when the event happens. A modifier's own key-down does not
    // count itself yet; its key-up still does. A plain character that the layout types with
    // Shift carries Shift here, without a separate Shift key.
    Qt::KeyboardModifiers modifiers;

    bool operator==(const KeyEvent &other) const = default;
};
