#include "support/FakeDialogs.h"

QStringList FakeDialogs::texts() const
{
    QStringList all;
    for (const Shown &s : shown)
        all << s.text;
    return all;
}

int FakeDialogs::count(const QString &kind) const
{
    int n = 0;
    for (const Shown &s : shown)
        n += s.kind == kind ? 1 : 0;
    return n;
}

void FakeDialogs::showMessage(const QString &text, Icon icon, const QString &title)
{
    shown.push_back({QStringLiteral("message"), title, text, icon, {}, 0});
}

int FakeDialogs::nextAnswer()
{
    if (yesNoAnswers.empty())
        return No;
    const int answer = yesNoAnswers.front();
    yesNoAnswers.pop_front();
    return answer;
}

int FakeDialogs::askYesNo(const QString &text, const QString &title, int defaultAnswer)
{
    shown.push_back({QStringLiteral("yesno"),
                     title,
                     text,
                     Icon::Question,
                     {QStringLiteral("Yes"), QStringLiteral("No")},
                     defaultAnswer});
    return nextAnswer();
}

int FakeDialogs::askYesNoCancel(const QString &text, const QString &title, int defaultAnswer)
{
    shown.push_back({QStringLiteral("yesnocancel"),
                     title,
                     text,
                     Icon::Question,
                     {QStringLiteral("Yes"), QStringLiteral("No"), QStringLiteral("Cancel")},
                     defaultAnswer});
    return nextAnswer();
}

QString FakeDialogs::askInput(const QString &prompt, const QString &title,
                              const QString &defaultText)
{
    shown.push_back({QStringLiteral("input"), title, prompt, Icon::None, {}, 0});
    inputDefaults.push_back(defaultText);
    if (inputAnswers.empty())
        return {};
    const QString answer = inputAnswers.front();
    inputAnswers.pop_front();
    return answer;
}
