#include "ScriptedDialogs.h"

#include <cstdio>

void ScriptedDialogs::showMessage(const QString &text, Icon, const QString &title)
{
    messages << title + QStringLiteral(": ") + oneLine(text);
    std::fprintf(stderr, "dialog: %s\n", qPrintable(messages.constLast()));
}

int ScriptedDialogs::askYesNo(const QString &text, const QString &title, int)
{
    std::fprintf(stderr, "question (answered No): %s: %s\n", qPrintable(title),
                 qPrintable(oneLine(text)));
    return No;
}

int ScriptedDialogs::askYesNoCancel(const QString &text, const QString &title, int)
{
    std::fprintf(stderr, "question (answered No): %s: %s\n", qPrintable(title),
                 qPrintable(oneLine(text)));
    return No;
}

QString ScriptedDialogs::askInput(const QString &prompt, const QString &title, const QString &)
{
    std::fprintf(stderr, "input (cancelled): %s: %s\n", qPrintable(title),
                 qPrintable(oneLine(prompt)));
    return {};
}
