#include "json/internal/PowersOfFive.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tavrin::plugin::json {

namespace {

// An unsigned integer of up to kWords 32-bit words, least significant first,
// enough for 2^(128 + bits of 5^100) and for 5^100 itself.
class BigNumber {
public:
    static constexpr int kWords = 16;

    constexpr explicit BigNumber(int powerOfTwo) { _word[static_cast<std::size_t>(powerOfTwo / 32)] = 1u << (powerOfTwo % 32); }

    constexpr void Multiply(std::uint32_t factor) {
        std::uint64_t carry = 0;
        for (std::uint32_t& w : _word) {
            carry += static_cast<std::uint64_t>(w) * factor;
            w = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
    }
    // Floor division.
    constexpr void Divide(std::uint32_t divisor) {
        std::uint64_t rest = 0;
        for (int i = kWords - 1; i >= 0; --i) {
            rest = (rest << 32) | _word[static_cast<std::size_t>(i)];
            _word[static_cast<std::size_t>(i)] = static_cast<std::uint32_t>(rest / divisor);
            rest %= divisor;
        }
    }
    constexpr int Bits() const {
        for (int i = kWords - 1; i >= 0; --i)
            for (int b = 31; b >= 0; --b)
                if ((_word[static_cast<std::size_t>(i)] >> b) & 1u) return i * 32 + b + 1;
        return 0;
    }
    // The 128 bits from the most significant one down (zeros below the last
    // bit when there are fewer), and how far they were shifted: the number is
    // floor(result * 2^-shift).
    constexpr PowerOfFive Top128() const {
        const int shift = 128 - Bits();
        std::uint64_t part[2]{};
        for (int half = 0; half < 2; ++half)
            part[half] = static_cast<std::uint64_t>(BitsFrom(64 * half + 32 - shift)) << 32 | BitsFrom(64 * half - shift);
        return {{part[1], part[0]}, shift};
    }

private:
    // The 32 bits from bit `first` up; bits below 0 are zeros.
    constexpr std::uint32_t BitsFrom(int first) const {
        const int word = first >= 0 ? first / 32 : -((31 - first) / 32);
        const int offset = first - 32 * word;
        const std::uint64_t pair = static_cast<std::uint64_t>(Word(word + 1)) << 32 | Word(word);
        return static_cast<std::uint32_t>(pair >> offset);
    }
    constexpr std::uint32_t Word(int n) const { return n >= 0 && n < kWords ? _word[static_cast<std::size_t>(n)] : 0; }
    std::array<std::uint32_t, kWords> _word{};
};

using PowerTable = std::array<PowerOfFive, kGreatestPowerOfFive - kLeastPowerOfFive + 1>;

constexpr PowerTable ComputePowers() {
    PowerTable powers{};
    const auto at = [&powers](int q) -> PowerOfFive& {
        return powers[static_cast<std::size_t>(q - kLeastPowerOfFive)];
    };
    BigNumber power(0);
    for (int q = 0; q <= kGreatestPowerOfFive; ++q, power.Multiply(5)) at(q) = power.Top128();
    // floor(floor(n / 5) / 5) is floor(n / 25): dividing a large power of
    // two by five again and again keeps every quotient exact.
    constexpr int kDividend = 128 + 240;
    BigNumber quotient(kDividend);
    for (int q = -1; q >= kLeastPowerOfFive; --q) {
        quotient.Divide(5);
        PowerOfFive& p = at(q);
        p = quotient.Top128();
        p.shift += kDividend;
    }
    return powers;
}

}  // namespace

// Made by the compiler: the table is there before any code of the library
// runs, also code a host calls while the library is being loaded.
constexpr PowerTable kPowersOfFive = ComputePowers();
static_assert(kPowersOfFive[-kLeastPowerOfFive].significand.high == std::uint64_t{1} << 63, "5^0 is 2^127 * 2^-127");

}  // namespace tavrin::plugin::json
