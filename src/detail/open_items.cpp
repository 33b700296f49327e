#include "detail/open_items.h"

#include <optional>
#include <string>

#include "balances/reference_records.h"
#include "core/mdu_jz.h"
#include "detail/open_item_lookups.h"
#include "detail/open_items_sql.h"
#include "detail/partner_keys.h"
#include "detail/voucher_row.h"
#include "driver/progress.h"

namespace gljz {
namespace {

namespace sql = open_items_sql;
using platform::AccountOptions;
using platform::CodeRecord;
using platform::Recordset;
using platform::Value;

constexpr const char* accountCaption = "Orvo.GL.TqGLJZ.00112";
constexpr const char* departmentCaption = "Orvo.GL.TqGLJZ.00114";
constexpr const char* personCaption = "Orvo.GL.TqGLJZ.00116";
constexpr const char* itemCaption = "Orvo.GL.TqGLJZ.00122";
constexpr int bankBalancePeriod = 20;

// What the loop of a party says, by message key.
struct Texts {
  const char* status;
  const char* noCounterpart;
  const char* notLastLevel;
  const char* auxiliaries;
  const char* noDepartment;
  const char *partnerCaption, *noPartner;
  const char* noItem;
  const char *settleCaption, *noSettleStyle;
};

constexpr Texts personTexts{
    "Orvo.GL.TqGLJZ.00130", "Orvo.GL.TqGLJZ.00135", "Orvo.GL.TqGLJZ.00141", "Orvo.GL.TqGLJZ.00133",
    "Orvo.GL.TqGLJZ.00135", personCaption,          "Orvo.GL.TqGLJZ.00137", "",
    "Orvo.GL.TqGLJZ.00138", "Orvo.GL.TqGLJZ.00139"};
constexpr Texts customerTexts{"Orvo.GL.TqGLJZ.00144", "Orvo.GL.TqGLJZ.00159", "Orvo.GL.TqGLJZ.00157",
                              "Orvo.GL.TqGLJZ.00147", "Orvo.GL.TqGLJZ.00151", "Orvo.GL.TqGLJZ.00118",
                              "Orvo.GL.TqGLJZ.00149", "Orvo.GL.TqGLJZ.00149", "Orvo.GL.TqGLJZ.00154",
                              "Orvo.GL.TqGLJZ.00155"};
constexpr Texts supplierTexts{"Orvo.GL.TqGLJZ.00160", "Orvo.GL.TqGLJZ.00175", "Orvo.GL.TqGLJZ.00173",
                              "Orvo.GL.TqGLJZ.00163", "Orvo.GL.TqGLJZ.00167", "Orvo.GL.TqGLJZ.00120",
                              "Orvo.GL.TqGLJZ.00165", "Orvo.GL.TqGLJZ.00165", "Orvo.GL.TqGLJZ.00154",
                              "Orvo.GL.TqGLJZ.00171"};

// A row of the report, in a run that is watched. name is asked only then: it costs a statement.
template <class Name>
void report(const char* captionKey, const std::string& code, const Name& name, const char* reasonKey) {
  if (!run.m_bManual) return;
  AddImbalanceRow(reportRow({GetResString(captionKey, {"\t" + code + "\t" + name()}), GetResString(reasonKey)}));
}

// One loop: what the three parties share. Each derived loop says which keys a line takes along.
class ItemLoop {
public:
  ItemLoop(OpenItemState& state, std::uint8_t kind, const Texts& texts) : state_(state), kind_(kind), texts_(texts) {}
  virtual ~ItemLoop() = default;
  ItemLoop(const ItemLoop&) = delete;
  ItemLoop& operator=(const ItemLoop&) = delete;

  // One walk through a selection of the closing year; a client never holds more than a block of it.
  void pass(const std::string& selection, const std::string& probe) {
    run.m_strLastSql = selection;
    auto lines = lastConn().OpenRecordset(selection, 2, platform::CursorLocation::server);
    auto probed = newConn().OpenRecordset(probe, 2);
    for (; !lines->Eof(); lines->MoveNext()) carry(*lines);
    lines->Close();
    probed->Close();
  }

protected:
  // The keys that the line takes along, nothing when it stays behind.
  virtual std::optional<AuxiliaryKeys> keys(const Recordset& line) = 0;
  virtual void loadClosingRecord(const std::string& /*newCode*/) {}

  void reportAuxiliaries() const {
    report(
        accountCaption, newRec().ccode, [this] { return newRec().cCode_name; }, texts_.auxiliaries);
  }
  void reportDepartment(const std::string& code) const {
    report(
        departmentCaption, code,
        [&] {
          DepartmentRecord department;
          LoadDepartment(lastConn(), code, department);
          return department.cDepName;
        },
        texts_.noDepartment);
  }
  template <class Name>
  void reportPartner(const std::string& code, const Name& name) const {
    report(texts_.partnerCaption, code, name, texts_.noPartner);
  }
  bool departmentExists(const Value& dept) const {
    if (dept.isNull() || !DepExists(dept.asText()).empty()) return true;
    reportDepartment(dept.asText());
    return false;
  }
  bool itemExists(const AuxiliaryKeys& keys) const {
    if (keys.item.isNull()) return true;
    const std::string item = keys.item.asText(), itemClass = keys.citem_class.asText();
    if (!pubCls().MatchItem(item, itemClass).empty()) return true;
    report(
        itemCaption, item,
        [&] {
          ItemRecord record;
          LoadItem(lastConn(), itemClass, item, record);
          return record.citemname;
        },
        texts_.noItem);
    return false;
  }

  CodeRecord& newRec() const { return state_.newRec; }
  CodeRecord& lastRec() const { return state_.lastRec; }

private:
  void carry(const Recordset& line) {
    showProgress(texts_.status, {line.Field("ccode")});
    DoEvents();
    if (!findAccount(line)) return;
    const AccountOptions options = pubCls().AccountOptions();
    const std::string currency = currencyOf(line, options);
    const auto taken = keys(line);
    if (!taken) return;
    settle(line);
    if (lacksForeignMoney(line, currency, options)) return;
    newConn().ExecuteSql(InsertAccVouch(kind_, line, state_.sign, newRec(), currency, taken->dept, taken->person,
                                        taken->cus, taken->sup, taken->item, taken->citem_class, state_.settle));
  }

  bool findAccount(const Recordset& line) {
    const std::string ccode = line.Field("ccode").asText();
    const std::string newCode = pubCls().MatchCode(ccode, 2, true);
    if (newCode.empty()) {
      report(
          accountCaption, ccode, [&] { return line.Field("cCode_name").displayText(); }, texts_.noCounterpart);
      return false;
    }
    pubCls().GetCodeRecord(newCode, newRec());
    loadClosingRecord(newCode);
    if (newRec().bEnd) return true;
    report(
        accountCaption, newRec().ccode, [this] { return newRec().cCode_name; }, texts_.notLastLevel);
    return false;
  }

  // The currency of the carried line, empty for none. Unlike a balance a line never falls back to the main currency.
  std::string currencyOf(const Recordset& line, const AccountOptions& options) const {
    const Value own = line.Field("Cexch_name");
    if (own.isNull()) return {};
    return options.bMultiCurrency ? own.asText() : newRec().Cexch_name;
  }

  // Intended: a line without a style, and in an unwatched run one whose style is unknown, leaves the style of the line
  // before it in place.
  void settle(const Recordset& line) {
    const Value csettle = line.Field("csettle");
    if (csettle.isNull()) return;
    if (pubCls().SettleStyleExists(csettle.asText())) {
      state_.settle = csettle;
    } else if (run.m_bManual) {
      report(
          texts_.settleCaption, csettle.asText(),
          [&] {
            SettleStyleRecord style;
            LoadSettleStyle(csettle.asText(), style);
            return style.cssname;
          },
          texts_.noSettleStyle);
      state_.settle = {};
    }
  }

  static bool isZero(const Value& amount) { return !amount.isNull() && amount.asMoney().isZero(); }

  // A line in a foreign currency without foreign money, on an account that has none at all: it stays behind without a
  // word.
  static bool lacksForeignMoney(const Recordset& line, const std::string& currency, const AccountOptions& options) {
    if (currency.empty() || currency == options.cDefaultCurrency) return false;
    if (!isZero(line.Field("md_f")) || !isZero(line.Field("mc_f"))) return false;
    if (line.Field("iperiod").asInteger() == bankBalancePeriod) return false;
    return HasNoForeignAmounts(line.Field("ccode").asText(), "");
  }

  OpenItemState& state_;
  std::uint8_t kind_;
  const Texts& texts_;
};

class PersonLoop final : public ItemLoop {
public:
  explicit PersonLoop(OpenItemState& state) : ItemLoop(state, personItem, personTexts) {}

private:
  // The writer takes a person's keys from the line itself.
  std::optional<AuxiliaryKeys> keys(const Recordset& line) override {
    if (!newRec().bPersonOnly && newRec().cPersonItemClass.empty()) {
      reportAuxiliaries();
      return std::nullopt;
    }
    const std::string dept = line.Field("cdept_ID").asText();
    if (pubCls().MatchDepartment(dept).empty()) {
      reportDepartment(dept);
      return std::nullopt;
    }
    const std::string person = line.Field("cPerson_ID").asText();
    if (pubCls().MatchPerson(person).empty()) {
      reportPartner(person, [&] {
        PersonRecord record;
        LoadPerson(lastConn(), person, record);
        return record.cPersonName;
      });
      return std::nullopt;
    }
    return AuxiliaryKeys{};
  }
};

class CustomerLoop final : public ItemLoop {
public:
  explicit CustomerLoop(OpenItemState& state) : ItemLoop(state, customerItem, customerTexts) {}

private:
  void loadClosingRecord(const std::string& newCode) override { LoadCode(lastConn(), newCode, lastRec()); }

  std::optional<AuxiliaryKeys> keys(const Recordset& line) override {
    if (!sameCustomerAuxiliaries(newRec(), lastRec())) {
      reportAuxiliaries();
      return std::nullopt;
    }
    auto taken = customerKeys(newRec(), line);  // a line that the rules refuse vanishes without a word, intended
    if (taken && customerExists(taken->cus) && departmentExists(taken->dept) && itemExists(*taken)) return taken;
    return std::nullopt;
  }

  bool customerExists(const Value& cus) const {
    if (cus.isNull() || !CusExists(cus.asText()).empty()) return true;
    reportPartner(cus.asText(), [&] {
      CustomerRecord customer;
      LoadCustomer(lastConn(), cus.asText(), customer);
      return customer.cCusAbbName;
    });
    return false;
  }
};

class SupplierLoop final : public ItemLoop {
public:
  explicit SupplierLoop(OpenItemState& state) : ItemLoop(state, supplierItem, supplierTexts) {}

private:
  void loadClosingRecord(const std::string& newCode) override { LoadCode(lastConn(), newCode, lastRec()); }

  std::optional<AuxiliaryKeys> keys(const Recordset& line) override {
    if (!sameSupplierAuxiliaries(newRec(), lastRec())) {
      reportAuxiliaries();
      return std::nullopt;
    }
    auto taken = supplierKeys(newRec(), line);  // as with customers
    if (taken && supplierExists(taken->sup) && departmentExists(taken->dept) && itemExists(*taken)) return taken;
    return std::nullopt;
  }

  bool supplierExists(const Value& sup) const {
    if (sup.isNull() || !VenExists(sup.asText()).empty()) return true;
    reportPartner(sup.asText(), [&] {
      VendorRecord vendor;
      LoadVendor(lastConn(), sup.asText(), vendor);
      return vendor.cVenAbbName;
    });
    return false;
  }
};

// Clearing periods from here on are the new year's or later.
std::int32_t yearCap() {
  return yearNumber(run.m_strCurYear) * 100;
}

constexpr int customers = 1, suppliers = 2, byDetail = 2;  // of GL_YeMxSel

std::string chosenAccounts(std::uint8_t mode, int cusSup) {
  return mode == 3 ? sql::chosenAccounts(GetYeMxSelCodes(cusSup, byDetail)) : std::string();
}

}  // namespace

void CarryPersonItems(OpenItemState& state) {
  PersonLoop loop(state);
  loop.pass(sql::selectPersonItems(run.m_strInitYear, run.m_strLastYear, yearCap()),
            sql::probePersonYear(run.m_strCurYear));
}

void CarryCustomerItems(OpenItemState& state) {
  CustomerLoop loop(state);
  for (const char* band : sql::customerBands) {
    loop.pass(sql::selectCustomerItems(run.m_strInitYear, run.m_strLastYear, yearCap(),
                                       chosenAccounts(run.m_iCusMode, customers), band),
              sql::probeYear(run.m_strCurYear));
  }
}

void CarrySupplierItems(OpenItemState& state) {
  SupplierLoop loop(state);
  loop.pass(sql::selectSupplierItems(run.m_strInitYear, run.m_strLastYear, yearCap(),
                                     chosenAccounts(run.m_iSupMode, suppliers)),
            sql::probeYear(run.m_strCurYear));
}

}  // namespace gljz
