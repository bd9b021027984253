#include "orv/foundation/internal/PowersOfTen.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace Zan::Orv::Core::Service::Internal {

namespace {

constexpr int count = maxPowerOfTen - minPowerOfTen + 1;

// A large whole number, in 32-bit digits from the lowest up. 5^345 has 802 bits.
class Large
{
public:
    constexpr explicit Large(std::size_t setBit) { digits_[setBit / 32] = 1u << (setBit % 32); }

    constexpr void MultiplyBy5()
    {
        std::uint64_t carry = 0;
        for (std::uint32_t& digit : digits_)
        {
            carry += std::uint64_t{5} * digit;
            digit = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
    }

    constexpr void DivideBy5()
    {
        std::uint64_t remainder = 0;
        for (std::size_t i = digits_.size(); i-- > 0;)
        {
            remainder = (remainder << 32) | digits_[i];
            digits_[i] = static_cast<std::uint32_t>(remainder / 5);
            remainder %= 5;
        }
    }

    // The 128 bits from the highest one that is set; zeros where there are none.
    constexpr Platform::UInt128 Top() const
    {
        std::size_t highest = digits_.size() - 1;
        while (digits_[highest] == 0)
            --highest;
        int const leading = std::countl_zero(digits_[highest]);
        auto const word = [&](std::size_t i) {
            // 32 bits that begin `leading` bits into the i-th digit from the top.
            std::uint64_t const upper = i <= highest ? digits_[highest - i] : 0;
            std::uint64_t const lower = i + 1 <= highest ? digits_[highest - i - 1] : 0;
            return (((upper << 32) | lower) << leading) >> 32 & 0xFFFFFFFFu;
        };
        return {word(0) << 32 | word(1), word(2) << 32 | word(3)};
    }

private:
    std::array<std::uint32_t, 33> digits_{};
};

// A power of ten has the bits of that power of five. Those of a negative one are what is left of a power of
// two after dividing; cutting off at each step leaves no more error than cutting off once.
constexpr std::array<Platform::UInt128, count> MakeTable()
{
    std::array<Platform::UInt128, count> table{};
    Large power(0);
    for (int exponent = 0; exponent <= maxPowerOfTen; ++exponent, power.MultiplyBy5())
        table[static_cast<std::size_t>(exponent - minPowerOfTen)] = power.Top();
    Large inverse(1024);
    for (int exponent = 0; exponent >= minPowerOfTen; --exponent, inverse.DivideBy5())
        table[static_cast<std::size_t>(exponent - minPowerOfTen)] = inverse.Top();
    return table;
}

constexpr std::array<Platform::UInt128, count> table = MakeTable();

} // namespace

PowerOfTen GetPowerOfTen(int exponent)
{
    // log2(10) * 2^16, near enough for the floor of every product of the table.
    int const floorLog2 = (exponent * 217706) >> 16;
    return {table[static_cast<std::size_t>(exponent - minPowerOfTen)], floorLog2 - 127};
}

} // namespace Zan::Orv::Core::Service::Internal
