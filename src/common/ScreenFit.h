#pragma once

#include <QRect>
#include <QString>

class QWidget;

// Windows that lie wholly on the part of the screen the desktop leaves free (no title bar above
// the top edge, no button under a panel), at any scaling, and that come back where the user left
// them.
namespace ScreenFit {

// The window rectangle `frame` moved, and made smaller where it is larger, so that it lies
// wholly in `area`; `minimum` is the smallest frame size the window can take.
QRect within(const QRect &frame, const QRect &area, const QSize &minimum = QSize());
// Fits the window, its frame included, into the available area of its screen now.
void fit(QWidget *window);
// Fits the window again whenever it is shown or resized, until it is destroyed.
void keepOnScreen(QWidget *window);
// Puts the window where `wanted` says (its frame's rectangle) where that lies on the available
// area, and otherwise as close to it as it fits.
void place(QWidget *window, const QRect &wanted);
// Gives the window the size and place it had when remember() last saw it (under `key` in the
// user's settings), or `fallback` centred on the screen; either way wholly on the screen.
void restore(QWidget *window, const QString &key, const QSize &fallback);
void remember(const QWidget *window, const QString &key);

} // namespace ScreenFit
