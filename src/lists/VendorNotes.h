#pragma once

#include "lists/ListWidgets.h"

#include <QObject>
#include <QVariant>

class CurrentVendor;
class Databases;

// The vendor's free-text note, shown in place of the lists. Saving it is part of the save, which
// asks here whether it was changed and what it was when it was shown.
class VendorNotes : public QObject {
    Q_OBJECT

public:
    // vendor: whose note is shown.
    VendorNotes(const ListWidgets &widgets, const CurrentVendor &vendor, Databases &dbs,
                QObject *parent = nullptr);

    // The notes button. editing: the screen adds or modifies a vendor, so that an empty note
    // is ready to be typed.
    void show(bool editing);
    // The notes box's own events.
    void focused();
    void left();
    void keyTyped();

    // Whether a key was typed in the box since the screen last let go of the vendor.
    bool changed() const { return m_changed; }
    // The vendor whose notes were shown last (-1: none), and the notes as they were read then.
    long long recalledVendor() const { return m_recalledVendor; }
    QVariant recalled() const { return m_recalled; }
    QString text() const;
    // The screen lets go of the vendor: nothing shown, nothing changed.
    void forget();
    // Another vendor is on the screen, or the same one read again: the box, when it is shown,
    // shows the note as the database holds it now.
    void reloadIfShown(bool editing);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    ListWidgets m_w;
    const CurrentVendor &m_current;
    Databases &m_dbs;
    bool m_changed = false;
    long long m_recalledVendor = -1;
    QVariant m_recalled;
};
