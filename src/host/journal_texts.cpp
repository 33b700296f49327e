#include "host/journal_texts.h"

#include <optional>

namespace host {
namespace {

using Arguments = std::vector<platform::Value>;

constexpr std::string_view ownKeys = "Gljz.Host.Note.";

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// What stands in the text where the pattern has {0}, {1}, ..., each once and in this order; nullopt when the text is
// not made from the pattern.
std::optional<Arguments> argumentsOf(std::string_view pattern, std::string_view text) {
  Arguments found;
  for (;;) {
    const std::size_t hole = pattern.find('{');
    const std::string_view before = pattern.substr(0, hole);
    if (!text.starts_with(before)) return std::nullopt;
    text.remove_prefix(before.size());
    if (hole == std::string_view::npos) return text.empty() ? std::optional(found) : std::nullopt;

    std::size_t behind = hole + 1;
    while (behind < pattern.size() && isDigit(pattern[behind])) ++behind;
    pattern.remove_prefix(behind + 1);
    const std::string_view next = pattern.substr(0, pattern.find('{'));
    const std::size_t end = next.empty() ? text.size() : text.find(next);
    if (end == std::string_view::npos) return std::nullopt;
    found.emplace_back(std::string(text.substr(0, end)));
    text.remove_prefix(end);
  }
}

}  // namespace

std::string JournalTexts::translated(const std::string& text) const {
  const auto& all = english_.all();
  for (auto own = all.lower_bound(ownKeys); own != all.end() && own->first.starts_with(ownKeys); ++own)
    if (const auto arguments = argumentsOf(own->second, text)) return language_.text(own->first, *arguments);
  return text;
}

}  // namespace host
