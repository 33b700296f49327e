#include "driver/current_account_checks.h"

#include <string>

#include "core/mdu_jz.h"
#include "driver/current_account_checks_sql.h"
#include "driver/progress.h"
#include "platform/surroundings.h"

namespace gljz {
namespace {

namespace sql = current_account_checks_sql;
using platform::CodeRecord;
using platform::Component;
using platform::Money;
using platform::Recordset;
using platform::RunTimeError;

constexpr int customers = 1, suppliers = 2, byDetail = 2;                // of GL_YeMxSel
constexpr Money tolerance = Money::fromUnits(Money::unitsPerOne / 100);  // a difference of this much is one

// One kind of partner.
struct Partner {
  int gridKind;
  const char *rowKey, *endKey;
  bool RunState::*mayBeUnbalanced;
  const char* message;
};

constexpr Partner person{7, "Orvo.GL.TqGLJZ.00069", "Orvo.GL.TqGLJZ.00071", &RunState::PersonNoBal,
                         "个人借贷两清不平衡!不能继续结转！"};
constexpr Partner customer{6, "Orvo.GL.TqGLJZ.00079", "Orvo.GL.TqGLJZ.00081", &RunState::CusNoBal,
                           "客户借贷两清不平衡!不能继续结转！"};
constexpr Partner supplier{6, "Orvo.GL.TqGLJZ.00089", "Orvo.GL.TqGLJZ.00091", &RunState::SupNoBal,
                           "供应商借贷两清不平衡!不能继续结转！"};

std::int32_t yearCap() {
  return yearNumber(run.m_strCurYear) * 100;
}

// In a foreign currency only the foreign sums have to agree.
bool balances(const Recordset& group) {
  const bool mainCurrency = group.Field("Cexch_name").asText().empty();
  const Money debit = group.Field(mainCurrency ? "SumMd" : "summd_f").asMoney();
  const Money credit = group.Field(mainCurrency ? "SumMc" : "summc_f").asMoney();
  return (debit - credit).abs() < tolerance;
}

class BalanceCheck {
public:
  CheckOutcome run(const Partner& partner, const std::string& selection) {
    gljz::run.m_strLastSql = selection;
    count(partner, selection);
    showProgress(partner.endKey);
    DoEvents();
    if (imbalanceCount_ == 0 || gljz::run.*partner.mayBeUnbalanced) return CheckOutcome::goOn;
    gljz::run.m_strMsg = partner.message;
    return CheckOutcome::stop;
  }

private:
  void count(const Partner& partner, const std::string& selection) {
    auto groups = lastConn().OpenRecordset(selection, 2);
    if (gljz::run.m_bManual) SetupImbalanceGrid(partner.gridKind);  // intended: no row is ever added here
    for (; !groups->Eof(); groups->MoveNext()) {
      const std::string ccode = groups->Field("ccode").asText();
      pubCls().GetCodeRecord(ccode, account_);  // not looked at
      showProgress(partner.rowKey, {ccode});
      DoEvents();
      if (!balances(*groups)) imbalanceCount_ += 1;
    }
    groups->Close();
  }

  // Intended: one count for all partners. What a flag has let pass counts against the partners behind it.
  double imbalanceCount_ = 0;
  CodeRecord account_;
};

CheckOutcome checkPersons(BalanceCheck& check) {
  run.m_strFuncDesc = "结转函数--条件判断-判断个人往来借贷是否平衡 ";
  if (run.m_iPersonMode != 2) return CheckOutcome::goOn;
  return check.run(person, sql::sumPersonItems(run.m_strInitYear, run.m_strLastYear, yearCap()));
}

CheckOutcome checkCustomers(BalanceCheck& check) {
  run.m_strFuncDesc = "结转函数--条件判断-判断客户往来借贷是否平衡";
  switch (run.m_iCusMode) {
    case 2:
      return check.run(customer, sql::sumCustomerItems(run.m_strInitYear, run.m_strLastYear, yearCap()));
    case 3:
      return check.run(customer, sql::sumChosenCustomerItems(run.m_strInitYear, run.m_strLastYear, yearCap(),
                                                             GetYeMxSelCodes(customers, byDetail)));
    default:
      return CheckOutcome::goOn;
  }
}

CheckOutcome checkSuppliers(BalanceCheck& check) {
  run.m_strFuncDesc = "结转函数--条件判断-判断供应商往来借贷是否平衡 ";
  switch (run.m_iSupMode) {
    case 2:
      return check.run(supplier, sql::sumSupplierItems(run.m_strInitYear, run.m_strLastYear, yearCap()));
    case 3:
      return check.run(supplier, sql::sumChosenSupplierItems(run.m_strInitYear, run.m_strLastYear, yearCap(),
                                                             GetYeMxSelCodes(suppliers, byDetail)));
    default:
      return CheckOutcome::goOn;
  }
}

std::shared_ptr<Component> createClearing() {
  constexpr const char* programId = "OrvoGLWLClear.clsInterface";
  auto* factory = platform::surroundings().components;
  if (factory == nullptr)
    throw RunTimeError(RunTimeError::cannotCreate, std::string("Component cannot be created: ") + programId);
  return factory->Create(programId);
}

void clearOneSide(Component& clearing, int cusOrSup) {
  std::vector<Component::Argument> side{{cusOrSup, nullptr}};
  clearing.Call("SetCusorSup", side);
  std::vector<Component::Argument> task{{"qcjz", nullptr}, {"", nullptr}};  // the second one takes a text, not read
  clearing.Call("AutoClear4Task", task);
}

// The external component clears what it can. What it writes stands on its own, whatever becomes of the run.
void clearAutomatically() {
  run.m_strFuncDesc = "结转函数--条件判断-往来业务自动核销已两清业务";
  if (!run.m_bAutoWLClear) return;
  const auto clearing = createClearing();
  std::vector<Component::Argument> services{{{}, run.m_pubCls}};
  clearing->Call("InitZwPub", services);
  run.m_pubCls = std::static_pointer_cast<platform::ZwPubCls>(services.front().object);  // it may be another one now
  clearOneSide(*clearing, 0);
  clearOneSide(*clearing, 1);
}

}  // namespace

CheckOutcome CheckCurrentAccounts() {
  BalanceCheck check;
  for (const auto partnerCheck : {checkPersons, checkCustomers, checkSuppliers}) {
    if (partnerCheck(check) == CheckOutcome::stop) return CheckOutcome::stop;
  }
  clearAutomatically();
  return CheckOutcome::goOn;
}

}  // namespace gljz
