#include "host/generate.h"

#include <cstdlib>

#include "host/account.h"
#include "host/database_desk.h"
#include "host/generated_ledger.h"

namespace host {
namespace {

using platform::DateTime;
using platform::Money;
using platform::Value;

std::string padded(const char* letter, int n) {
  const std::string digits = std::to_string(n + 1);
  return letter + std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') + digits;
}
std::string customer(int n) {
  return padded("C", n);
}
std::string supplier(int n) {
  return padded("V", n);
}
std::string person(int n) {
  return padded("P", n);
}
std::string department(int n) {
  return padded("D", n);
}
std::string item(int n) {
  return padded("I", n);
}

Money money(std::int64_t hundredths) {
  return Money::fromUnits(hundredths * (Money::unitsPerOne / 100));
}
Money magnitude(std::int64_t hundredths) {
  return money(std::llabs(hundredths));
}
const char* directionWord(std::int64_t amount) {
  return amount > 0 ? "借" : amount < 0 ? "贷" : "平";
}
const char* directionEnglish(std::int64_t amount) {
  return amount > 0 ? "Dr" : amount < 0 ? "Cr" : "-";
}
constexpr const char* foreignCurrency = "美元";

// Values of an auxiliary row: department, person, customer, supplier, item, item class.
std::vector<Value> partners(AccountKind kind, int n) {
  std::vector<Value> v(6);
  switch (kind) {
    case AccountKind::customer:
      v[2] = customer(n);
      break;
    case AccountKind::supplier:
      v[3] = supplier(n);
      break;
    case AccountKind::person:
      v[0] = department(n % departmentCount);
      v[1] = person(n);
      break;
    case AccountKind::department:
      v[0] = department(n);
      break;
    case AccountKind::item:
      v[4] = item(n);
      v[5] = "98";
      break;
    default:
      break;
  }
  return v;
}

class Writer {
public:
  Writer(DatabaseDesk& desk, const Ledger& ledger, int year) : desk_(desk), ledger_(ledger), year_(year) {}

  Generated write() {
    references();
    chart();
    for (const LedgerAccount& account : ledger_.accounts)
      if (account.hasBalance) total(account);
    for (const AuxiliaryBalance& auxiliary : ledger_.auxiliaries) auxiliaryRow(auxiliary);
    int number = 0;
    for (const LedgerLine& line : ledger_.items) voucherLine(line, ++number);
    for (const LedgerLine& line : ledger_.clearedItems) voucherLine(line, ++number);
    for (const BankOpening& opening : ledger_.bankOpenings) bankOpening(opening);
    for (const LedgerLine& line : ledger_.bankLines) voucherLine(line, ++number);
    for (const LedgerLine& line : ledger_.statementLines) statementLine(line, ++number);
    for (const Cheque& cheque : ledger_.cheques) chequeRow(cheque, ++number);
    counts_.accounts = static_cast<std::int64_t>(ledger_.accounts.size());
    counts_.items = static_cast<std::int64_t>(ledger_.items.size());
    counts_.bank = static_cast<std::int64_t>(ledger_.bankLines.size());
    counts_.statements = static_cast<std::int64_t>(ledger_.statementLines.size());
    counts_.cheques = static_cast<std::int64_t>(ledger_.cheques.size());
    return counts_;
  }

private:
  void references() {
    desk_.run("insert into dsign(csign, isignseq, ctext) values(N'记', 1, N'记账凭证')");
    desk_.run("insert into settlestyle(csscode, cssname, bssflag, bssend) values(N'1', N'支票', 0, 1)");
    desk_.run("insert into foreigncurrency(cexch_name, cexch_code) values(N'美元', N'USD')");
    desk_.run(
        "insert into fitem(citem_class, cItem_Name, cItem_Text, crule) values(N'98', N'工程项目', N'工程项目', N'5')");
    for (int n = 0; n < departmentCount; ++n)
      desk_.run("insert into Department(cDepCode, cDepName, iDepGrade, bDepEnd) values(?, ?, 1, 1)",
                {department(n), "部门" + std::to_string(n + 1)});
    for (int n = 0; n < personCount; ++n)
      desk_.run("insert into Person(cPersonCode, cPersonName, cDepCode) values(?, ?, ?)",
                {person(n), "职员" + std::to_string(n + 1), department(n % departmentCount)});
    for (int n = 0; n < customerCount; ++n)
      desk_.run("insert into Customer(cCusCode, cCusName, cCusAbbName) values(?, ?, ?)",
                {customer(n), "客户" + std::to_string(n + 1) + "有限公司", "客户" + std::to_string(n + 1)});
    for (int n = 0; n < supplierCount; ++n)
      desk_.run("insert into Vendor(cVenCode, cVenName, cVenAbbName) values(?, ?, ?)",
                {supplier(n), "供应商" + std::to_string(n + 1) + "有限公司", "供应商" + std::to_string(n + 1)});
    for (int n = 0; n < itemCount; ++n)
      desk_.run("insert into fitemss98(citemcode, citemname, bclose) values(?, ?, 0)",
                {item(n), "项目" + std::to_string(n + 1)});
  }

  void chart() {
    const DateTime yearBegin = DateTime::fromDate(year_, 1, 1);
    for (const LedgerAccount& a : ledger_.accounts) {
      const auto is = [&](AccountKind kind) { return a.kind == kind; };
      const bool leafBank = a.last && isBank(a.kind);
      desk_.run(
          "insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c, bcus, bsup, bperson, bdept, bitem, "
          "cass_item, be, bbank, cexch_name, cmeasure, bcDefine1, dbegin) values(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
          "?, "
          "?, ?, ?, ?, ?, ?)",
          {year_, a.code, a.name, is(AccountKind::supplier) ? "负债" : "资产", a.grade, a.last,
           !is(AccountKind::supplier), is(AccountKind::customer), is(AccountKind::supplier), is(AccountKind::person),
           is(AccountKind::department), is(AccountKind::item), is(AccountKind::item) ? Value("98") : Value(), leafBank,
           leafBank, is(AccountKind::foreign) ? Value(foreignCurrency) : Value(),
           is(AccountKind::quantity) ? Value("吨") : Value(), is(AccountKind::defined),
           leafBank ? Value(yearBegin) : Value()});
    }
  }

  void total(const LedgerAccount& a) {
    const bool foreign = a.kind == AccountKind::foreign, quantity = a.kind == AccountKind::quantity;
    if (a.last) ++counts_.balances;
    desk_.run(
        "insert into gl_accsum(iyear, ccode, cexch_name, iperiod, cbegind_c, cbegind_c_engl, cendd_c, cendd_c_engl, "
        "mb, "
        "me, mb_f, me_f, nb_s, ne_s) values(?, ?, ?, 12, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
        {year_, a.code, foreign ? Value(foreignCurrency) : Value(), directionWord(a.amount), directionEnglish(a.amount),
         directionWord(a.amount), directionEnglish(a.amount), magnitude(a.amount), magnitude(a.amount),
         foreignAmount(foreign, a.amount), foreignAmount(foreign, a.amount), units(quantity, a.amount),
         units(quantity, a.amount)});
  }
  static Money foreignAmount(bool foreign, std::int64_t amount) {
    return foreign ? Money::fromUnits(magnitude(amount).units() / foreignRate) : Money();
  }
  // A unit is worth 25; the amounts' 1/100 make quarters of hundredths, exact in a double.
  static double units(bool quantity, std::int64_t amount) {
    return quantity ? static_cast<double>(std::llabs(amount)) / 2500.0 : 0.0;
  }

  // Every auxiliary balance stands in the multi-auxiliary table, signed; those without user-defined columns stand in
  // the auxiliary table too.
  void auxiliaryRow(const AuxiliaryBalance& auxiliary) {
    const LedgerAccount& account = ledger_.accounts[auxiliary.account];
    const std::vector<Value> who = partners(account.kind, auxiliary.partner);
    const bool defined = account.kind == AccountKind::defined;
    ++counts_.multiAuxiliaries;
    desk_.run(
        "insert into gl_accMultiass(iyear, ccode, cdept_id, cperson_id, ccus_id, csup_id, citem_id, citem_class, "
        "cDefine1, iperiod, mb, me) values(?, ?, ?, ?, ?, ?, ?, ?, ?, 12, ?, ?)",
        {year_, account.code, who[0], who[1], who[2], who[3], who[4], who[5],
         defined ? Value("合同" + std::to_string(auxiliary.partner + 1)) : Value(), money(auxiliary.amount),
         money(auxiliary.amount)});
    if (defined) return;
    ++counts_.auxiliaries;
    const char *word = directionWord(auxiliary.amount), *english = directionEnglish(auxiliary.amount);
    desk_.run(
        "insert into gl_accass(iyear, ccode, cdept_id, cperson_id, ccus_id, csup_id, citem_id, citem_class, iperiod, "
        "cbegind_c, cbegind_c_engl, cendd_c, cendd_c_engl, mb, me) values(?, ?, ?, ?, ?, ?, ?, ?, 12, ?, ?, ?, ?, ?, "
        "?)",
        {year_, account.code, who[0], who[1], who[2], who[3], who[4], who[5], word, english, word, english,
         magnitude(auxiliary.amount), magnitude(auxiliary.amount)});
  }

  bool isForeign(std::size_t account) const { return ledger_.accounts[account].kind == AccountKind::foreign; }
  Value currencyOf(std::size_t account) const { return isForeign(account) ? Value(foreignCurrency) : Value(); }
  // In the account's own currency.
  Money ownAmount(std::size_t account, std::int64_t amount) const {
    return money(isForeign(account) ? amount / foreignRate : amount);
  }

  void voucherLine(const LedgerLine& line, int number) {
    const LedgerAccount& account = ledger_.accounts[line.account];
    const bool bank = line.auxiliary == LedgerLine::noAuxiliary, foreign = isForeign(line.account);
    const std::vector<Value> who =
        bank ? std::vector<Value>(6) : partners(account.kind, ledger_.auxiliaries[line.auxiliary].partner);
    const DateTime date = DateTime::fromDate(year_, line.month, line.day);
    const auto side = [&](bool wanted, std::int64_t amount) { return wanted ? money(std::llabs(amount)) : Money(); };
    const std::int64_t own = foreign ? line.amount / foreignRate : 0;
    const bool cleared = line.clearedIn != 0, styled = bank || line.amount < 0;
    desk_.run(
        "insert into gl_accvouch(iyear, iYPeriod, iperiod, csign, isignseq, ino_id, inid, dbill_date, idoc, ibook, "
        "cdigest, ccode, cexch_name, md, mc, md_f, mc_f, nfrat, csettle, cn_id, dt_date, cdept_id, cperson_id, "
        "ccus_id, "
        "csup_id, citem_id, citem_class, iflagPerson, wllqPeriod) "
        "values(?, ?, ?, N'记', 1, ?, ?, ?, 0, 1, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
        {year_,
         year_ * 100 + line.month,
         line.month,
         1 + number % 30000,
         1 + number % 100,
         date,
         bank ? "银行收付" : "往来业务",
         account.code,
         currencyOf(line.account),
         side(line.amount > 0, line.amount),
         side(line.amount < 0, line.amount),
         side(line.amount > 0, own),
         side(line.amount < 0, own),
         foreign ? static_cast<double>(foreignRate) : 0.0,
         styled ? Value("1") : Value(),
         bank ? Value(padded("Z", number)) : Value(),
         bank ? Value(date) : Value(),
         who[0],
         who[1],
         who[2],
         who[3],
         who[4],
         who[5],
         cleared ? Value(1) : Value(),
         cleared ? Value(clearingPeriod(line.clearedIn)) : Value()});
  }
  int clearingPeriod(int month) const { return month <= 12 ? year_ * 100 + month : (year_ + 1) * 100 + month - 12; }

  // The balance row of the ledger and the opening row of the statements, both in the account's currency.
  void bankOpening(const BankOpening& opening) {
    const DateTime begin = DateTime::fromDate(year_, 1, 1);
    const Money balance = ownAmount(opening.account, opening.amount);
    desk_.run(
        "insert into gl_accvouch(iyear, iperiod, inid, dbill_date, idoc, ibook, cdigest, ccode, cexch_name, md) "
        "values(?, 20, 0, ?, 0, 1, N' ', ?, ?, ?)",
        {year_, begin, ledger_.accounts[opening.account].code, currencyOf(opening.account), balance});
    desk_.run(
        "insert into rp_bankrecp(iyear, ibegin, ddate, mmoney, mbalance, ccode, cexch_name, bd_c) "
        "values(?, 0, ?, ?, ?, ?, ?, 1)",
        {year_, begin, balance, balance, ledger_.accounts[opening.account].code, currencyOf(opening.account)});
  }

  void statementLine(const LedgerLine& line, int number) {
    desk_.run(
        "insert into rp_bankrecp(iyear, ibegin, ddate, mmoney, ccode, cexch_name, csettle, cn_id, bd_c) "
        "values(?, 1, ?, ?, ?, ?, N'1', ?, ?)",
        {year_, DateTime::fromDate(year_, line.month, line.day), ownAmount(line.account, std::llabs(line.amount)),
         ledger_.accounts[line.account].code, currencyOf(line.account), padded("Z", number), line.amount > 0});
  }

  void chequeRow(const Cheque& cheque, int number) {
    const DateTime date = DateTime::fromDate(year_, cheque.month, cheque.day);
    desk_.run(
        "insert into rp_cheque(cCode, cexch_name, ccheque_id, dbill_date, mmoney, ctext, dout) values(?, ?, ?, ?, ?, "
        "N'货款', ?)",
        {ledger_.accounts[cheque.account].code, currencyOf(cheque.account), padded("ZP", number), date,
         ownAmount(cheque.account, cheque.amount), cheque.used ? Value(date) : Value()});
  }

  DatabaseDesk& desk_;
  const Ledger& ledger_;
  int year_;
  Generated counts_;
};

}  // namespace

Generated generateAccountSet(const ServerPtr& server, const std::string& account, int closingYear, int newYear,
                             const GeneratedSize& size, std::uint64_t seed) {
  const Ledger ledger = makeLedger(size.accounts, size.balances, size.items, size.bank, seed);
  const std::string database = createAccount(server, {account, "合成账套" + account, closingYear, closingYear});
  Generated counts;
  try {
    DatabaseDesk desk(server, database);
    desk.transaction([&] { counts = Writer(desk, ledger, closingYear).write(); });
    closeYear(server, account, closingYear);
    openYear(server, account, newYear);
  } catch (...) {
    removeAccount(server, account);
    throw;
  }
  return counts;
}

}  // namespace host
