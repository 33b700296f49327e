#include "host/sql_script.h"

#include "platform/value.h"

namespace host {
namespace {

constexpr std::string_view blanks = " \t\r\n";

std::string_view stripped(std::string_view text) {
  const std::size_t from = text.find_first_not_of(blanks);
  if (from == std::string_view::npos) return {};
  return text.substr(from, text.find_last_not_of(blanks) - from + 1);
}

}  // namespace

std::vector<std::string> splitBatches(std::string_view script) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (script.starts_with(byteOrderMark)) script.remove_prefix(byteOrderMark.size());
  std::vector<std::string> batches;
  std::size_t batchBegin = 0;
  const auto finish = [&](std::size_t end) {
    const std::string_view batch = script.substr(batchBegin, end - batchBegin);
    if (!stripped(batch).empty()) batches.emplace_back(batch);
  };
  for (std::size_t line = 0; line < script.size();) {
    const std::size_t end = script.find('\n', line);
    const std::size_t next = end == std::string_view::npos ? script.size() : end + 1;
    if (platform::equalsIgnoreCase(stripped(script.substr(line, next - line)), "go")) {
      finish(line);
      batchBegin = next;
    }
    line = next;
  }
  finish(script.size());
  return batches;
}

}  // namespace host
