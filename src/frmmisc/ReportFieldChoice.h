#pragma once

#include <QStringList>

#include <vector>

// Which user-defined fields a report prints, and in which order, from the positions typed into
// the fields' sort boxes.
namespace ReportFieldChoice {

// The highest position looked at: a field numbered above it is never printed.
constexpr int lastPosition = 29;

// For each position from 1 up to lastPosition, every field (by index, in field order) whose sort
// text is that whole number. Blank boxes, text that is not a number, fractions and positions
// outside 1..lastPosition choose nothing.
std::vector<int> choose(const QStringList &sortTexts);

} // namespace ReportFieldChoice
