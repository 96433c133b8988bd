#pragma once

#include <QString>

#include <stdexcept>

// An error that the suite reports by its number and text (the database engine's errors, say).
class NumberedError : public std::runtime_error {
public:
    NumberedError(int code, const QString &text) :
        std::runtime_error(text.toStdString()), m_code(code), m_text(text)
    {
    }
    int code() const { return m_code; }
    QString text() const { return m_text; }

private:
    int m_code;
    QString m_text;
};
