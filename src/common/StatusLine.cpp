#include "common/StatusLine.h"

#include <QLineEdit>

void StatusLine::show(const QString &text)
{
    m_line->setText(text);
    m_line->repaint();
}

QString StatusLine::text() const
{
    return m_line->text();
}

void StatusLine::set(const QString &text)
{
    m_line->setText(text);
}
