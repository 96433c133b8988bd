#include "common/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

void SystemClipboard::clear()
{
    QGuiApplication::clipboard()->clear();
}

void SystemClipboard::setText(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

QString SystemClipboard::text() const
{
    return QGuiApplication::clipboard()->text();
}
