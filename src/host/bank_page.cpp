#include "host/bank_page.h"

#include <optional>

#include "host/amount_text.h"
#include "host/json_text.h"

namespace host {
namespace {

using platform::Money;

std::string own(const Messages& messages, const char* key, const std::vector<platform::Value>& arguments = {}) {
  return messages.text(std::string("Gljz.Host.") + key, arguments);
}

std::string optionalText(const std::optional<Money>& amount) {
  return amount ? amountText(*amount) : std::string();
}

std::string sentence(const BankCarry& carry, BankCarry::Finding finding, const Messages& messages) {
  using Finding = BankCarry::Finding;
  const auto missing = [](const BankCarry::Count& count) { return std::to_string(count.open - count.carried); };
  switch (finding) {
    case Finding::balanceMissing:
      return own(messages, "Bank.BalanceMissing");
    case Finding::balanceDiffers:
      return own(messages, "Bank.BalanceDiffers", {amountText(carry.difference())});
    case Finding::linesMissing:
      return own(messages, "Bank.LinesMissing", {missing(carry.lines)});
    case Finding::statementsMissing:
      return own(messages, "Bank.StatementsMissing", {missing(carry.statements)});
    case Finding::chequesMissing:
      return own(messages, "Bank.ChequesMissing", {missing(carry.cheques.value_or(BankCarry::Count{}))});
    case Finding::notReconciled:
      return own(messages, "Bank.NotReconciled", {amountText(carry.gap())});
  }
  return {};
}

std::vector<std::string> sentences(const BankCarry& carry, const Messages& messages) {
  std::vector<std::string> all;
  for (const auto finding : carry.findings()) all.push_back(sentence(carry, finding, messages));
  return all;
}

std::string remark(const BankCarry& carry, const Messages& messages) {
  std::string text;
  for (const std::string& s : sentences(carry, messages)) text += (text.empty() ? "" : "; ") + s;
  return text.empty() ? own(messages, "Bank.Agrees") : text;
}

std::string jsonAmount(const std::optional<Money>& amount) {
  return amount ? amount->text() : "null";
}
std::string jsonCount(const std::optional<BankCarry::Count>& count) {
  if (!count) return "null";
  return "{\"open\": " + std::to_string(count->open) + ", \"carried\": " + std::to_string(count->carried) + "}";
}

}  // namespace

ReportTable bankTable(const std::vector<BankCarry>& accounts, const Messages& messages) {
  if (accounts.empty()) return {};
  const auto grid = [&](const char* key, CellKind kind = CellKind::text) {
    return ReportColumn{messages.text(key), kind};
  };
  const auto column = [&](const char* key, CellKind kind) { return ReportColumn{own(messages, key), kind}; };
  ReportTable table{"bank",
                    own(messages, "Heading.Bank"),
                    own(messages, "Tab.Bank"),
                    {grid("Orvo.GL.TqGLJZ.00062", CellKind::code), grid("Orvo.GL.TqGLJZ.00063"),
                     grid("Orvo.GL.ZWSQL.PERSONACC.00973"), column("Column.ClosingBalance", CellKind::amount),
                     column("Column.BalanceCarried", CellKind::amount), column("Column.OpenLines", CellKind::count),
                     column("Column.StatementBalance", CellKind::amount),
                     column("Column.StatementLines", CellKind::count), column("Column.Cheques", CellKind::count),
                     grid("Orvo.GL.TqGLJZ.00240", CellKind::verdict), column("Column.Remark", CellKind::text)},
                    {},
                    {},
                    {own(messages, "Bank.Explained")}};
  for (const BankCarry& carry : accounts)
    table.rows.push_back({carry.account, carry.name, carry.currency, amountText(carry.closingBalance),
                          optionalText(carry.ledgerBalance), std::to_string(carry.lines.carried),
                          optionalText(carry.bankBalance), std::to_string(carry.statements.carried),
                          carry.cheques ? std::to_string(carry.cheques->carried) : "-",
                          carry.findings().empty() ? "Y" : "X", remark(carry, messages)});
  return table;
}

std::string bankJson(const std::vector<BankCarry>& accounts, const Messages& messages) {
  std::string out = "[";
  for (const BankCarry& carry : accounts) {
    if (out.size() > 1) out += ", ";
    std::string findings;
    for (const std::string& s : sentences(carry, messages)) findings += (findings.empty() ? "" : ", ") + jsonString(s);
    out += "{\"account\": " + jsonString(carry.account) + ", \"name\": " + jsonString(carry.name) +
           ", \"currency\": " + jsonString(carry.currency) +
           ", \"closingBalance\": " + jsonAmount(carry.closingBalance) +
           ", \"balanceCarried\": " + jsonAmount(carry.ledgerBalance) +
           ", \"statementBalance\": " + jsonAmount(carry.bankBalance) + ", \"lines\": " + jsonCount(carry.lines) +
           ", \"statementLines\": " + jsonCount(carry.statements) + ", \"cheques\": " + jsonCount(carry.cheques) +
           ", \"agrees\": " + (findings.empty() ? "true" : "false") + ", \"findings\": [" + findings + "]}";
  }
  return out + "]";
}

}  // namespace host
