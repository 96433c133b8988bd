#pragma once

#include <QString>
#include <Qt>

// One Qt key event to deliver: press or release, the Qt key, its modifiers and the text typed.
struct QtKeyStroke {
    bool press = true;
    Qt::Key key = Qt::Key_unknown;
    Qt::KeyboardModifiers modifiers;
    QString text;

    bool operator==(const QtKeyStroke &other) const = default;
};
