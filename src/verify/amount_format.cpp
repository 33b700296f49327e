#include "verify/amount_format.h"

#include <cstdint>

namespace gljz {

std::string formatAmount(const platform::Value& amount) {
  if (amount.isNull()) return {};
  const std::int64_t units = amount.asMoney().units();
  // The magnitude as an unsigned number, which holds that of the smallest amount, too.
  const std::uint64_t magnitude =
      units < 0 ? ~static_cast<std::uint64_t>(units) + 1 : static_cast<std::uint64_t>(units);
  const std::uint64_t hundredths = (magnitude + 50) / 100;
  if (hundredths == 0) return " ";

  std::string text = units < 0 ? "-" : "";
  if (hundredths >= 100) text += std::to_string(hundredths / 100);
  const std::string decimals = std::to_string(hundredths % 100 + 100);  // "1" and two digits
  return text + "." + decimals.substr(1);
}

}  // namespace gljz
