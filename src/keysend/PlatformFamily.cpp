#include "keysend/PlatformFamily.h"

#include <QString>

namespace {
constexpr int windows9xPlatformId = 1;
constexpr int ntPlatformId = 2;
} // namespace

QString platformFamilyOf(int platformId)
{
    return platformId == windows9xPlatformId ? QStringLiteral("9x") : QStringLiteral("NT");
}

QString platformFamily()
{
    return platformFamilyOf(ntPlatformId);
}
