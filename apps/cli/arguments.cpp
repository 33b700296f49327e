#include "arguments.h"

#include <algorithm>
#include <charconv>

#include "host/usage_error.h"
#include "platform/value.h"

namespace cli {

using host::UsageError;

namespace {

std::optional<std::int64_t> wholeNumber(std::string_view text) {
  std::int64_t n = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), n);
  if (failure != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return n;
}

std::string quotedOption(std::string_view name, std::string_view value) {
  return std::string(name) + " \"" + std::string(value) + "\"";
}

}  // namespace

Arguments::Arguments(const std::vector<std::string>& words, const std::vector<Option>& options,
                     std::size_t positional) {
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (word.size() < 2 || word[0] != '-') {
      if (positional_.size() == positional) throw UsageError("unexpected argument \"" + word + "\"");
      positional_.push_back(word);
      continue;
    }
    const std::size_t equals = word.starts_with("--") ? word.find('=') : std::string::npos;
    const std::string name = word.substr(0, equals);
    const auto option = std::find_if(options.begin(), options.end(), [&](const Option& o) { return o.name == name; });
    if (option == options.end()) throw UsageError("unknown option " + name);
    auto& values = values_[name];
    if (option->kind != OptionKind::repeated && !values.empty()) throw UsageError("option " + name + " stands twice");
    if (option->kind == OptionKind::flag) {
      if (equals != std::string::npos) throw UsageError("option " + name + " takes no value");
      values.emplace_back();
    } else if (equals != std::string::npos) {
      values.push_back(word.substr(equals + 1));
    } else if (++i < words.size()) {
      values.push_back(words[i]);
    } else {
      throw UsageError("option " + name + " needs a value");
    }
  }
}

std::optional<std::string> Arguments::text(std::string_view name) const {
  const auto found = values_.find(std::string(name));
  if (found == values_.end()) return std::nullopt;
  return found->second.front();
}

std::string Arguments::text(std::string_view name, std::string_view fallback) const {
  return text(name).value_or(std::string(fallback));
}

std::string Arguments::required(std::string_view name) const {
  const auto value = text(name);
  if (!value) throw UsageError("option " + std::string(name) + " is missing");
  if (value->empty()) throw UsageError("option " + std::string(name) + " is empty");
  return *value;
}

std::vector<std::string> Arguments::all(std::string_view name) const {
  const auto found = values_.find(std::string(name));
  return found == values_.end() ? std::vector<std::string>() : found->second;
}

std::optional<int> Arguments::optionalYear(std::string_view name) const {
  const auto value = text(name);
  if (!value) return std::nullopt;
  constexpr std::int64_t firstYear = 1753, lastYear = 9998;  // of the server's dates, with a year behind the last
  const auto n = wholeNumber(*value);
  if (!n || value->size() != 4 || *n < firstYear || *n > lastYear)
    throw UsageError(quotedOption(name, *value) + ": a year of four digits is expected");
  return static_cast<int>(*n);
}

int Arguments::year(std::string_view name) const {
  required(name);
  return *optionalYear(name);
}

std::int64_t Arguments::count(std::string_view name, std::int64_t fallback) const {
  const auto value = text(name);
  if (!value) return fallback;
  const auto n = wholeNumber(*value);
  if (!n || *n < 0) throw UsageError(quotedOption(name, *value) + ": a whole number is expected");
  return *n;
}

std::optional<platform::DateTime> Arguments::date(std::string_view name) const {
  const auto value = text(name);
  if (!value) return std::nullopt;
  try {
    const auto day = platform::DateTime::parse(*value);
    if (day.dateText() == *value) return day;
  } catch (const platform::RunTimeError&) {
    // told below
  }
  throw UsageError(quotedOption(name, *value) + ": a day as yyyy-mm-dd is expected");
}

std::string Arguments::oneOf(std::string_view name, const std::vector<std::string_view>& words) const {
  const auto value = text(name);
  if (!value) return std::string(words.front());
  std::string list;
  for (const std::string_view word : words) {
    if (platform::equalsIgnoreCase(word, *value)) return std::string(word);
    list += (list.empty() ? "" : ", ") + std::string(word);
  }
  throw UsageError(quotedOption(name, *value) + ": one of " + list + " is expected");
}

}  // namespace cli
