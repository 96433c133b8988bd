#pragma once

#include <QObject>

// Eats Enter and Return pressed in a list grid, so that neither the grid nor the window around it
// acts on them.
class EnterSwallower : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
