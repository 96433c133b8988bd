#pragma once

#include <QObject>
#include <QString>

#include <optional>

class QLabel;
class QLineEdit;

// The kinds of 1099 form a vendor can be reported on, and the label beside the vendor's 1099
// type field that names the kind typed there. The field's text and the stored code are left as
// they are; the label only reads them.
class Form1099Type : public QObject {
    Q_OBJECT

public:
    // Puts the label beside the field, in the field's place in its frame's grid.
    explicit Form1099Type(QLineEdit *field);

    // The kind's name ("1099-INT" for 2); empty for a code that is no kind.
    static QString name(int code);
    // The code a field's text stands for: a blank field is 0 (none); nothing when the text is not
    // one of the codes.
    static std::optional<int> codeOf(const QString &text);
    // "0=None, 1=1099-MISC, 2=1099-INT, 3=1099-DIV or 5=1099-NEC".
    static QString allowedCodes();

private:
    void showName(const QString &text);

    QLabel *m_label;
};
