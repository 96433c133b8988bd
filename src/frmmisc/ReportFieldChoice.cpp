#include "frmmisc/ReportFieldChoice.h"

#include <cmath>

namespace ReportFieldChoice {
namespace {

// The position a sort box holds; 0 when it holds no whole number from 1 up (the caller looks
// only at the positions up to the last).
int positionOf(const QString &text)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    if (!ok || std::floor(value) != value || value < 1 || value > 1e6)
        return 0;
    return static_cast<int>(value);
}

} // namespace

std::vector<int> choose(const QStringList &sortTexts)
{
    std::vector<int> positions;
    for (const QString &text : sortTexts)
        positions.push_back(positionOf(text));
    std::vector<int> chosen;
    for (int k = 1; k <= lastPosition; ++k)
        for (std::size_t field = 0; field < positions.size(); ++field)
            if (positions[field] == k)
                chosen.push_back(static_cast<int>(field));
    return chosen;
}

} // namespace ReportFieldChoice
