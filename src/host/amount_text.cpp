#include "host/amount_text.h"

namespace host {

std::string amountText(platform::Money amount) {
  constexpr std::size_t decimals = 2;
  std::string text = amount.text();
  std::size_t point = text.find('.');
  if (point == std::string::npos) {
    point = text.size();
    text += '.';
  }
  while (text.size() - point <= decimals) text += '0';
  return text;
}

std::string grouped(const std::string& text) {
  const std::size_t begin = text.starts_with('-') ? 1 : 0;
  std::size_t end = begin;
  while (end < text.size() && text[end] >= '0' && text[end] <= '9') ++end;
  std::string out = text;
  for (std::size_t at = end; at > begin + 3;) out.insert(at -= 3, 1, ',');
  return out;
}

}  // namespace host
