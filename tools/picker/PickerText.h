#pragma once

#include <QString>
#include <QStringList>

// How the pickers compare text: without regard to case or accents ("Zoë" and "ZOE" are the same
// word), word by word, where a word is a run of letters and digits and everything else (blanks,
// apostrophes, hyphens, %, _) only separates words.
namespace PickerText {

// The text in the form that is compared: accents taken off, case folded.
QString fold(const QString &text);
// The folded words of a text, each once, in their order.
QStringList words(const QString &text);
// The first text above every text that starts with the word, for a range "word <= w < end".
QString prefixEnd(const QString &word);

} // namespace PickerText
