#pragma once
// The options of one command.
//
//   Arguments a(words, {{"--server"}, {"--quiet", OptionKind::flag}});
//   a.text("--server", "embedded:./gljz-data");

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/date_time.h"

namespace cli {

enum class OptionKind { flag, value, repeated };
struct Option {
  std::string_view name;  // "--server", "-q"
  OptionKind kind = OptionKind::value;
};

class Arguments {
public:
  // "--name value", "--name=value" and "-q value". UsageError for an unknown option, a missing or superfluous value, an
  // option that stands twice, and more than `positional` words without an option.
  Arguments(const std::vector<std::string>& words, const std::vector<Option>& options, std::size_t positional = 0);

  bool has(std::string_view name) const { return values_.contains(std::string(name)); }
  std::optional<std::string> text(std::string_view name) const;
  std::string text(std::string_view name, std::string_view fallback) const;
  std::string required(std::string_view name) const;  // UsageError when missing or empty
  std::vector<std::string> all(std::string_view name) const;
  const std::vector<std::string>& positional() const { return positional_; }

  // UsageError for anything that is not a year of four digits.
  int year(std::string_view name) const;
  std::optional<int> optionalYear(std::string_view name) const;
  // A whole number, not below 0.
  std::int64_t count(std::string_view name, std::int64_t fallback) const;
  // yyyy-mm-dd
  std::optional<platform::DateTime> date(std::string_view name) const;
  // One of the words, without regard to ASCII case, as the list spells it.
  std::string oneOf(std::string_view name, const std::vector<std::string_view>& words) const;

private:
  std::map<std::string, std::vector<std::string>> values_;
  std::vector<std::string> positional_;
};

}  // namespace cli
