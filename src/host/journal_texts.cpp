#include "host/journal_texts.h"

#include <optional>

#include "platform/value.h"

namespace host {
namespace {

using Arguments = std::vector<platform::Value>;

constexpr std::string_view ownKeys = "Gljz.Host.Note.", stageKeys = "Gljz.Host.Stage.";

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

// Stage texts of the system read "function--step", some with a blank at the end.
std::string shortStage(std::string_view name) {
  const std::size_t at = name.rfind("--");
  return platform::trim(std::string(at == std::string_view::npos ? name : name.substr(at + 2)));
}

}  // namespace

// The system's texts are those of zh-CN, the journal's own those of en-US.
JournalTexts::JournalTexts(const Messages& language) : language_(language) {
  const auto learn = [this](const Messages& known) {
    const auto& all = known.all();
    for (auto own = all.lower_bound(stageKeys); own != all.end() && own->first.starts_with(stageKeys); ++own)
      stages_.emplace(own->second, own->first);
  };
  learn(Messages("zh-CN"));
  learn(english_);
}

std::string JournalTexts::stage(std::string_view name) const {
  std::string text = shortStage(name);
  const auto key = stages_.find(text);
  return key == stages_.end() ? text : language_.text(key->second);
}

std::string JournalTexts::translated(const std::string& text) const {
  const auto& all = english_.all();
  for (auto own = all.lower_bound(ownKeys); own != all.end() && own->first.starts_with(ownKeys); ++own)
    if (const auto arguments = argumentsOf(own->second, text)) return language_.text(own->first, *arguments);
  return text;
}

}  // namespace host
