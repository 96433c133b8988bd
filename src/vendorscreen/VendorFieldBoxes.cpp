#include "vendorscreen/VendorFieldBoxes.h"

#include <QGroupBox>
#include <QLineEdit>

QString VendorFieldBoxes::text(VendorField field) const
{
    return box(field)->text();
}

QStringList VendorFieldBoxes::texts() const
{
    QStringList all;
    for (const QLineEdit *edit : m_boxes)
        all << edit->text();
    return all;
}

void VendorFieldBoxes::setText(VendorField field, const QString &text) const
{
    QLineEdit *edit = box(field);
    edit->setText(text);
    // A text longer than the box would otherwise show its end ("king@..." for "wking@...").
    edit->setCursorPosition(0);
}

void VendorFieldBoxes::blank() const
{
    // The emptied fields are painted together when the screen next yields, which every caller
    // does within a frame; fields that were empty already are not painted again.
    for (QLineEdit *edit : m_boxes)
        edit->setText(QString());
}

void VendorFieldBoxes::setKeptFiguresEnabled(bool enabled) const
{
    for (const VendorFieldInfo &info : VendorFields::all())
        if (info.keptFigure)
            box(info.field)->setEnabled(enabled);
}
