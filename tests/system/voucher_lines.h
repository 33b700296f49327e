#pragma once
// Voucher lines for tests of current accounts.
//
//   class OpenItemsTest : public VoucherLines<LedgerTest> {};
//   vouchers(closing, {"ccode | ccus_id | md", "1131 | C1 | 100"});

#include <string>
#include <vector>

#include "system/ledger_fixture.h"

namespace gljz::test {

template <class Ledger>
class VoucherLines : public Ledger {
protected:
  // Rows of gl_accvouch as fill takes them. What a head leaves out is as usual: line 1 of a voucher of 6 June,
  // period 6.
  void vouchers(const Side& side, const std::vector<std::string>& lines) {
    std::string head, values;
    for (const auto& [column, value] : {std::pair{"inid", "1"}, {"idoc", "0"}, {"iperiod", "6"}})
      add(lines, column, value, head, values);
    add(lines, "dbill_date", (std::to_string(side.year) + "-06-06").c_str(), head, values);
    for (std::size_t i = 1; i < lines.size(); ++i)
      this->fill(side, "gl_accvouch", {head + lines.front(), values + lines[i]});
  }

  // The opening details of the new year, in the order in which they were written.
  void expectOpening(const std::string& columns, const std::vector<std::string>& expected) {
    this->expectRows(this->opening,
                     "select " + columns + " from gl_accvouch where iyear=2006 and iperiod=0 order by i_id", expected);
  }

  Side yearOf(int year) const { return {this->closing.database, year}; }

private:
  static void add(const std::vector<std::string>& lines, const char* column, const char* value, std::string& head,
                  std::string& values) {
    if (("|" + lines.front() + "|").find(column) != std::string::npos) return;
    head += std::string(column) + "|";
    values += std::string(value) + "|";
  }
};

}  // namespace gljz::test
