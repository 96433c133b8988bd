#pragma once

#include <QObject>

struct QtKeyStroke;

// Posts key strokes to itself and, as each one arrives, sends it as a QKeyEvent to the widget
// that has the focus at that moment.
class KeyDelivery final : public QObject {
public:
    void post(const QtKeyStroke &stroke);
    // Delivers the strokes posted and not yet delivered.
    void deliverPosted();

    bool event(QEvent *event) override;
};
