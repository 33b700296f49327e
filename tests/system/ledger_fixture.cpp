#include "system/ledger_fixture.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <utility>

#include "core/cls_gljz.h"
#include "dialogs/frm_jzbg.h"
#include "dialogs/frm_jzsn.h"
#include "dialogs/frm_nbalance.h"
#include "dialogs/frm_sy_km_sel.h"
#include "dialogs/frm_tran_cond.h"
#include "host/account.h"
#include "host/components.h"
#include "host/database_desk.h"
#include "host/login.h"
#include "host/services.h"
#include "xml/xml_reader.h"

namespace gljz::test {
namespace {

using host::DatabaseDesk;
using platform::DateTime;
using platform::Value;

constexpr const char* accountId = "001";
constexpr int closingYear = 2005, newYear = 2006;

class CollectedDebugOutput final : public platform::DebugOutput {
public:
  void Write(const std::string& line) override { lines.push_back(line); }
  std::vector<std::string> lines;
};

std::vector<std::string> cells(const std::string& line) {
  std::vector<std::string> result;
  for (std::size_t start = 0;;) {
    const std::size_t bar = line.find('|', start);
    result.push_back(platform::trim(line.substr(start, bar == std::string::npos ? bar : bar - start)));
    if (bar == std::string::npos) return result;
    start = bar + 1;
  }
}

std::string joined(const std::vector<std::string>& parts, const std::string& separator) {
  std::string result;
  for (std::size_t i = 0; i < parts.size(); ++i) result += (i == 0 ? "" : separator) + parts[i];
  return result;
}

std::string cellText(const Value& value) {
  if (value.isNull()) return "Null";
  if (value.kind() == Value::Kind::boolean) return value.asBool() ? "1" : "0";
  return value.displayText();
}

// A number stands bare so that it may go into an amount; a code that looks like one still arrives letter for letter,
// unless it has leading zeros, which is why those are quoted.
bool isNumber(const std::string& cell) {
  const std::size_t first = cell.starts_with('-') ? 1 : 0;
  if (cell.size() == first || cell.size() > 12) return false;
  if (cell[first] == '0' && cell.size() > first + 1 && cell[first + 1] != '.') return false;
  return cell.find_first_not_of("0123456789.", first) == std::string::npos;
}

std::string literal(const std::string& cell) {
  return cell == "Null" || isNumber(cell) ? cell : host::quoted(cell);
}

void unloadForms() {
  frmTranCond.unload();
  frmSyKmSel.unload();
  frmNBalance.unload();
  frmJZBG.unload();
  frmJZSN.unload();
}

}  // namespace

LedgerTest::LedgerTest(Layout layout)
    : closing{host::databaseName(accountId, closingYear), closingYear},
      opening{host::databaseName(accountId, layout == Layout::shared ? closingYear : newYear), newYear},
      layout_(layout),
      address_(host::parseServer("embedded:" + folder_.text())),
      server_(host::openServer(address_)),
      components_(host::makeComponents(journal_)),
      xml_(xml::newXmlReader()),
      debug_(std::make_unique<CollectedDebugOutput>()),
      forms_({[this] { run.m_strCondXml = conditions_; }, nullptr, GLJZ_SOURCE_DIR "/data"}) {
  server_->setClock([] { return DateTime::fromDate(newYear, 1, 10).ticks(); });
  if (layout != Layout::unmade) createClosingYear();
  if (layout == Layout::separate) createNewYear();
  if (layout != Layout::unmade) sql(opening, "insert into dsign(csign, isignseq, ctext) values(N'记', 1, N'记账凭证')");

  surroundings_.newConnection = [this] { return spiedConnection(); };
  surroundings_.newServices = [this] {
    return host::makeServices({[this] { return spiedConnection(); }, nullptr,
                               std::make_shared<host::Messages>(language_), language_, operatorName_});
  };
  surroundings_.xml = xml_.get();
  surroundings_.forms = &forms_;
  surroundings_.components = components_.get();
  surroundings_.debug = debug_.get();
  surroundings_.today = [] { return DateTime::fromDate(newYear, 1, 10); };
  platform::setSurroundings(&surroundings_);
  if (layout != Layout::unmade) prepareRun();
}

LedgerTest::~LedgerTest() {
  unloadForms();
  run = {};
  platform::setSurroundings(nullptr);
}

// 2005 keyed in and closed, the adjustment period too.
void LedgerTest::createClosingYear() {
  host::NewAccount wanted;
  wanted.account = accountId;
  wanted.name = "青石商贸";
  wanted.year = closingYear;
  wanted.through = layout_ == Layout::shared ? newYear : closingYear;
  host::createAccount(server_, wanted);
  host::closeYear(server_, accountId, closingYear);
}

// 2006 in a database of its own, with the same settings.
void LedgerTest::createNewYear() {
  host::createAccountDatabase(server_, opening.database);
  sql(opening, "insert into accinformation select * from " + closing.database + "..accinformation");
  sql(opening, "insert into gl_yearstate(iyear, iinitflag, iIsUnload) values(2006, 0, 0)");
  DatabaseDesk desk(server_, host::systemDatabase);
  desk.run("insert into UA_AccountDatabase(cAcc_Id, iBeginYear, iEndYear, cDatabase) values(N'001', 2006, 2006, " +
           host::quoted(opening.database) + ")");
  desk.run(
      "insert into UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd) values(N'001', 2006, 1, '2006-01-01', "
      "'2006-01-31')");
}

std::shared_ptr<platform::Connection> LedgerTest::spiedConnection() {
  return spyConnection(spy_, embedded::makeConnection());
}

void LedgerTest::makeServices() {
  host::LoginSettings settings;
  settings.server = address_;
  settings.account = accountId;
  settings.year = std::to_string(newYear);
  settings.language = language_;
  settings.operatorName = operatorName_;
  settings.subsystemGF = subsystemGF_;
  settings.today = surroundings_.today();
  login_ = host::makeLogin(
      settings, [] { return embedded::makeConnection(); }, nullptr);
  run.m_login = login_;
  run.m_pubCls = surroundings_.newServices();
  run.m_pubCls->SetLogin(login_);
  run.m_pubCls->SetYear(newYear);
  run.m_pubCls->InitServices({}, host::connectionText(opening.database, address_), accountId, newYear, {}, {});
}

void LedgerTest::prepareRun() {
  unloadForms();
  run = {};
  makeServices();
  run.m_strLastYear = std::to_string(closingYear);
  run.m_strCurYear = std::to_string(newYear);
  run.m_strInitYear = std::to_string(closingYear);
  run.m_strLastDB = closing.database;
  run.m_strCurDB = opening.database;
  run.m_bCusPresent = run.m_bSupPresent = true;
  if (layout_ == Layout::shared) {
    run.m_conn = run.m_pubCls->NewYearConn();
  } else {
    run.m_conn = spiedConnection();
    run.m_conn->ConnectionOpen(host::connectionText(closing.database, address_));
  }
  forgetStatements();
}

void LedgerTest::sql(const std::string& database, const std::string& batch) {
  DatabaseDesk(server_, database).run(batch);
}

std::vector<std::string> LedgerTest::columnsOf(const std::string& database, const std::string& table) {
  return rows(database, "select name from syscolumns where id=object_id(N'" + table + "')");
}

void LedgerTest::fill(const Side& side, const std::string& table, std::initializer_list<std::string> lines) {
  const std::vector<std::string> head = cells(*lines.begin());
  const auto names = [](const std::vector<std::string>& columns, const char* wanted) {
    return std::any_of(columns.begin(), columns.end(),
                       [&](const std::string& name) { return platform::equalsIgnoreCase(name, wanted); });
  };
  const bool addYear = !names(head, "iyear") && names(columnsOf(side.database, table), "iyear");

  std::string batch;
  for (auto line = lines.begin() + 1; line != lines.end(); ++line) {
    const std::vector<std::string> row = cells(*line);
    if (row.size() != head.size()) throw std::invalid_argument("cells do not fit the head: " + *line);
    std::vector<std::string> columns, values;
    if (addYear) columns.push_back("iyear"), values.push_back(std::to_string(side.year));
    for (std::size_t i = 0; i < head.size(); ++i) {
      if (row[i].empty()) continue;
      columns.push_back(head[i]);
      values.push_back(literal(row[i]));
    }
    batch += "insert into " + table + "(" + joined(columns, ",") + ") values(" + joined(values, ",") + ")\n";
  }
  sql(side, batch);
}

void LedgerTest::account(const Side& side, const std::string& ccode, const Columns& columns) {
  std::string names = "iyear,ccode", values = std::to_string(side.year) + "," + host::quoted(ccode);
  bool named = false;
  for (std::size_t i = 0; i + 1 < columns.size(); i += 2) {
    names += "," + columns[i];
    values += "," + literal(columns[i + 1]);
    named |= platform::equalsIgnoreCase(columns[i], "ccode_name");
  }
  if (!named) names += ",ccode_name", values += "," + host::quoted("科目" + ccode);
  sql(side, "insert into code(" + names + ") values(" + values + ")");
}

void LedgerTest::account(const std::string& ccode, const Columns& columns) {
  account(closing, ccode, columns);
  account(opening, ccode, columns);
}

void LedgerTest::option(const std::string& name, const std::string& value, const std::string& systemId) {
  const std::string where = " where cSysID=" + host::quoted(systemId) + " and cName=" + host::quoted(name);
  if (rows(opening, "select cName from accinformation" + where).empty())
    sql(opening,
        "insert into accinformation(cSysID, cName) values(" + host::quoted(systemId) + "," + host::quoted(name) + ")");
  sql(opening, "update accinformation set cValue=" + host::quoted(value) + where);
  makeServices();
  if (layout_ == Layout::shared) run.m_conn = run.m_pubCls->NewYearConn();
}

std::vector<std::string> LedgerTest::rows(const std::string& database, const std::string& query) {
  std::vector<std::string> result;
  for (const auto& row : DatabaseDesk(server_, database).rows(query)) {
    std::vector<std::string> texts;
    for (const Value& cell : row) texts.push_back(cellText(cell));
    result.push_back(joined(texts, "\t"));
  }
  return result;
}

void LedgerTest::expectRows(const Side& side, const std::string& query, const std::vector<std::string>& expected) {
  std::vector<std::string> wanted;
  for (const std::string& line : expected) wanted.push_back(joined(cells(line), "\t"));
  EXPECT_EQ(rows(side, query), wanted) << query;
}

std::string LedgerTest::text(const Side& side, const std::string& query) {
  const auto found = rows(side, query);
  return found.size() == 1 ? found.front() : "(" + std::to_string(found.size()) + " rows)";
}

std::vector<std::string> LedgerTest::notCarried() const {
  std::vector<std::string> result;
  if (!frmNBalance.isLoaded()) return result;
  const auto& grid = frmNBalance().Grid1.rows;
  for (std::size_t i = 1; i < grid.size(); ++i) result.push_back(joined(grid[i], "|"));
  return result;
}

bool LedgerTest::wasRun(const std::string& part) const {
  return std::any_of(spy_->statements.begin(), spy_->statements.end(),
                     [&](const SpiedStatement& s) { return s.text.find(part) != std::string::npos; });
}

const std::vector<std::string>& LedgerTest::debugLines() const {
  return static_cast<const CollectedDebugOutput&>(*debug_).lines;
}

std::string LedgerTest::parameters(const Checks& changes) {
  if (!run.m_pubCls) prepareRun();
  FrmTranCond dialog;
  dialog.Load();
  for (const auto& [key, checked] : changes) {
    const auto index = dialog.indexOf(key);
    if (!index) throw std::invalid_argument("not offered: " + key);
    dialog.check(*index, checked);
  }
  dialog.cmdOk_Click();
  return std::exchange(run.m_strCondXml, {});
}

LedgerTest::Outcome LedgerTest::transfer(const Checks& changes) {
  return transferWith(parameters(changes));
}

LedgerTest::Outcome LedgerTest::transferWith(const std::string& parameterText) {
  prepareRun();
  run.m_conn = nullptr;
  conditions_ = parameterText;
  const auto services = run.m_pubCls;
  clsGLJZ entry;  // clears the services and the login of the run state
  entry.ZwPubCls = services;
  Outcome outcome;
  std::string text = parameterText;
  outcome.returned = entry.Transfer(accountId, std::to_string(closingYear), std::to_string(newYear), text, login_,
                                    outcome.errMsg, nullptr);
  outcome.success = entry.getTransferMsg(outcome.message);
  return outcome;
}

}  // namespace gljz::test
