#pragma once

#include <QString>

class Dialogs;

// The user's top and left shift of every report printout, in twips (1440 to the inch), kept in
// "printmargin.<system user number>" in the data folder: the top margin, then the left.
class PrintMargins {
public:
    explicit PrintMargins(int sysUser) : m_sysUser(sysUser) {}

    QString fileName() const { return QStringLiteral("printmargin.") + QString::number(m_sysUser); }

    // Both margins 0, then the file's numbers when it is there. A file that does not hold
    // numbers is named in a message and read as no margins.
    void read(Dialogs &dialogs);
    // The dialog of the report menu: asks for the top and the left margin in inches and writes
    // the file only when both answers were accepted.
    void adjust(Dialogs &dialogs);

    int top() const { return m_top; }
    int left() const { return m_left; }
    void setSysUser(int sysUser) { m_sysUser = sysUser; }

private:
    // One margin in twips from the typed inches; nothing when the dialog is to end.
    static bool askInches(Dialogs &dialogs, const QString &side, int &twips);
    void write(Dialogs &dialogs) const;

    int m_sysUser = 0;
    int m_top = 0;
    int m_left = 0;
};
