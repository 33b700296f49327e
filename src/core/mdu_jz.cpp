#include "core/mdu_jz.h"

#include <utility>

#include "core/mdu_jz_sql.h"
#include "platform/surroundings.h"

namespace gljz {

using platform::Connection;
using platform::RunTimeError;
using platform::Value;
namespace sql = mdu_jz_sql;

namespace {

template <class T>
T& required(const std::shared_ptr<T>& object, const char* name) {
  if (!object) throw RunTimeError(RunTimeError::objectNotSet, std::string("Object not set: ") + name);
  return *object;
}

// A connection of its own to the database that another connection is open on.
std::shared_ptr<Connection> openPrivately(const Connection& like) {
  auto connection = platform::surroundings().newConnection();
  connection->ConnectionOpen(like.ConnectionText());
  return connection;
}

std::int32_t wholeNumber(const Value& value) {
  const std::int64_t number = value.asInteger();
  if (!std::in_range<std::int32_t>(number)) throw RunTimeError(RunTimeError::overflow, "Overflow");
  return static_cast<std::int32_t>(number);
}

int customerOrSupplier(int iCusSupType) {
  return iCusSupType == 1 ? 1 : 2;
}
int balanceOrDetail(int iYeMxType) {
  return iYeMxType == 1 ? 1 : 2;
}

}  // namespace

platform::ZwPubCls& pubCls() {
  return required(run.m_pubCls, "ZwPubCls");
}
platform::Login& login() {
  return required(run.m_login, "login");
}
Connection& lastConn() {
  return required(run.m_conn, "connection of the closing year");
}
Connection& newConn() {
  return required(pubCls().NewYearConn(), "connection of the new year");
}

bool separateDatabases() {
  return !platform::equalsIgnoreCase(run.m_strLastDB, run.m_strCurDB);
}

std::string GetResString(std::string_view key, const std::vector<Value>& args) {
  if (!run.m_pubCls) {  // the entries report so that there are no services
    const auto& text = platform::surroundings().text;
    return text ? text(std::string(key)) : std::string(key);
  }
  return run.m_pubCls->ResText(std::string(key), args.empty() ? nullptr : &args);
}

int ShowMsg(const std::string& prompt, int style, const std::string& title, const std::string& helpFile, int context) {
  if (!run.m_bManual || !run.m_bCancelable) return 0;
  return pubCls().ServiceMsgBox(prompt, style, title, helpFile, context);
}

bool LocalizeForm(platform::Form& form, const std::string& prefix, const std::string& second,
                  const std::string& third) {
  return pubCls().ServiceLocalize(form, prefix, second, third);
}

std::string GetAccinfo(Connection& connection, const std::string& systemId, const std::string& name) {
  auto rs = connection.OpenRecordset(sql::selectSetting(systemId, name), 2);
  if (rs->Eof()) {
    ShowMsg(systemId + "--" + name, msgStop, "GetAccinfo Error!");
    return {};
  }
  const Value value = rs->Field("cvalue");
  if (!value.isNull()) return value.asText();

  const std::string title = GetResString("Orvo.GL.TqGLJZ.00297", {systemId, name});
  const Value fallback = rs->Field("cdefault");
  if (fallback.isNull()) {
    ShowMsg(GetResString("Orvo.GL.TqGLJZ.00296"), msgStop, title);
    return {};
  }
  ShowMsg(GetResString("Orvo.GL.TqGLJZ.00300", {fallback}), msgStop, title);
  return fallback.asText();
}

std::string GetDatabaseName(const std::string& year) {
  auto connection = openPrivately(newConn());
  std::string database;
  {
    auto rs = connection->OpenRecordset(sql::selectDatabase(login().LoginAccId(), year), 2);
    if (!rs->Eof()) database = rs->Field("cdatabase").asText();
    rs->Close();
  }
  connection->ConnectionClose();
  return database;
}

std::string GetLastInitYear() {
  auto connection = openPrivately(lastConn());
  std::string year = "0";
  {
    auto rs = connection->OpenRecordset(sql::selectLastInitYear(run.m_strLastYear), 2);
    if (!rs->Eof()) year = rs->Field("iyear").asText();
    rs->Close();
  }
  connection->ConnectionClose();
  return year;
}

std::string SqlValue(const Value& value) {
  return value.isNull() ? "Null," : "N'" + value.asText() + "',";
}

std::string textLiteral(const Value& value) {
  if (value.isNull()) return "Null";
  std::string literal = "N'";
  for (char c : value.asText()) {
    if (c == '\'') literal += c;
    literal += c;
  }
  return literal + "'";
}

std::string numberLiteral(const Value& value) {
  return value.isNull() ? "Null" : value.asText();
}

std::string GetYeMxSelCodes(int iCusSupType, int iYeMxType) {
  auto rs =
      newConn().OpenRecordset(sql::selectYeMxSelCodes(customerOrSupplier(iCusSupType), balanceOrDetail(iYeMxType)), 2);
  std::string codes;
  for (; !rs->Eof(); rs->MoveNext()) codes += ",'" + rs->Field("ccode").asText() + "'";
  rs->Close();
  return codes.empty() ? "''" : codes.substr(1);
}

bool IsYeMxSelCode(int iCusSupType, int iYeMxType, const std::string& ccode) {
  try {
    return hasRow(newConn(),
                  sql::selectYeMxSelCode(customerOrSupplier(iCusSupType), balanceOrDetail(iYeMxType), ccode));
  } catch (const RunTimeError&) {
    return false;
  }
}

std::int32_t RecordCount(const std::string& statement) {
  std::string counting;
  for (char c : statement) {
    if (c == '*') {
      counting += "count(1)";
    } else {
      counting += c;
    }
  }
  try {
    auto rs = newConn().RawConnection().Open(counting);
    if (rs->Eof()) return 0;
    const Value count = rs->Field(0);
    return count.isNull() ? 0 : wholeNumber(count);
  } catch (const RunTimeError&) {
    return 0;
  }
}

bool hasRow(Connection& connection, const std::string& statement) {
  auto rs = connection.OpenRecordset(statement, 2);
  const bool found = !rs->Eof();
  rs->Close();
  return found;
}

std::int32_t yearNumber(const std::string& year) {
  return wholeNumber(Value(year));
}

}  // namespace gljz
