#pragma once
#include <QtGlobal>

namespace demo {

/// A small random number generator (splitmix64), so that a seed gives the same numbers on every machine and with every
/// library.
class Random
{
public:
    explicit Random(quint64 seed)
        : m_state(seed)
    {
    }
    /// A separate generator for one subject (a tube, a cal), independent of the numbers drawn for others.
    static Random of(quint64 seed, quint64 subject, quint64 aspect)
    {
        Random mixer(seed ^ (aspect * 0x9E3779B97F4A7C15u));
        mixer.m_state = mixer.next() ^ (subject * 0xD1B54A32D192ED03u);
        return Random(mixer.next());
    }

    quint64 next()
    {
        m_state += 0x9E3779B97F4A7C15u;
        quint64 z = m_state;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }
    /// From low to high, both included.
    int between(int low, int high) { return low + int(next() % quint64(high - low + 1)); }
    /// True with a probability of share in a thousand.
    bool permille(int share) { return between(0, 999) < share; }
    /// From low to high, in hundredths.
    double hundredths(double low, double high) { return between(int(low * 100), int(high * 100)) / 100.0; }

private:
    quint64 m_state;
};

} // namespace demo
