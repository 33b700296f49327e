#include "host/year_balance.h"

#include <string_view>

#include "host/connection_text.h"
#include "platform/value.h"

namespace host {
namespace {

using platform::Money;
using platform::Recordset;

template <class Use>
void each(platform::Connection& connection, const std::string& sql, const Use& use) {
  auto rows = connection.OpenRecordset(sql, 2);
  for (; !rows->Eof(); rows->MoveNext()) use(*rows);
  rows->Close();
}

// The rows of a year's account totals on its last-level accounts. database: with its dots, or empty.
std::string lastLevelTotals(const std::string& database, int year, int period) {
  return " from " + database + "gl_accsum s inner join " + database +
         "code c on c.ccode=s.ccode and c.iyear=s.iyear where c.bend=1 and s.iyear=" + std::to_string(year) +
         " and s.iperiod=" + std::to_string(period);
}

// A balance is a magnitude and a word; the ledger has the credit word in every language of its users.
YearSides sidesOf(platform::Connection& connection, const std::string& amount, const std::string& side,
                  const std::string& rows) {
  const std::string isCredit = "s." + side + "=N'贷'", value = "s." + amount;
  YearSides sides;
  each(connection,
       "select sum(case when " + isCredit + " then 0 else " + value + " end) as debit,sum(case when " + isCredit +
           " then " + value + " else 0 end) as credit" + rows,
       [&](const Recordset& row) {
         if (const auto debit = row.Field("debit"); !debit.isNull()) sides.debit = debit.asMoney();
         if (const auto credit = row.Field("credit"); !credit.isNull()) sides.credit = credit.asMoney();
       });
  return sides;
}

}  // namespace

YearBalance readYearBalance(platform::Connection& newYear, const YearBalanceQuestion& question) {
  const std::string closingRows = lastLevelTotals(bracketed(question.closingDatabase) + "..", question.closingYear, 12);
  YearBalance balance;
  balance.closing = sidesOf(newYear, "me", "cendd_c", closingRows);
  balance.opening = sidesOf(newYear, "mb", "cbegind_c", lastLevelTotals("", question.newYear, 1));
  if (question.leftOut.empty()) return balance;
  each(newYear,
       "select s.ccode,sum(case when s.cendd_c=N'贷' then -s.me else s.me end) as balance" + closingRows +
           " group by s.ccode",
       [&](const Recordset& row) {
         const std::string code = row.Field("ccode").asText();
         if (question.leftOut.contains(code)) balance.leftOut[code] = row.Field("balance").asMoney();
       });
  return balance;
}

}  // namespace host
