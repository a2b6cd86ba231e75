#pragma once
// A length as the settings rows keep it: twips, kTwipsPerPixel to a pixel of
// the screen. Lengths read from a row need not be whole pixels; they are
// rounded to the nearest one, a half to the even one.

#include "dao/values.h"
#include "kernel/constants.h"

#include <QRect>
#include <algorithm>
#include <compare>

class Twips
{
public:
    constexpr Twips() = default;
    constexpr explicit Twips(long long twips) : m_twips(twips)
    {
    }
    static constexpr Twips fromPixels(long long pixels)
    {
        return Twips(pixels * kTwipsPerPixel);
    }

    constexpr long long value() const
    {
        return m_twips;
    }
    int pixels() const
    {
        return int(dao::roundHalfEven(double(m_twips) / kTwipsPerPixel));
    }

    constexpr auto operator<=>(const Twips&) const = default;

private:
    long long m_twips = 0;
};

// A window's place and size, from pixels to twips and back.
inline QRect twipsOf(const QRect& pixels)
{
    const auto t = [](int value) {
        return int(Twips::fromPixels(value).value());
    };
    return {t(pixels.left()), t(pixels.top()), t(pixels.width()), t(pixels.height())};
}
inline QRect pixelsOf(const QRect& twips)
{
    const auto p = [](int value) {
        return Twips(value).pixels();
    };
    return {p(twips.left()), p(twips.top()), p(twips.width()), p(twips.height())};
}

// A splitter's position held between its limits; when the window is too small
// for both, the maximum wins, and the position stays there when the window grows.
constexpr Twips heldBetween(Twips position, Twips minimum, Twips maximum)
{
    return std::min(std::max(position, minimum), maximum);
}
