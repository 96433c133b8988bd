#pragma once

#include <QString>

class QLineEdit;

// The one-line status text at the foot of the vendor screen (its prompts and progress texts).
// Areas are handed this rather than the window, so that they can say what they do.
class StatusLine {
public:
    explicit StatusLine(QLineEdit *line) : m_line(line) {}

    // Shows the text and repaints at once: it is often followed by a long step.
    void show(const QString &text);
    // Sets the text; it is painted with the next round of events (for texts that change often).
    void set(const QString &text);
    QString text() const;

private:
    QLineEdit *m_line;
};
