#pragma once
// 256-bit magnitudes: what the product of two decimals of 38 digits needs before it is brought back to 38.

#include <array>

#include "tsql/decimal.h"

namespace tsql {

// Unsigned, least significant limb first.
class Wide {
public:
  constexpr Wide() = default;
  explicit Wide(UInt128 value) : limbs_{static_cast<std::uint64_t>(value), static_cast<std::uint64_t>(value >> 64)} {}

  static Wide product(UInt128 a, UInt128 b) {
    Wide result(a);
    // Schoolbook over the two limbs of b; 128 by 128 bits never leaves 256.
    Wide low = result, high = result;
    low.multiplyLimb(static_cast<std::uint64_t>(b));
    high.multiplyLimb(static_cast<std::uint64_t>(b >> 64));
    high.shiftLimb();
    low.add(high);
    return low;
  }

  bool fits128() const { return limbs_[2] == 0 && limbs_[3] == 0; }
  bool isZero() const { return fits128() && limbs_[0] == 0 && limbs_[1] == 0; }
  UInt128 low128() const { return static_cast<UInt128>(limbs_[1]) << 64 | limbs_[0]; }

  // False when the product leaves 256 bits; the value is then lost.
  bool multiplyLimb(std::uint64_t factor) {
    std::uint64_t carry = 0;
    for (auto& limb : limbs_) {
      const UInt128 p = static_cast<UInt128>(limb) * factor + carry;
      limb = static_cast<std::uint64_t>(p);
      carry = static_cast<std::uint64_t>(p >> 64);
    }
    return carry == 0;
  }

  // Divides by a limb and returns the remainder.
  std::uint64_t divideLimb(std::uint64_t divisor) {
    UInt128 rest = 0;
    for (int i = 3; i >= 0; --i) {
      const UInt128 part = rest << 64 | limbs_[static_cast<std::size_t>(i)];
      limbs_[static_cast<std::size_t>(i)] = static_cast<std::uint64_t>(part / divisor);
      rest = part % divisor;
    }
    return static_cast<std::uint64_t>(rest);
  }

  void add(const Wide& other) {
    std::uint64_t carry = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      const UInt128 sum = static_cast<UInt128>(limbs_[i]) + other.limbs_[i] + carry;
      limbs_[i] = static_cast<std::uint64_t>(sum);
      carry = static_cast<std::uint64_t>(sum >> 64);
    }
  }

  // other must not be greater.
  void subtract(const Wide& other) {
    std::uint64_t borrow = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      const UInt128 take = static_cast<UInt128>(other.limbs_[i]) + borrow;
      borrow = limbs_[i] < take ? 1 : 0;
      limbs_[i] = static_cast<std::uint64_t>(limbs_[i] - take);
    }
  }

  int compare(const Wide& other) const {
    for (std::size_t i = 4; i-- > 0;)
      if (limbs_[i] != other.limbs_[i]) return limbs_[i] < other.limbs_[i] ? -1 : 1;
    return 0;
  }

  // Bit by bit: it is reached only by operands beyond 18 digits.
  static void divide(const Wide& dividend, const Wide& divisor, Wide& quotient, Wide& remainder) {
    quotient = remainder = Wide();
    for (int bit = 255; bit >= 0; --bit) {
      const auto limb = static_cast<std::size_t>(bit / 64);
      const bool lost = remainder.limbs_[3] >> 63 != 0;
      remainder.doubleUp();
      remainder.limbs_[0] |= dividend.limbs_[limb] >> (bit % 64) & 1;
      if (lost || remainder.compare(divisor) >= 0) {
        remainder.subtract(divisor);
        quotient.limbs_[limb] |= std::uint64_t{1} << (bit % 64);
      }
    }
  }

private:
  void shiftLimb() {
    limbs_[3] = limbs_[2];
    limbs_[2] = limbs_[1];
    limbs_[1] = limbs_[0];
    limbs_[0] = 0;
  }
  void doubleUp() {
    for (std::size_t i = 3; i > 0; --i) limbs_[i] = limbs_[i] << 1 | limbs_[i - 1] >> 63;
    limbs_[0] <<= 1;
  }

  std::array<std::uint64_t, 4> limbs_{};
};

}  // namespace tsql
