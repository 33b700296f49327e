#include "detail/bank_ledger.h"

#include <optional>

#include "balances/reference_records.h"
#include "core/mdu_jz.h"
#include "detail/bank_account.h"
#include "detail/bank_ledger_sql.h"
#include "detail/bank_statements.h"
#include "detail/cheque_register.h"
#include "detail/voucher_values.h"
#include "driver/progress.h"
#include "platform/surroundings.h"

namespace gljz {
namespace {

namespace sql = bank_ledger_sql;
using platform::CursorLocation;
using platform::Money;
using platform::Recordset;
using platform::RunTimeError;
using platform::Value;

constexpr const char* null = "Null";
constexpr int balancePeriod = 20, linePeriod = 21;
constexpr std::int32_t serverCursorFrom = 200000;  // lines; below it all of them fit into memory

const BankAccount::Reasons reasons{"Orvo.GL.TqGLJZ.00190", "Orvo.GL.TqGLJZ.00202", "Orvo.GL.TqGLJZ.00188"};

std::string bankFilter() {
  return run.m_bBankTransfer == 2 ? sql::openLines() : sql::openAndMarkedLines();
}

// Stays in the closing year for good, outside the transaction when that year has a database of its own.
void markBalances() {
  lastConn().ExecuteSql(sql::insertMarkers(run.m_strLastYear, platform::surroundings().today().text(), bankFilter()));
}

CursorLocation cursorForLines() {
  const std::int32_t lines = RecordCount(sql::countLines(run.m_strLastYear, bankFilter()));
  return lines >= serverCursorFrom ? CursorLocation::server : CursorLocation::client;
}

// What the line refers to; Null for nothing.
struct Auxiliaries {
  Value dept, person, cus, sup, item, itemClass;
};

Value keyOf(const Recordset& line, const char* field) {
  const Value key = line.Field(field);
  return key.displayText().empty() ? Value() : key;
}

// Intended: a run that nobody watches keeps a key that the new year does not have; a watched one reports and drops it.
template <class Exists, class NameOf>
void dropMissing(Value& key, const Exists& exists, const char* kindKey, const NameOf& nameOf) {
  if (key.isNull()) return;
  const std::string code = key.asText();
  if (!exists(code).empty() || !run.m_bManual) return;
  reportBankLine(kindKey, code, nameOf(code), "Orvo.GL.TqGLJZ.00192");
  key = {};
}

// The item is not checked.
Auxiliaries auxiliariesOf(const Recordset& line) {
  Auxiliaries keys{keyOf(line, "cdept_ID"), keyOf(line, "cPerson_ID"), keyOf(line, "ccus_id"),
                   keyOf(line, "csup_id"),  keyOf(line, "cItem_id"),   keyOf(line, "citem_class")};
  dropMissing(keys.dept, DepExists, "Orvo.GL.TqGLJZ.00114", [](const std::string& code) {
    DepartmentRecord record;
    LoadDepartment(lastConn(), code, record);
    return record.cDepName;
  });
  dropMissing(keys.person, PersonExists, "Orvo.GL.TqGLJZ.00116", [](const std::string& code) {
    PersonRecord record;
    LoadPerson(lastConn(), code, record);
    return record.cPersonName;
  });
  dropMissing(keys.cus, CusExists, "Orvo.GL.TqGLJZ.00118", [](const std::string& code) {
    CustomerRecord record;
    LoadCustomer(lastConn(), code, record);
    return record.cCusAbbName;
  });
  dropMissing(keys.sup, VenExists, "Orvo.GL.TqGLJZ.00120", [](const std::string& code) {
    VendorRecord record;
    LoadVendor(lastConn(), code, record);
    return record.cVenAbbName;
  });
  return keys;
}

bool isZero(const Value& amount) {
  return !amount.isNull() && amount.asMoney() == Money();
}

bool isBalance(const Recordset& line) {
  return line.Field("iperiod").asInteger() == balancePeriod;
}

// A foreign line that moves no foreign money says nothing to the reconciliation; the balance row stays.
bool isEmptyForeignLine(const Recordset& line, const BankAccount& account) {
  return account.inForeignCurrency() && isZero(line.Field("md_f")) && isZero(line.Field("mc_f")) && !isBalance(line);
}

void moveReconciliation(const std::string& ccode) {
  newConn().ExecuteSql(sql::updateBegin(GetYearStartDate().text(), run.m_strCurYear, ccode));
  newConn().ExecuteSql(sql::updateEnd(ccode, run.m_strCurYear, run.m_strLastYear));
}

// The closing year's balance row and the account's movement since its reconciliation began. For a foreign currency that
// is the movement in foreign amounts, and it goes into md all the same; that is intended.
Money balanceOf(const Recordset& line, const BankAccount& account) {
  const std::string ccode = line.Field("ccode").asText();
  Money balance = line.Field("md").asMoney();

  auto codeRow = GetLastCodeRow(ccode, run.m_strLastYear);
  const std::string begin = reconciliationBegin(*codeRow);
  codeRow->Close();

  const char* amounts = account.inForeignCurrency() ? "_f" : "";
  auto movement = lastConn().OpenRecordset(
      sql::sumMovement(amounts, run.m_strLastYear, ccode, begin, currencyCondition(account.currency())), 2);
  if (!movement->Eof()) {
    if (const Value debit = movement->Field("zd1"); !debit.isNull()) balance = balance + debit.asMoney();
    if (const Value credit = movement->Field("zd2"); !credit.isNull()) balance = balance - credit.asMoney();
  }
  movement->Close();
  return balance;
}

std::string lineValues(const Recordset& line, const BankAccount& account, const Auxiliaries& keys,
                       const std::optional<Money>& balance) {
  VoucherValues values(line);
  values.constant(run.m_strCurYear).constant(std::to_string(balance ? balancePeriod : linePeriod));
  values.text("csign").text("iSignSeq");  // as they are: no look-up of the voucher type
  if (account.currency().empty()) {
    values.constant(null).constant("0").constant("0").constant("0");
  } else {
    values.textValue(account.currency()).bare("md_f").bare("mc_f").bare("nfrat");
  }
  if (account.record().cMeasure.empty()) {
    values.constant("0").constant("0");
  } else {
    values.bare("nd_s").bare("nc_s");
  }
  values.textValue(keys.dept).textValue(keys.person).textValue(keys.cus).textValue(keys.sup);
  values.textValue(keys.item).textValue(keys.itemClass).text("CName");
  values.constant(null).text("csettle").text("iNo_id").bare("inid");  // iflagperson: open
  if (balance) {
    values.constant("'" + GetYearStartDate().text() + "'");
  } else {
    values.date("dbill_date");
  }
  values.bare("idoc").text("cbill").text("ccheck").text("cbook").constant("1").text("ccashier").number("iflag");
  values.text("cBankReconNo").text("ctext1").text("ctext2").text("cdigest").text("ccode");
  if (balance) {
    values.constant(balance->text()).constant("0");
  } else {
    values.bare("md").bare("mc");
  }
  values.text("cn_id").date("dt_date").text("ccode_equal").number("iflagbank").flag("bDelete");
  values.origin().permissions().userDefined();
  return std::string(values.list());
}

// False when the line is left out.
bool carry(const Recordset& line, BankAccount& account) {
  if (!account.find(line)) return false;
  const Auxiliaries keys = auxiliariesOf(line);
  if (isEmptyForeignLine(line, account)) return false;
  if (account.changed()) moveReconciliation(line.Field("ccode").asText());
  std::optional<Money> balance;
  if (isBalance(line)) balance = balanceOf(line, account);
  newConn().ExecuteSql(sql::insertLine(lineValues(line, account, keys, balance)));
  return true;
}

}  // namespace

void CarryBankLedger(std::string& idText) {
  const auto probe = newConn().OpenRecordset(sql::probeNewYear(run.m_strCurYear), 2);
  const CursorLocation cursor = cursorForLines();
  run.m_strLastSql = sql::selectLines(run.m_strLastYear, bankFilter());
  auto lines = lastConn().OpenRecordset(run.m_strLastSql, 2, cursor);
  BankAccount account(reasons);
  for (; !lines->Eof(); lines->MoveNext()) {
    showProgress("Orvo.GL.TqGLJZ.00185", {lines->Field("ccode")});
    DoEvents();
    idText = lines->Field("i_id").asText();
    if (carry(*lines, account)) account.lineWritten();
  }
  lines->Close();
  advanceFrom(Step::bankLedger);
}

void JzYhData() {
  run.m_strFuncDesc = "结转函数--结转未核销银行账 ";
  markBalances();

  std::string idText;
  try {
    CarryBankLedger(idText);
    CarryBankStatements(idText);
    CarryChequeRegister();
  } catch (const RunTimeError& failure) {
    // Intended: one trap for the three steps. What they wrote until here stays, and the run goes on.
    ShowMsg("JzYhData:" + failure.description() + "-" + idText, msgPlain, "");
  }
}

}  // namespace gljz
