#include "host/condition_answers.h"

#include <algorithm>

#include "dialogs/frm_sy_km_sel.h"
#include "dialogs/frm_tran_cond.h"
#include "dialogs/frm_ye_mx_sel.h"
#include "host/usage_error.h"
#include "platform/value.h"

namespace host {
namespace {

using gljz::DoubleList;
using gljz::FrmTranCond;
using gljz::FrmYeMxSel;

constexpr const char *customerOption = "--customer-detail", *supplierOption = "--supplier-detail",
                     *clearOption = "--clear";

std::string joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) text += (text.empty() ? "" : ", ") + part;
  return text.empty() ? "none" : text;
}

std::vector<std::string> codesOf(const DoubleList& list) {
  std::vector<std::string> codes;
  for (const auto* entries : {&list.left(), &list.right()})
    for (const std::string& entry : *entries) codes.push_back(gljz::accountOf(entry));
  return codes;
}

bool contains(const std::vector<std::string>& codes, const std::string& code) {
  return std::find(codes.begin(), codes.end(), code) != codes.end();
}

void requireCodes(const DoubleList& list, const std::string& option, const AccountChoice& choice) {
  const std::vector<std::string> codes = codesOf(list);
  for (const std::string& code : choice.codes)
    if (!contains(codes, code))
      throw UsageError(option + ": account " + code + " is on neither list; on the lists: " + joined(codes));
}

// Moves entries until exactly the chosen ones stand on the right.
void arrange(DoubleList& list, const std::string& option, const AccountChoice& choice) {
  if (choice.all) return list.moveAllRight();
  requireCodes(list, option, choice);
  const auto chosen = [&](const std::string& entry) { return contains(choice.codes, gljz::accountOf(entry)); };
  for (std::size_t i = list.right().size(); i-- > 0;)
    if (!chosen(list.right()[i])) list.moveLeft(i);
  for (std::size_t i = 0; i < list.left().size();) {
    if (chosen(list.left()[i]))
      list.moveRight(i);
    else
      ++i;
  }
}

void requireEnabled(const gljz::Button& button, const char* option, const char* enabledBy) {
  if (button.Enabled) return;
  throw UsageError(std::string(option) + ": the button \"" + button.Caption + "\" is disabled; --check " + enabledBy +
                   "=True enables it where that switch is offered");
}

void requireCodesOf(std::uint8_t type, const char* option, const AccountChoice& choice) {
  FrmYeMxSel trial(type);
  trial.Load();
  requireCodes(trial.CtlSelList1, option, choice);
}

std::string keysOf(const FrmTranCond& form) {
  std::vector<std::string> keys;
  for (const auto& item : form.lvCond) keys.push_back(item.key);
  return joined(keys);
}

}  // namespace

AccountChoice AccountChoice::parse(const std::string& option, const std::string& text) {
  AccountChoice choice;
  choice.all = platform::equalsIgnoreCase(text, "all");
  if (choice.all || platform::equalsIgnoreCase(text, "none")) return choice;
  for (std::size_t start = 0;;) {
    const std::size_t comma = text.find(',', start);
    choice.codes.push_back(platform::trim(text.substr(start, comma == std::string::npos ? comma : comma - start)));
    if (choice.codes.back().empty())
      throw UsageError(option + " \"" + text + "\": all, none or account codes with commas between are expected");
    if (comma == std::string::npos) return choice;
    start = comma + 1;
  }
}

void ConditionAnswers::tick(FrmTranCond& form) const {
  for (const auto& [key, checked] : choices_.checks) {
    const auto index = form.indexOf(key);
    if (!index) throw UsageError("switch " + key + " is not offered for these years; offered: " + keysOf(form));
    form.check(*index, checked);
    if (form.lvCond[*index].checked != checked) throw UsageError("switch " + key + " is always ticked");
  }
}

void ConditionAnswers::conditions(FrmTranCond& form) {
  tick(form);
  if (choices_.customerDetail) requireEnabled(form.cmdCustomerTran, customerOption, "GL*CusMXJZ");
  if (choices_.supplierDetail) requireEnabled(form.cmdSupTran, supplierOption, "GL*SupMXJZ");
  if (choices_.clear) requireEnabled(form.cmdSyKmSel, clearOption, "GL*Clear");

  // The division of accounts is stored when it is confirmed, so whatever can be refused comes before.
  if (choices_.clear) form.cmdSyKmSel_Click();
  if (choices_.customerDetail) requireCodesOf(FrmYeMxSel::customers, customerOption, *choices_.customerDetail);
  if (choices_.supplierDetail) requireCodesOf(FrmYeMxSel::suppliers, supplierOption, *choices_.supplierDetail);
  if (choices_.customerDetail) form.cmdCustomerTran_Click();
  if (choices_.supplierDetail) form.cmdSupTran_Click();
  form.cmdOk_Click();
}

void ConditionAnswers::divideAccounts(FrmYeMxSel& form) {
  const bool customers = form.iType == FrmYeMxSel::customers;
  const auto& choice = customers ? choices_.customerDetail : choices_.supplierDetail;
  if (choice) arrange(form.CtlSelList1, customers ? customerOption : supplierOption, *choice);
  form.cmdOK_Click();
}

void ConditionAnswers::chooseCleared(gljz::FrmSyKmSel& form) {
  if (choices_.clear) arrange(form.CtlSelList1, clearOption, *choices_.clear);
  form.cmdOK_Click();
}

}  // namespace host
