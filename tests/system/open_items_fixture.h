#pragma once
// Accounts of persons, customers and suppliers for tests of open items.
//
//   class OpenItemsTest : public OpenItems<LedgerTest> {};
//   vouchers(closing, {"ccode | ccus_id | md", "1131 | C1 | 100"});
//   carry();
//   expectOpening("md", {"100"});

#include <string>
#include <vector>

#include "detail/open_items.h"
#include "driver/progress.h"
#include "system/voucher_lines.h"

namespace gljz::test {

// Accounts of every kind in both years, and the reference records of both years.
template <class Ledger>
class OpenItems : public VoucherLines<Ledger> {
protected:
  OpenItems() {
    run.m_iPersonMode = run.m_iCusMode = run.m_iSupMode = 2;
    chart(this->closing), chart(this->opening);
    references(this->closing);
    if (this->closing.database != this->opening.database) references(this->opening);
  }

  void chart(const Side& side) {
    this->account(side, "1133", {"bperson", "1"});
    this->account(side, "113398", {"bperson", "1", "bitem", "1", "cass_item", "98"});
    this->account(side, "1131", {"bcus", "1"});
    this->account(side, "113101", {"bcus", "1", "bdept", "1"});
    this->account(side, "113102", {"bcus", "1", "bitem", "1", "cass_item", "98"});
    this->account(side, "113103", {"bcus", "1", "bdept", "1", "bitem", "1", "cass_item", "98"});
    this->account(side, "2121", {"bsup", "1"});
    this->account(side, "212101", {"bsup", "1", "bdept", "1"});
    this->account(side, "212102", {"bsup", "1", "bitem", "1", "cass_item", "98"});
    this->account(side, "212103", {"bsup", "1", "bdept", "1", "bitem", "1", "cass_item", "98"});
  }
  void references(const Side& side) {
    this->fill(side, "Department", {"cDepCode | cDepName", "01 | 财务部", "02 | 销售部"});
    this->fill(side, "Person", {"cPersonCode | cPersonName", "P1 | 张三", "P2 | 李四"});
    this->fill(side, "Customer", {"cCusCode | cCusName | cCusAbbName", "C1 | 北一公司 | 北一", "C2 | 东方公司 | 东方"});
    this->fill(side, "Vendor", {"cVenCode | cVenName | cVenAbbName", "V1 | 唐钢公司 | 唐钢", "V2 | 宝钢公司 | 宝钢"});
    this->fill(side, "fitem", {"citem_class | cItem_Name | cItem_Text | crule", "98 | 项目 | 项目 | 22"});
    this->fill(side, "fitemss98", {"citemcode | citemname", "I1 | 工程一", "I2 | 工程二"});
    this->fill(side, "settlestyle", {"csscode | cssname", "1 | 现金", "2 | 汇款"});
  }

  void watch() {
    run.m_bManual = true;
    SetupImbalanceGrid(4);
  }

  // The three loops as a run makes them.
  void carry() {
    OpenItemState state;
    if (run.m_iPersonMode == 2) CarryPersonItems(state);
    if (run.m_iCusMode >= 2) CarryCustomerItems(state);
    if (run.m_iSupMode >= 2) CarrySupplierItems(state);
  }
};

}  // namespace gljz::test
