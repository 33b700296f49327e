#pragma once
// What the open items ask of the closing year beside its reference records.

#include <string>

namespace gljz {

struct SettleStyleRecord {
  bool bssflag = false;
  std::string csscode, cssname;
};

// A settlement style of the closing year. Only a last-level one (bssend) is taken; otherwise the record stays as it is.
void LoadSettleStyle(const std::string& code, SettleStyleRecord& record);

// Whether no line of an account has foreign money, asked on the closing year's connection without regard to the year:
// with one shared database the lines that the run has written count, too. kind "yh" leaves deleted lines out instead of
// cleared ones.
bool HasNoForeignAmounts(const std::string& ccode, const std::string& kind);

}  // namespace gljz
