#pragma once

#include "vendorscreen/VendorFields.h"

#include <QStringList>

#include <array>

class QGroupBox;
class QLabel;
class QLineEdit;

// The vendor frame's 24 entry boxes and their captions, reached by the fields' names.
class VendorFieldBoxes {
public:
    using Boxes = std::array<QLineEdit *, vendorFieldCount>;
    using Labels = std::array<QLabel *, vendorFieldCount>;

    VendorFieldBoxes(QGroupBox *frame, const Labels &labels, const Boxes &boxes) :
        m_frame(frame), m_labels(labels), m_boxes(boxes)
    {
    }

    QGroupBox *frame() const { return m_frame; }
    QLineEdit *box(VendorField field) const { return m_boxes[static_cast<size_t>(indexOf(field))]; }
    QLabel *label(VendorField field) const { return m_labels[static_cast<size_t>(indexOf(field))]; }
    const Boxes &boxes() const { return m_boxes; }

    QString text(VendorField field) const;
    // The 24 texts in field order.
    QStringList texts() const;
    // Puts a text in, showing its start however long it is.
    void setText(VendorField field, const QString &text) const;
    // Empties every box; the boxes that change are painted together with the next round of
    // events.
    void blank() const;
    // Locks or unlocks the figures the system keeps.
    void setKeptFiguresEnabled(bool enabled) const;

private:
    QGroupBox *m_frame;
    Labels m_labels;
    Boxes m_boxes;
};
