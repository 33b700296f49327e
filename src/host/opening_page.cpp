#include "host/opening_page.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <optional>

#include "host/amount_text.h"
#include "host/json_text.h"
#include "platform/run_time_error.h"
#include "platform/value.h"

namespace host {
namespace {

using platform::Money;
using Row = std::vector<std::string>;

std::string own(const Messages& messages, const char* key, const std::vector<platform::Value>& arguments = {}) {
  return messages.text(std::string("Gljz.Host.") + key, arguments);
}

Row sidesRow(const std::string& title, const YearSides& sides, bool right) {
  return {title, amountText(sides.debit), amountText(sides.credit), amountText(sides.difference()), right ? "Y" : "X"};
}

// Columns of the closing report.
constexpr std::size_t codeCell = 0, auxiliaryCell = 3, directionCell = 4, amountCell = 5, foreignCell = 6,
                      currencyCell = 7, quantityCell = 8, verdictCell = 10, reportCells = 11;

bool isCreditWord(const std::string& word) {
  for (const char* credit : {"贷", "貸", "Cr"})
    if (word == credit) return true;
  return false;
}

// A number of the report; an empty cell or the blank of the report's format is zero.
std::optional<Money> moneyOf(const Row& row, std::size_t cell) {
  const std::string text = platform::trim(row[cell]);
  if (text.empty()) return Money();
  try {
    const Money amount = Money::parse(text);
    return isCreditWord(row[directionCell]) ? -amount : amount;
  } catch (const platform::RunTimeError&) {
    return std::nullopt;
  }
}
double quantityOf(const Row& row) {
  const double quantity = std::strtod(row[quantityCell].c_str(), nullptr);
  return isCreditWord(row[directionCell]) ? -quantity : quantity;
}

// What a wrong account differs by. sum: the row of its auxiliaries, or null.
std::string difference(const Row& account, const Row* sum) {
  const auto cell = [&](std::size_t at) -> std::optional<Money> {
    const auto mine = moneyOf(account, at), theirs = sum ? moneyOf(*sum, at) : Money();
    if (!mine || !theirs) return std::nullopt;
    return *mine - *theirs;
  };
  const auto amount = cell(amountCell), foreign = cell(foreignCell);
  if (!amount || !foreign) return {};
  if (!amount->isZero()) return amountText(*amount);
  if (!foreign->isZero()) return amountText(*foreign) + " " + account[currencyCell];
  const double quantity = quantityOf(account) - (sum ? quantityOf(*sum) : 0);
  constexpr double smallest = 0.000001;  // that the report shows
  return std::fabs(quantity) < smallest ? std::string()
                                        : platform::numberText(quantity) + " " + account[quantityCell + 1];
}

std::string json(const YearSides& sides) {
  return "{\"debit\": " + sides.debit.text() + ", \"credit\": " + sides.credit.text() +
         ", \"difference\": " + sides.difference().text() + "}";
}

}  // namespace

ReportTable sidesTable(const YearBalance& balance, int closingYear, int newYear, const Messages& messages) {
  ReportTable table{"sides",
                    own(messages, "Heading.Sides"),
                    own(messages, "Tab.Sides"),
                    {{own(messages, "Column.Balances"), CellKind::text},
                     {messages.text("Orvo.GL.TqGLJZ.00067"), CellKind::amount},
                     {messages.text("Orvo.GL.TqGLJZ.00068"), CellKind::amount},
                     {own(messages, "Column.Difference"), CellKind::amount},
                     {messages.text("Orvo.GL.TqGLJZ.00240"), CellKind::verdict}},
                    {},
                    {},
                    {own(messages, "Sides.Explained")}};
  const YearSides &before = balance.closing, &after = balance.opening;
  const YearSides change{after.debit - before.debit, after.credit - before.credit};
  table.rows.push_back(
      sidesRow(own(messages, "Sides.Closing", {std::to_string(closingYear)}), before, before.difference().isZero()));
  table.rows.push_back(
      sidesRow(own(messages, "Sides.Opening", {std::to_string(newYear)}), after, after.difference().isZero()));
  table.rows.push_back(
      sidesRow(own(messages, "Sides.Change"), change, change.debit.isZero() && change.credit.isZero()));
  return table;
}

std::vector<std::string> sidesSentences(const YearBalance& balance, int closingYear, int newYear,
                                        const Messages& messages) {
  if (balance.opensInBalance()) return {};
  const auto amount = [](Money m) { return grouped(amountText(m)); };
  const YearSides& sides = balance.opening;
  std::vector<std::string> said{
      own(messages, "Explain.Unbalanced",
          {std::to_string(newYear), amount(sides.debit), amount(sides.credit), amount(sides.difference().abs())})};
  if (const Money before = balance.closing.difference(); !before.isZero())
    said.push_back(own(messages, "Explain.ClosingUnbalanced", {std::to_string(closingYear), amount(before.abs())}));
  return said;
}

ReportTable accountsTable(const ClosingReport& report, const Messages& messages) {
  const auto column = [&](const char* key, CellKind kind = CellKind::text) {
    return ReportColumn{messages.text(key), kind};
  };
  ReportTable table{"accounts",
                    messages.text("Orvo.GL.TqGLJZ.00018"),
                    own(messages, "Tab.Accounts"),
                    {column("Orvo.GL.TqGLJZ.00062", CellKind::code), column("Orvo.GL.TqGLJZ.00231"),
                     column("Orvo.GL.TqGLJZ.00232"), column("Orvo.GL.TqGLJZ.00233"), column("Orvo.GL.TqGLJZ.00234"),
                     column("Orvo.GL.TqGLJZ.00235", CellKind::amount), column("Orvo.GL.TqGLJZ.00236", CellKind::amount),
                     column("Orvo.GL.ZWSQL.PERSONACC.00973"), column("Orvo.GL.TqGLJZ.00238", CellKind::quantity),
                     column("Orvo.GL.TqGLJZ.00239"), column("Orvo.GL.TqGLJZ.00240", CellKind::verdict),
                     ReportColumn{own(messages, "Column.Difference"), CellKind::amount}},
                    {},
                    {},
                    {messages.text("Orvo.GL.TqGLJZ.00016", {report.right, report.wrong})}};
  const std::string sumTitle = messages.text("Orvo.GL.TqGLJZ.00260");
  table.rows.reserve(report.rows.size());
  for (const Row& shown : report.rows) {
    table.rows.push_back(shown);
    table.rows.back().resize(reportCells);
    // The blank is the dialog's word for zero, and a blank before a label joins it to one that is not there.
    for (std::string& cell : table.rows.back()) cell = platform::trim(cell);
  }
  for (std::size_t i = 0; i < table.rows.size(); ++i) {
    Row& row = table.rows[i];
    std::string text;
    if (row[verdictCell] == "X") {
      const bool isAccount = row[auxiliaryCell] != sumTitle;
      const Row* next = i + 1 < table.rows.size() ? &table.rows[i + 1] : nullptr;
      // Of an account's rows only the first names it.
      const bool hasSum = next != nullptr && (*next)[codeCell].empty();
      if (isAccount) {
        text = difference(row, hasSum ? next : nullptr);
      } else {  // auxiliaries without an account
        const Row none(reportCells);
        text = difference(none, &row);
      }
    }
    row.push_back(std::move(text));
  }
  return table;
}

std::string balanceJson(const YearBalance& balance) {
  std::string leftOut;
  for (const auto& [account, amount] : balance.leftOut)
    leftOut += (leftOut.empty() ? "" : ", ") + jsonString(account) + ": " + amount.text();
  return "{\"closing\": " + json(balance.closing) + ", \"opening\": " + json(balance.opening) + ", \"leftOut\": {" +
         leftOut + "}}";
}

}  // namespace host
