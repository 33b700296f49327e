#include "bench/command.h"

#include <charconv>
#include <exception>
#include <optional>
#include <ostream>
#include <string_view>

#include "bench/table.h"

namespace bench {

namespace {

constexpr int allMet = 0, missedOrFailed = 1, wrongUsage = 2;

struct Arguments {
  Options options;
  std::string filter;
  bool list = false;
  bool help = false;
};

constexpr const char* usage =
    "usage: gljz_bench [--quick] [--filter TEXT] [--rounds N] [--full] [--divide N] [--list]\n";

std::optional<int> positive(std::string_view text) {
  int number = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (failure != std::errc{} || end != text.data() + text.size() || number < 1) return std::nullopt;
  return number;
}

std::optional<Arguments> parse(const std::vector<std::string>& words, std::ostream& err) {
  Arguments parsed;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    const bool hasNext = i + 1 < words.size();
    if (word == "--quick") {
      parsed.options.quick = true;
    } else if (word == "--full") {
      parsed.options.full = true;
    } else if (word == "--divide" && hasNext && positive(words[i + 1])) {
      parsed.options.divisor = *positive(words[++i]);
    } else if (word == "--list") {
      parsed.list = true;
    } else if (word == "--help") {
      parsed.help = true;
    } else if (word == "--filter" && hasNext) {
      parsed.filter = words[++i];
    } else if (word == "--rounds" && hasNext && positive(words[i + 1])) {
      parsed.options.rounds = *positive(words[++i]);
    } else {
      err << "gljz_bench: cannot read the argument '" << word << "'\n" << usage;
      return std::nullopt;
    }
  }
  return parsed;
}

}  // namespace

int runCommand(const Registry& cases, const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  const auto parsed = parse(arguments, err);
  if (!parsed) return wrongUsage;
  if (parsed->help) {
    out << usage;
    return allMet;
  }
  std::vector<Result> results;
  bool found = false, good = true;
  for (const Case& c : cases.cases()) {
    if (c.name.find(parsed->filter) == std::string::npos) continue;
    found = true;
    if (parsed->list) {
      out << c.name << ": " << c.target << "\n";
      continue;
    }
    try {
      for (Result& result : runCase(c, parsed->options)) {
        good = good && (parsed->options.quick || result.met());
        results.push_back(std::move(result));
      }
    } catch (const std::exception& failure) {
      err << "gljz_bench: " << c.name << ": " << failure.what() << "\n";
      good = false;
    }
  }
  if (!found) {
    err << "gljz_bench: there is no case" << (parsed->filter.empty() ? "" : " like '" + parsed->filter + "'") << "\n";
    return wrongUsage;
  }
  if (!parsed->list) out << table(results, !parsed->options.quick);
  return good ? allMet : missedOrFailed;
}

}  // namespace bench
