#pragma once

#include <QString>

#include <stdexcept>

// A reason the import stopped, worded for the person who ran it.
class ImportError : public std::runtime_error {
public:
    explicit ImportError(const QString &message) :
        std::runtime_error(message.toStdString()), m_message(message)
    {
    }
    const QString &message() const { return m_message; }

private:
    QString m_message;
};
