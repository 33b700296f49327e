#pragma once
// Sql: one statement text of the system, with named holes that the compiler checks.
//
//   inline constexpr Sql deleteYear{"account_totals.delete_year",
//       "delete from gl_accsum where iyear={curYear}", "curYear"};
//   conn.ExecuteSql(deleteYear(run.m_strCurYear));
//
// A hole is '{', an identifier, '}'. The names that follow the text must be exactly the names of its holes, each once;
// they give the order of the arguments. A hole may stand in the text several times. Both a name that does not fit and
// a wrong number of arguments are compile-time errors. Values are put in as they stand, without any quoting.
//
// Each stage keeps its texts in a header <stage>_sql.h, in a namespace <stage>_sql, in the order in which they run, and
// ends it with `inline constexpr const SqlText* all[] = {&deleteYear, ...};` for all_statements().

#include <array>
#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/date_time.h"
#include "platform/money.h"

namespace gljz {

// What all statements have in common, whatever the number of their holes.
struct SqlText {
  std::string_view name;  // "<stage>.<statement>", unique in the program
  std::string_view text;  // with its holes
};

namespace sql_detail {

constexpr bool isIdentifier(std::string_view word) {
  if (word.empty() || (word[0] >= '0' && word[0] <= '9')) return false;
  for (char c : word) {
    const bool fits = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    if (!fits) return false;
  }
  return true;
}

// Calls literal(text) and hole(name) for the pieces of a text, in order.
template <class Literal, class Hole>
constexpr void walk(std::string_view text, Literal literal, Hole hole) {
  std::size_t pending = 0;  // start of the literal piece that has not been handed out
  for (std::size_t open = text.find('{'); open != std::string_view::npos; open = text.find('{', open + 1)) {
    const std::size_t close = text.find('}', open);
    if (close == std::string_view::npos) break;
    const std::string_view word = text.substr(open + 1, close - open - 1);
    if (!isIdentifier(word)) continue;
    literal(text.substr(pending, open - pending));
    hole(word);
    pending = close + 1;
  }
  literal(text.substr(pending));
}

inline std::string_view argument(std::string_view value) {
  return value;
}
inline std::string argument(platform::Money value) {
  return value.text();
}
inline std::string argument(platform::DateTime value) {
  return value.text();
}
template <std::integral T>
requires(!std::same_as<T, bool> && !std::same_as<T, char>) std::string argument(T value) {
  return std::to_string(value);
}

}  // namespace sql_detail

template <std::size_t Holes>
class Sql : public SqlText {
public:
  template <class... Names>
  consteval Sql(std::string_view statementName, std::string_view statementText, Names... holes)
      : SqlText{statementName, statementText}, holes_{std::string_view(holes)...} {
    checkNamesAreHoles();
    checkHolesAreNamed();
  }

  // The text with one argument for each name, in the order of the names: text, integers, Money, DateTime.
  template <class... Arguments>
  requires(sizeof...(Arguments) == Holes) std::string operator()(const Arguments&... arguments) const {
    if constexpr (Holes == 0) {
      return std::string(text);
    } else {
      return fill({std::string(sql_detail::argument(arguments))...});
    }
  }

private:
  constexpr std::size_t indexOf(std::string_view hole) const {
    std::size_t i = 0;
    while (i < Holes && holes_[i] != hole) ++i;
    return i;
  }

  consteval void checkNamesAreHoles() const {
    for (std::size_t i = 0; i < Holes; ++i) {
      if (indexOf(holes_[i]) != i) throw "a name is listed twice";
      bool found = false;
      sql_detail::walk(
          text, [](std::string_view) {}, [&](std::string_view hole) { found |= hole == holes_[i]; });
      if (!found) throw "a listed name is no hole of the text";
    }
  }
  consteval void checkHolesAreNamed() const {
    sql_detail::walk(
        text, [](std::string_view) {},
        [&](std::string_view hole) {
          if (indexOf(hole) == Holes) throw "a hole of the text is not listed";
        });
  }

  std::string fill(const std::array<std::string, Holes>& values) const {
    std::string result;
    result.reserve(text.size() + 16 * Holes);
    sql_detail::walk(
        text, [&](std::string_view literal) { result += literal; },
        [&](std::string_view hole) { result += values[indexOf(hole)]; });
    return result;
  }

  std::array<std::string_view, Holes> holes_;
};

template <class... Names>
Sql(const char*, const char*, Names...) -> Sql<sizeof...(Names)>;

// A line end inside a batch.
inline constexpr std::string_view lineEnd = "\r\n";

}  // namespace gljz
