#include "keysend/ExtendedCharacters.h"

#include "keysend/CodePages.h"

#include <QString>

QString expandExtendedCharacters(const QString &text)
{
    QString expanded;
    expanded.reserve(text.size());
    for (const QChar ch : text) {
        if (CodePages::ansiCode(ch) < 128) {
            expanded += ch;
            continue;
        }
        expanded += QStringLiteral("{NUMLOCK}%(");
        const QString digits = QString::number(CodePages::oemCode(ch));
        for (const QChar digit : digits)
            expanded += QStringLiteral("{NUMPAD") + digit + u'}';
        expanded += QStringLiteral("){NUMLOCK}");
    }
    return expanded;
}
