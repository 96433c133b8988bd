#pragma once

#include <QString>

#include <stdexcept>

namespace Demo {

// Why the demo company could not be written; the text is meant for the person running it.
class Error : public std::runtime_error {
public:
    explicit Error(const QString &text) : std::runtime_error(text.toStdString()), m_text(text) {}
    QString text() const { return m_text; }

private:
    QString m_text;
};

} // namespace Demo
