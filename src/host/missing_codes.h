#pragma once
// Codes that the run asked the new year for and that it does not have. What names them is left out, but for lines of
// bank accounts, which keep their codes. A run that somebody watches tells of it row by row; one that nobody watches
// says nothing, and these notes are all there is to read.

#include <compare>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace host {

class MissingCodes {
public:
  enum class Kind { account, department, person, customer, supplier, item };
  enum class Named { leftOut, carried };  // what became of what names the code

  void add(Kind kind, std::string_view code, std::string_view itemClass = {}, Named named = Named::leftOut);
  // A selection from the new year had no row; one that asked whether a record is there counts.
  void selectionWasEmpty(std::string_view selection, Named named = Named::leftOut);

  // One text for each code, by kind and code. A run over a foreign chart must not fill the memory: a thousand at most,
  // and one more text when there were others.
  std::vector<std::string> notes() const;

private:
  struct Code {
    Kind kind;
    std::string code, itemClass;
    Named named;
    auto operator<=>(const Code&) const = default;
  };
  std::set<Code> codes_;
  bool more_ = false;
};

}  // namespace host
