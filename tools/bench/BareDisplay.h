#pragma once

#include <QString>

#include <array>
#include <memory>
#include <vector>

class Databases;
class QLabel;
class QLineEdit;
class QWidget;

// What a vendor step costs with nothing of the module in it, for the vendor screen's steps to be
// measured against: a plain window with the vendor frame's 24 captions and 24 entry boxes (the
// same kinds of widget, fonts and size), a connection of its own to the same company, one
// statement prepared once and run by key, the boxes filled and one repaint.
class BareDisplay {
public:
    // `like`: the vendor frame whose fonts and size the window copies.
    BareDisplay(const QWidget &like, const std::array<QString, 24> &captions);
    ~BareDisplay();
    BareDisplay(const BareDisplay &) = delete;
    BareDisplay &operator=(const BareDisplay &) = delete;

    QWidget *window() const { return m_window.get(); }
    std::vector<const QWidget *> fields() const { return {m_boxes.begin(), m_boxes.end()}; }
    // Reads the vendor by its number, fills the boxes and repaints the window once.
    void show(const QString &number);
    // Empties the boxes, as the module's lookup mode shows them, painted with the next events.
    void clear();
    // Types a text into a box, as the user editing the vendor does.
    void setText(int box, const QString &text);
    // Writes the boxes back into the vendor by its number in one durable transaction (one
    // statement by key, as a save in modify mode writes), empties the boxes and repaints once.
    void save(const QString &number);

private:
    std::unique_ptr<Databases> m_dbs;
    std::unique_ptr<QWidget> m_window;
    std::array<QLineEdit *, 24> m_boxes{};
};
