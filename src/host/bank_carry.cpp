#include "host/bank_carry.h"

#include <functional>
#include <map>
#include <utility>

#include "host/connection_text.h"
#include "platform/value.h"

namespace host {
namespace {

using platform::Money;
using platform::Recordset;
using platform::Value;

class Reader {
public:
  Reader(platform::ZwPubCls& services, const BankYears& years)
      : services_(services), years_(years), options_(services.AccountOptions()) {}

  std::vector<BankCarry> read() {
    accounts();
    if (accounts_.empty()) return {};
    closingBalances();
    closingLines();
    closingStatements();
    newLines();
    newStatements();
    if (!platform::equalsIgnoreCase(years_.closingDatabase, years_.newDatabase)) cheques();
    std::vector<BankCarry> all;
    for (auto& [key, carry] : carries_)
      if (hasAnything(carry)) all.push_back(std::move(carry));
    return all;
  }

private:
  struct Account {
    std::string name;
    std::string newCurrency;  // of the new year's account
    bool creditSide = false;
  };

  static bool hasAnything(const BankCarry& c) {
    const auto any = [](const BankCarry::Count& count) { return count.open > 0 || count.carried > 0; };
    return !c.closingBalance.isZero() || !c.ledgerBalance.value_or(Money()).isZero() ||
           !c.bankBalance.value_or(Money()).isZero() || any(c.lines) || any(c.statements) ||
           any(c.cheques.value_or(BankCarry::Count{}));
  }

  void each(const std::string& sql, const std::function<void(const Recordset&)>& use) {
    auto rows = services_.NewYearConn()->OpenRecordset(sql, 2);
    for (; !rows->Eof(); rows->MoveNext()) use(*rows);
    rows->Close();
  }
  std::string closing(const char* table) const { return bracketed(years_.closingDatabase) + ".." + table; }
  // The last-level bank accounts of the closing year and the rows of a table that are on them.
  std::string onBankAccounts(const char* table) const {
    return " from " + closing(table) + " v inner join " + closing("code") +
           " c on c.ccode=v.ccode and c.iyear=" + years_.closingYear + " where c.be=1 and c.bend=1";
  }

  void accounts() {
    each("select ccode,ccode_name,bd_c from " + closing("code") +
             " where be=1 and bend=1 and iyear=" + years_.closingYear,
         [this](const Recordset& row) {
           const Value side = row.Field("bd_c");
           accounts_[row.Field("ccode").asText()] = {
               row.Field("ccode_name").displayText(), {}, !side.isNull() && !side.asBool()};
         });
    for (auto& [code, account] : accounts_) {
      const std::string newCode = services_.MatchCode(code, 2, true);
      if (newCode.empty()) continue;
      platform::CodeRecord record;
      services_.GetCodeRecord(newCode, record);
      account.newCurrency = record.Cexch_name;
    }
  }

  // The currency that the new year gives a row of the closing one.
  std::string currencyOf(const std::string& code, const Value& own) const {
    if (own.isNull()) return {};
    return options_.bMultiCurrency ? own.asText() : accounts_.at(code).newCurrency;
  }
  bool isForeign(const std::string& currency) const {
    return !currency.empty() && currency != options_.cDefaultCurrency;
  }
  // Null for rows of an account that the closing year does not reconcile.
  BankCarry* carryOf(const std::string& code, const std::string& currency) {
    const auto account = accounts_.find(code);
    if (account == accounts_.end()) return nullptr;
    BankCarry& carry = carries_[{code, isForeign(currency) ? currency : std::string()}];
    carry.account = code;
    carry.name = account->second.name;
    carry.currency = isForeign(currency) ? currency : std::string();
    return &carry;
  }
  BankCarry* carryOf(const Recordset& closingRow) {
    const std::string code = closingRow.Field("ccode").asText();
    return accounts_.contains(code) ? carryOf(code, currencyOf(code, closingRow.Field("cexch_name"))) : nullptr;
  }
  BankCarry* carryOfNew(const Recordset& newRow) {
    return carryOf(newRow.Field("ccode").asText(), newRow.Field("cexch_name").displayText());
  }

  void closingBalances() {
    each("select v.ccode,v.cexch_name,v.cendd_c,v.me,v.me_f" + onBankAccounts("gl_accsum") +
             " and v.iperiod=12 and v.iyear=" + years_.closingYear,
         [this](const Recordset& row) {
           BankCarry* carry = carryOf(row);
           if (carry == nullptr) return;
           const Money amount = row.Field(carry->currency.empty() ? "me" : "me_f").asMoney();
           const bool credit = row.Field("cendd_c").displayText() == "贷";
           carry->closingBalance = carry->closingBalance + (credit ? -amount : amount);
         });
  }

  // What the bank stage selects, but for the balances. A foreign line without foreign money says nothing to a
  // reconciliation; the stage leaves it out without a word.
  void closingLines() {
    const std::string marks = years_.markedLinesToo ? "isnull(v.iflagbank,0)<=24" : "isnull(v.iflagbank,0)=0";
    each(
        "select v.ccode,v.cexch_name,count(*) as lines,sum(case when v.md_f=0 and v.mc_f=0 then 1 else 0 end) as "
        "without_foreign" +
            onBankAccounts("gl_accvouch") + " and v.iyear=" + years_.closingYear +
            " and v.iperiod<>20 and v.bdelete=0 and " + marks + " and v.iflag is null group by v.ccode,v.cexch_name",
        [this](const Recordset& row) {
          BankCarry* carry = carryOf(row);
          if (carry == nullptr) return;
          carry->lines.open += row.Field("lines").asInteger();
          if (!carry->currency.empty()) carry->lines.open -= row.Field("without_foreign").asInteger();
        });
  }

  void closingStatements() {
    each("select v.ccode,v.cexch_name,count(*) as lines" + onBankAccounts("rp_bankrecp") +
             " and v.iyear=" + years_.closingYear + " and v.ibegin<>0 and v.bdelete=0" +
             (years_.markedLinesToo ? "" : " and v.iflag is null") + " group by v.ccode,v.cexch_name",
         [this](const Recordset& row) {
           if (BankCarry* carry = carryOf(row)) carry->statements.open += row.Field("lines").asInteger();
         });
  }

  // Of the carried lines those without a mark wait for the bank.
  void newLines() {
    each(
        "select ccode,cexch_name,iperiod,count(*) as lines,sum(md) as balance,"
        "sum(case when isnull(iflagbank,0)=0 then md-mc else 0 end) as waiting,"
        "sum(case when isnull(iflagbank,0)=0 then md_f-mc_f else 0 end) as waiting_f "
        "from gl_accvouch where iyear=" +
            years_.newYear + " and iperiod in (20,21) group by ccode,cexch_name,iperiod",
        [this](const Recordset& row) {
          BankCarry* carry = carryOfNew(row);
          if (carry == nullptr) return;
          constexpr int balancePeriod = 20;
          if (row.Field("iperiod").asInteger() == balancePeriod) {
            carry->ledgerBalance = carry->ledgerBalance.value_or(Money()) + row.Field("balance").asMoney();
            return;
          }
          carry->lines.carried += row.Field("lines").asInteger();
          carry->linesOnly = carry->linesOnly + row.Field(carry->currency.empty() ? "waiting" : "waiting_f").asMoney();
        });
  }

  void newStatements() {
    each(
        "select ccode,cexch_name,ibegin,count(*) as lines,sum(mmoney) as balance,"
        "sum(case when iflag is null then (case when bd_c=1 then mmoney else -mmoney end) else 0 end) as waiting "
        "from rp_bankrecp where iyear=" +
            years_.newYear + " and ibegin in (0,1) group by ccode,cexch_name,ibegin",
        [this](const Recordset& row) {
          const Value code = row.Field("ccode");
          BankCarry* carry = code.isNull() ? nullptr : carryOfNew(row);
          if (carry == nullptr) return;
          if (row.Field("ibegin").asInteger() == 0) {
            const Money balance = row.Field("balance").asMoney();
            const bool credit = accounts_.at(code.asText()).creditSide;
            carry->bankBalance = carry->bankBalance.value_or(Money()) + (credit ? -balance : balance);
            return;
          }
          carry->statements.carried += row.Field("lines").asInteger();
          carry->statementsOnly = carry->statementsOnly + row.Field("waiting").asMoney();
        });
  }

  void cheques() {
    for (auto& [key, carry] : carries_) carry.cheques = BankCarry::Count{};
    const std::string outstanding =
        "select v.ccode,v.cexch_name,count(*) as cheques" + onBankAccounts("rp_cheque") + " and v.dout is null";
    const auto count = [&](const std::string& more, std::int64_t BankCarry::Count::*member) {
      each(outstanding + more + " group by v.ccode,v.cexch_name", [&](const Recordset& row) {
        BankCarry* carry = carryOf(row);
        if (carry == nullptr) return;
        if (!carry->cheques) carry->cheques = BankCarry::Count{};
        (*carry->cheques).*member += row.Field("cheques").asInteger();
      });
    };
    count("", &BankCarry::Count::open);
    count(" and v.ccheque_id in (select ccheque_id from rp_cheque)", &BankCarry::Count::carried);
  }

  platform::ZwPubCls& services_;
  const BankYears& years_;
  platform::AccountOptions options_;
  std::map<std::string, Account> accounts_;
  std::map<std::pair<std::string, std::string>, BankCarry> carries_;
};

}  // namespace

Money BankCarry::difference() const {
  return ledgerBalance.value_or(Money()) - closingBalance;
}

Money BankCarry::gap() const {
  return ledgerBalance.value_or(Money()) + statementsOnly - bankBalance.value_or(Money()) - linesOnly;
}

std::vector<BankCarry::Finding> BankCarry::findings() const {
  std::vector<Finding> found;
  if (!ledgerBalance && (!closingBalance.isZero() || lines.open > 0))
    found.push_back(Finding::balanceMissing);
  else if (!difference().isZero())
    found.push_back(Finding::balanceDiffers);
  if (lines.carried < lines.open) found.push_back(Finding::linesMissing);
  if (statements.carried < statements.open) found.push_back(Finding::statementsMissing);
  if (cheques && cheques->carried < cheques->open) found.push_back(Finding::chequesMissing);
  // Without any statement the account is not reconciled at all, and with a finding the amounts are not worth comparing.
  if (found.empty() && bankBalance && !gap().isZero()) found.push_back(Finding::notReconciled);
  return found;
}

std::vector<BankCarry> readBankCarry(platform::ZwPubCls& services, const BankYears& years) {
  return Reader(services, years).read();
}

}  // namespace host
