// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstdint>

namespace KestrinProductEditor {

/// An amount of money: a 64-bit signed integer that counts ten-thousandths of the currency's unit.
///
/// A plain value. No floating-point number touches a price anywhere in the component; text becomes a Currency
/// and a Currency becomes text through the user's locale (ProductLkpMgr's import and export do both).
class Currency
{
public:
    /// Ten-thousandths in one unit.
    static constexpr std::int64_t kScale = 10000;

    /// Zero.
    constexpr Currency() = default;

    /// The amount of `scaled` ten-thousandths: FromScaled(123450000) is 12,345.
    [[nodiscard]] static constexpr Currency FromScaled(std::int64_t scaled) { return Currency(scaled); }

    /// The whole amount `units`; every 32-bit number fits.
    [[nodiscard]] static constexpr Currency FromUnits(std::int32_t units)
    {
        return Currency(std::int64_t{units} * kScale);
    }

    /// The amount in ten-thousandths.
    [[nodiscard]] constexpr std::int64_t Scaled() const { return m_scaled; }

    friend constexpr auto operator<=>(Currency, Currency) = default;

private:
    explicit constexpr Currency(std::int64_t scaled) : m_scaled(scaled) {}

    std::int64_t m_scaled = 0;
};

} // namespace KestrinProductEditor
