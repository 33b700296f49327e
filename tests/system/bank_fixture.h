#pragma once
// Bank accounts for tests of the bank stage.
//
//   class BankLedgerTest : public BankFixture<LedgerTest> {};
//   bank("100201");
//   vouchers(closing, {"ccode | md", "100201 | 100"});

#include <string>
#include <vector>

#include "detail/bank_ledger.h"
#include "driver/progress.h"
#include "system/voucher_lines.h"

namespace gljz::test {

template <class Ledger>
class BankFixture : public VoucherLines<Ledger> {
protected:
  // A debit account that is reconciled since the begin of 2005.
  void bank(const Side& side, const std::string& ccode, const Columns& more = {}) {
    Columns columns = more;
    for (const auto& [name, value] : {std::pair{"be", "1"}, {"bd_c", "1"}, {"dbegin", "2005-01-01"}}) {
      bool named = false;
      for (std::size_t i = 0; i < more.size(); i += 2) named |= more[i] == name;
      if (!named) columns.insert(columns.end(), {name, value});
    }
    this->account(side, ccode, columns);
  }
  void bank(const std::string& ccode, const Columns& more = {}) {
    bank(this->closing, ccode, more);
    bank(this->opening, ccode, more);
  }

  // Each account may have lines in several currencies; the main one is 人民币.
  void severalCurrencies() {
    this->option("bMultiCurrency", "True");
    this->option("cDefaultCurrency", "人民币");
  }

  // An operator watches the run: what is left out goes into the grid, which an earlier stage has laid out.
  void watched() {
    run.m_bManual = true;
    SetupImbalanceGrid(4);
  }

  // The new year's bank ledger, in the order in which it was written.
  std::vector<std::string> carried(const std::string& columns) {
    return this->rows(this->opening, "select " + columns + " from gl_accvouch where iyear=2006 order by i_id");
  }
  void expectCarried(const std::string& columns, const std::vector<std::string>& expected) {
    this->expectRows(this->opening, "select " + columns + " from gl_accvouch where iyear=2006 order by i_id", expected);
  }
  void expectMarkers(const std::vector<std::string>& expected) {
    this->expectRows(this->closing,
                     "select ccode,cexch_name,md,mc from gl_accvouch where iyear=2005 and iperiod=20 "
                     "order by ccode,cexch_name",
                     expected);
  }

  std::size_t timesRun(const std::string& part) const {
    std::size_t times = 0;
    for (const SpiedStatement& statement : this->statements()) times += statement.text.find(part) != std::string::npos;
    return times;
  }
};

}  // namespace gljz::test
