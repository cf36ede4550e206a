#include "Colours.h"

#include <array>
#include <cmath>

namespace tarnwick {

QColor fromColourRef(ColourRef colour)
{
    return QColor(colour.red(), colour.green(), colour.blue());
}

ColourRef toColourRef(const QColor &colour)
{
    return ColourRef::fromRgb(colour.red(), colour.green(), colour.blue());
}

QColor mixed(const QColor &a, const QColor &b, double share)
{
    const auto part = [share](int from, int to) { return int(std::lround(from + (to - from) * share)); };
    return QColor(part(a.red(), b.red()), part(a.green(), b.green()), part(a.blue(), b.blue()));
}

/// Relative luminance as defined by WCAG 2.
static double luminance(const QColor &colour)
{
    // Called for every tube picture, so the powers are calculated once.
    static const std::array<double, 256> linear = [] {
        std::array<double, 256> table{};
        for (size_t i = 0; i < table.size(); ++i) {
            const double part = double(i) / 255;
            table[i] = part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        }
        return table;
    }();
    const auto part = [](int channel) { return linear[size_t(channel)]; };
    return 0.2126 * part(colour.red()) + 0.7152 * part(colour.green()) + 0.0722 * part(colour.blue());
}

double contrast(const QColor &a, const QColor &b)
{
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return first > second ? first / second : second / first;
}

QColor inkOn(const QColor &background)
{
    return contrast(Qt::black, background) >= contrast(Qt::white, background) ? QColor(Qt::black) : QColor(Qt::white);
}

QColor readable(const QColor &colour, const QColor &background, double minContrast)
{
    const QColor end = inkOn(background);
    for (double share = 0; share < 1; share += 0.1) {
        const QColor candidate = mixed(colour, end, share);
        if (contrast(candidate, background) >= minContrast)
            return candidate;
    }
    return end;
}

} // namespace tarnwick
