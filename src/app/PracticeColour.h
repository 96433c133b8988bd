#pragma once

#include <QString>

#include <optional>

// A practice company is marked by "practice.dat" in the data folder; its window is coloured so
// that nobody mistakes it for the real books.
namespace PracticeColour {
// The colour (0xBBGGRR) a first line of the file chooses; red for anything not understood.
int fromLine(const QString &line);
// The colour the window takes, or none when there is no "practice.dat".
std::optional<int> forDataFolder();
} // namespace PracticeColour
