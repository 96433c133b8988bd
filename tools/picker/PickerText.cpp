#include "PickerText.h"

namespace PickerText {

QString fold(const QString &text)
{
    // The compatibility decomposition splits "é" into "e" and the combining accent, and "ﬁ"
    // into "fi"; the marks are then dropped.
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    QString bare;
    bare.reserve(decomposed.size());
    for (const QChar c : decomposed)
        if (c.category() != QChar::Mark_NonSpacing && c.category() != QChar::Mark_Enclosing)
            bare += c;
    return bare.toCaseFolded();
}

QStringList words(const QString &text)
{
    QStringList found;
    QString word;
    const auto flush = [&] {
        if (!word.isEmpty() && !found.contains(word))
            found << word;
        word.clear();
    };
    for (const QChar c : fold(text)) {
        if (c.isLetterOrNumber())
            word += c;
        else
            flush();
    }
    flush();
    return found;
}

QString prefixEnd(const QString &word)
{
    // Words hold letters and digits only, so their last character is never the highest one.
    QString end = word;
    end.back() = QChar(end.back().unicode() + 1);
    return end;
}

} // namespace PickerText
