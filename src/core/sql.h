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

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
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

// A piece of a text that has been taken apart: a literal run, and the hole behind it.
struct Piece {
  std::uint16_t offset = 0, length = 0;  // of the literal run
  std::uint16_t hole = 0;                // index of the name; the last piece has none
};
constexpr std::size_t mostPieces = 64;

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
    takeApart();
  }

  // The text with one argument for each name, in the order of the names: text, integers, Money, DateTime.
  template <class... Arguments>
  requires(sizeof...(Arguments) == Holes) std::string operator()(const Arguments&... arguments) const {
    std::string result;
    append(result, arguments...);
    return result;
  }

  // The same, behind a text that stands already: a batch grows without a copy of each of its statements.
  template <class... Arguments>
  requires(sizeof...(Arguments) == Holes) void append(std::string& to, const Arguments&... arguments) const {
    if constexpr (Holes == 0) {
      to += text;
    } else {
      fill(to, {std::string_view(sql_detail::argument(arguments))...});
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

  consteval void takeApart() {
    sql_detail::walk(
        text,
        [&](std::string_view literal) {
          if (pieceCount_ == sql_detail::mostPieces) throw "a text has more holes than a statement can hold";
          if (text.size() > UINT16_MAX) throw "a text is longer than a statement can be";
          pieces_[pieceCount_].offset = static_cast<std::uint16_t>(literal.data() - text.data());
          pieces_[pieceCount_++].length = static_cast<std::uint16_t>(literal.size());
        },
        [&](std::string_view hole) { pieces_[pieceCount_ - 1].hole = static_cast<std::uint16_t>(indexOf(hole)); });
  }

  void fill(std::string& to, const std::array<std::string_view, Holes>& values) const {
    std::size_t size = text.size() + to.size();
    for (std::size_t i = 0; i + 1 < pieceCount_; ++i) size += values[pieces_[i].hole].size();
    if (size > to.capacity()) to.reserve(std::max(size, 2 * to.capacity()));
    for (std::size_t i = 0; i < pieceCount_; ++i) {
      to.append(text.data() + pieces_[i].offset, pieces_[i].length);
      if (i + 1 < pieceCount_) to.append(values[pieces_[i].hole]);
    }
  }

  std::array<std::string_view, Holes> holes_;
  std::array<sql_detail::Piece, sql_detail::mostPieces> pieces_{};
  std::size_t pieceCount_ = 0;
};

template <class... Names>
Sql(const char*, const char*, Names...) -> Sql<sizeof...(Names)>;

// A line end inside a batch.
inline constexpr std::string_view lineEnd = "\r\n";

}  // namespace gljz
