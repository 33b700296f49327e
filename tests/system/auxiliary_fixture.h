#pragma once
// AuxiliaryTest: a ledger with reference records, for the stages that look at auxiliaries.

#include <string>
#include <vector>

#include "driver/progress.h"
#include "system/ledger_fixture.h"

namespace gljz::test {

// Both years have department 01, person P1, customer C1, supplier V1 and item I1 of class 98; what ends in 2 or 02 is
// only in the closing year.
class AuxiliaryTest : public LedgerTest {
protected:
  explicit AuxiliaryTest(Layout layout = Layout::separate) : LedgerTest(layout) {
    fill(opening, "Department", {"cDepCode | cDepName", "01 | 财务部"});
    fill(opening, "Person", {"cPersonCode | cPersonName | cDepCode", "P1 | 张三 | 01"});
    fill(opening, "Customer", {"cCusCode | cCusName | cCusAbbName", "C1 | 北京一公司 | 北一"});
    fill(opening, "Vendor", {"cVenCode | cVenName | cVenAbbName", "V1 | 唐山钢厂 | 唐钢"});
    fill(opening, "fitemss98", {"citemcode | citemname", "I1 | 一期"});
    fill(closing, "Department", {"cDepCode | cDepName", "02 | 旧部门"});
    fill(closing, "Person", {"cPersonCode | cPersonName", "P2 | 旧人"});
    fill(closing, "Customer", {"cCusCode | cCusName | cCusAbbName", "C2 | 旧客户公司 | 旧客户"});
    fill(closing, "Vendor", {"cVenCode | cVenName | cVenAbbName", "V2 | 旧供应商公司 | 旧供应商"});
    fill(closing, "fitemss98", {"citemcode | citemname", "I2 | 旧项目"});
    if (layout == Layout::shared) return;
    fill(closing, "Department", {"cDepCode | cDepName", "01 | 财务部"});
    fill(closing, "Person", {"cPersonCode | cPersonName | cDepCode", "P1 | 张三 | 01"});
    fill(closing, "Customer", {"cCusCode | cCusName | cCusAbbName", "C1 | 北京一公司 | 北一"});
    fill(closing, "Vendor", {"cVenCode | cVenName | cVenAbbName", "V1 | 唐山钢厂 | 唐钢"});
    fill(closing, "fitemss98", {"citemcode | citemname", "I1 | 一期"});
  }

  // Somebody watches: the account totals, which come first in a run, have laid out the grid of the reports.
  void watch() {
    run.m_bManual = true;
    SetupImbalanceGrid(4);
  }

  // A row of the closing year's period 12 from "column", "value", ...
  void closingRow(const std::string& table, const std::string& ccode, const std::string& me, const Columns& columns) {
    std::string head = "ccode|iperiod|me", row = ccode + "|12|" + me;
    for (std::size_t i = 0; i + 1 < columns.size(); i += 2) head += "|" + columns[i], row += "|" + columns[i + 1];
    fill(closing, table, {head, row});
  }
};

// The flags of an account of each auxiliary type, and what its rows name.
inline const Columns department = {"bdept", "1"};
inline const Columns personal = {"bperson", "1"};
inline const Columns customer = {"bcus", "1"};
inline const Columns supplier = {"bsup", "1"};
inline const Columns project = {"bitem", "1", "cass_item", "98"};

inline Columns operator+(Columns a, const Columns& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

}  // namespace gljz::test
