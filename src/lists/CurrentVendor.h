#pragma once

#include <QObject>
#include <QSqlRecord>
#include <QString>

// The vendor the screen is on: the number in the vendor-number field and the row the display
// read for it. The window keeps the number in step with the field and the display sets the row;
// the lists, the notes, the totals, the reports and the user-defined fields read the vendor here
// and follow its signals, so that none of them reads the field or asks another area.
class CurrentVendor : public QObject {
    Q_OBJECT

public:
    explicit CurrentVendor(QObject *parent = nullptr) : QObject(parent) {}

    // The number as the vendor-number field holds it: the vendor shown, the number typed for a
    // vendor being added, or "" while the screen holds none.
    QString numberText() const { return m_numberText; }
    // Its value the way the module reads typed numbers ("12.6" reads as 12.6).
    double value() const;
    // Its value rounded to a whole number: the vendor number the statements use.
    long long number() const;
    // A vendor number of 1 or more stands in the field.
    bool isSet() const { return value() >= 1; }
    // The vendor row as it was read when the vendor was shown (empty before the first).
    const QSqlRecord &row() const { return m_row; }

    // The vendor-number field's text changed (a vendor shown, a number typed, the field blanked).
    void setNumberText(const QString &text) { m_numberText = text; }
    // The display has read a vendor's row and is filling the fields from it.
    void setRow(const QSqlRecord &row) { m_row = row; }
    // The display has shown another vendor (a move or a lookup hit).
    void shown() { emit changed(); }
    // The display has shown the same vendor again as the database holds it now.
    void shownAgain() { emit reread(); }

signals:
    // Another vendor is on the screen: once for each vendor shown.
    void changed();
    // The vendor on the screen was read again (a pass rewrote the vendor file).
    void reread();

private:
    QString m_numberText;
    QSqlRecord m_row;
};
