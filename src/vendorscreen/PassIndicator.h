#pragma once

#include "common/PassProgress.h"

#include <QElapsedTimer>
#include <QObject>

class QProgressBar;
class QWidget;

// The progress bar beside the status line during a long pass: the number done and the number
// to do, the window painted a few times a second, and the user's clicks and keys held off so
// that no second pass starts meanwhile.
class PassIndicator : public QObject, public PassProgress {
    Q_OBJECT

public:
    PassIndicator(QWidget *window, QProgressBar *bar);

    void begin(int total) override;
    void advance(int done) override;
    void end() override;
    bool running() const { return m_running; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *m_window;
    QProgressBar *m_bar;
    QElapsedTimer m_painted;
    bool m_running = false;
};
