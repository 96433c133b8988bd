#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <random>

namespace Demo {

// A deterministic stream of random choices. std::mt19937_64 is fully defined by the C++ standard
// and the distributions below are written out here, so the same seed gives the same company on
// every run, compiler and platform.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_engine(seed) {}

    // An independent stream for one numbered part of the company (vendor 17, the chart, ...).
    static Random stream(std::uint64_t seed, std::uint64_t part)
    {
        return Random(mix(seed ^ mix(part + 0x9e3779b97f4a7c15ULL)));
    }

    // 0 <= result < n; n must be at least 1.
    int below(int n)
    {
        const std::uint64_t high = m_engine() >> 32;
        return static_cast<int>((high * static_cast<std::uint64_t>(n)) >> 32);
    }
    // lo <= result <= hi.
    int between(int lo, int hi) { return lo + below(hi - lo + 1); }
    // 0 <= result < 1.
    double unit() { return static_cast<double>(m_engine() >> 11) * 0x1.0p-53; }
    bool chance(double probability) { return unit() < probability; }
    const QString &pick(const QStringList &items) { return items.at(below(int(items.size()))); }
    // A digit string of the given length ("04821").
    QString digits(int count)
    {
        QString text;
        for (int i = 0; i < count; ++i)
            text += QLatin1Char(char('0' + below(10)));
        return text;
    }

private:
    static std::uint64_t mix(std::uint64_t x)
    {
        x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ULL;
        x = (x ^ (x >> 27)) * 0x94d049bb133111ebULL;
        return x ^ (x >> 31);
    }

    std::mt19937_64 m_engine;
};

} // namespace Demo
