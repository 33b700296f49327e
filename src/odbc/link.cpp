#include "odbc/link.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "odbc/statement.h"
#include "odbc/text.h"
#include "platform/value.h"

namespace odbc {

using platform::RunTimeError;

Link::Link(const ConnectionString& place, const std::string& where, const Settings& settings)
    : environment_(SQL_NULL_HANDLE) {
  SQLSetEnvAttr(environment_.get(), SQL_ATTR_ODBC_VERSION, attribute(SQL_OV_ODBC3), 0);
  connection_ = ConnectionHandle(environment_.get());
  connect(place, where, settings);
  open_ = true;
  try {
    prepare(settings);
  } catch (...) {
    close();
    throw;
  }
}

// What has to be known of the server, and agreed with it, before the first statement.
void Link::prepare(const Settings& settings) {
  isSqlServer_ = information(SQL_DBMS_NAME).find("SQL Server") != std::string::npos;
  if (isSqlServer_) {
    openQuote_ = "[", closeQuote_ = "]";  // the dialect's own quotes do not depend on the session's settings
    if (settings.lockTimeoutSeconds > 0) setLockTimeout(settings.lockTimeoutSeconds);
  } else if (const std::string quote = information(SQL_IDENTIFIER_QUOTE_CHAR); !platform::trim(quote).empty()) {
    openQuote_ = closeQuote_ = quote;
  }
  const std::string amountType = settings.amountType.empty() && isSqlServer_ ? "money" : settings.amountType;
  if (!amountType.empty()) checkAmounts(amountType);
  transactionCount_ =
      settings.transactionCount.empty() && isSqlServer_ ? "select @@trancount" : settings.transactionCount;
  serverCursor_ = settings.serverCursor;
  if (serverCursor_ == ServerCursor::automatic)
    serverCursor_ = hasActiveResults() ? ServerCursor::activeResults : ServerCursor::staticCursor;
}

Link::~Link() {
  close();
}

void Link::connect(const ConnectionString& place, const std::string& where, const Settings& settings) {
  ConnectionString whole = place;
  whole.complete(settings.credentials);
  secrets_ = whole.secretValues();
  SQLSetConnectAttrW(connection_.get(), SQL_ATTR_LOGIN_TIMEOUT,
                     attribute(static_cast<SQLULEN>(settings.loginTimeoutSeconds)), SQL_IS_UINTEGER);
  const std::u16string text = toUtf16(whole.text());
  std::array<SQLWCHAR, 1024> completed{};
  SQLSMALLINT length = 0;
  const SQLRETURN result =
      SQLDriverConnectW(connection_.get(), nullptr, wide(text.data()), static_cast<SQLSMALLINT>(text.size()),
                        completed.data(), static_cast<SQLSMALLINT>(completed.size()), &length, SQL_DRIVER_NOPROMPT);
  completed.fill(0);  // the driver's own copy of the password
  if (SQL_SUCCEEDED(result)) return;
  const auto records = diagnosticsOf(SQL_HANDLE_DBC, connection_.get(), secrets_);
  Diagnostic d = failureOf(records);
  d.message = "The connection to " + where + " cannot be opened: " + d.message;
  const bool serverSpoke = d.number != 0 && !d.isClass("08") && !d.isClass("IM");
  if (serverSpoke) throw RunTimeError(serverFailure(d, ""));
  throw RunTimeError(RunTimeError::connectionClosed, d.message + " (" + d.state + ")");
}

// What a driver says of itself, and what it says of the connection: FreeTDS names one result set at a time also where
// it has agreed with the server on several.
bool Link::hasActiveResults() const {
  constexpr SQLINTEGER marsAttribute = 1224;
  SQLUSMALLINT atATime = 0;  // 0: no limit, or none that the driver knows
  SQLGetInfoW(connection_.get(), SQL_MAX_CONCURRENT_ACTIVITIES, &atATime, sizeof atATime, nullptr);
  if (atATime != 1) return true;
  SQLUINTEGER mars = 0;
  return isSqlServer_ &&
         SQL_SUCCEEDED(SQLGetConnectAttrW(connection_.get(), marsAttribute, &mars, sizeof mars, nullptr)) && mars == 1;
}

void Link::close() noexcept {
  for (Statement* statement : statements_) statement->drop();
  statements_.clear();
  if (!open_) return;
  open_ = false;
  if (depth_ > 0 && !lost_) SQLEndTran(SQL_HANDLE_DBC, connection_.get(), SQL_ROLLBACK);
  depth_ = 0;
  SQLDisconnect(connection_.get());
  connection_.reset();
}

void Link::needOpen() const {
  if (lost_) throw RunTimeError(RunTimeError::connectionClosed, lossText_);
  if (!open_) throw RunTimeError(RunTimeError::connectionClosed, "The connection is closed");
}

// There are drivers that show amounts with two decimals, and a ledger that is a hundredth of a cent short does not
// balance.
void Link::checkAmounts(const std::string& type) {
  constexpr const char* amount = "-922337203685477.5807";
  const StatementHandle statement(connection_.get());
  const std::string question = std::string("select cast(") + amount + " as " + type + ")";
  const std::u16string text = toUtf16(question);
  std::array<char, 64> digits{};
  SQLLEN size = 0;
  if (!SQL_SUCCEEDED(SQLExecDirectW(statement.get(), wide(text.data()), static_cast<SQLINTEGER>(text.size()))) ||
      !SQL_SUCCEEDED(SQLFetch(statement.get())) ||
      !SQL_SUCCEEDED(SQLGetData(statement.get(), 1, SQL_C_CHAR, digits.data(), digits.size(), &size)))
    raise(SQL_HANDLE_STMT, statement.get(), question);
  if (std::string_view(digits.data()) != amount)
    throw RunTimeError(RunTimeError::invalidCall, "The driver does not hand on amounts exactly: for " +
                                                      std::string(amount) + " it gives " + digits.data());
}

// The one thing that the interface has no call for.
void Link::setLockTimeout(int seconds) {
  const StatementHandle statement(connection_.get());
  const std::u16string text = toUtf16("set lock_timeout " + std::to_string(seconds * 1000));
  if (!SQL_SUCCEEDED(SQLExecDirectW(statement.get(), wide(text.data()), static_cast<SQLINTEGER>(text.size()))))
    raise(SQL_HANDLE_STMT, statement.get(), "set lock_timeout");
}

void Link::setAutocommit(bool on) {
  const SQLRETURN result = SQLSetConnectAttrW(connection_.get(), SQL_ATTR_AUTOCOMMIT,
                                              attribute(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF), SQL_IS_UINTEGER);
  if (!SQL_SUCCEEDED(result)) raise(SQL_HANDLE_DBC, connection_.get(), on ? "autocommit on" : "autocommit off");
}

void Link::begin() {
  needOpen();
  if (depth_ == 0) {
    setAutocommit(false);
    worked_ = suspect_ = undone_ = false;
  }
  ++depth_;
}

void Link::commit() {
  constexpr int noTransaction = 3902;
  needOpen();
  if (depth_ == 0)
    throw RunTimeError(platform::ServerFailure{noTransaction, 16, 1,
                                               "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION.",
                                               "commit transaction"});
  beforeStatement();
  if (undone_)
    throw RunTimeError(platform::ServerFailure{noTransaction, 16, 1,
                                               "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION: "
                                               "the server undid the transaction after an earlier failure.",
                                               "commit transaction"});
  if (depth_ > 1) {
    --depth_;
    return;
  }
  endTransaction(SQL_COMMIT, "commit transaction");
}

void Link::rollback() {
  constexpr int noTransaction = 3903;
  needOpen();
  if (depth_ == 0)
    throw RunTimeError(platform::ServerFailure{
        noTransaction, 16, 1, "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION.",
        "rollback transaction"});
  endTransaction(SQL_ROLLBACK, "rollback transaction");
}

// A commit that fails leaves the transaction open, for the caller to undo.
void Link::endTransaction(SQLSMALLINT how, const char* name) {
  if (!SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, connection_.get(), how)))
    raise(SQL_HANDLE_DBC, connection_.get(), name);
  depth_ = 0;
  suspect_ = undone_ = false;
  setAutocommit(true);
}

void Link::beforeStatement() {
  needOpen();
  if (!suspect_) return;
  suspect_ = false;
  undone_ = undone_ || transactionIsGone();
}

// False also where it cannot be known because the connection is busy with a result.
bool Link::transactionIsGone() const {
  const StatementHandle statement(connection_.get());
  const std::u16string text = toUtf16(transactionCount_);
  SQLINTEGER count = 1;
  SQLLEN size = 0;
  return SQL_SUCCEEDED(SQLExecDirectW(statement.get(), wide(text.data()), static_cast<SQLINTEGER>(text.size()))) &&
         SQL_SUCCEEDED(SQLFetch(statement.get())) &&
         SQL_SUCCEEDED(SQLGetData(statement.get(), 1, SQL_C_SLONG, &count, sizeof count, &size)) && count == 0;
}

bool Link::isDead(const std::vector<Diagnostic>& records) const {
  if (std::any_of(records.begin(), records.end(), [](const Diagnostic& d) { return d.isClass("08"); })) return true;
  SQLUINTEGER dead = SQL_CD_FALSE;
  return SQL_SUCCEEDED(SQLGetConnectAttrW(connection_.get(), SQL_ATTR_CONNECTION_DEAD, &dead, sizeof dead, nullptr)) &&
         dead == SQL_CD_TRUE;
}

RunTimeError Link::failure(SQLSMALLINT handleType, SQLHANDLE handle, const std::string& statement) {
  const auto records = diagnosticsOf(handleType, handle, secrets_);
  Diagnostic d = failureOf(records);
  if (isDead(records)) {
    lost_ = true;
    d.message = lossText_ = "The connection to the server is lost: " + d.message;
  } else if (depth_ > 0 && worked_ && !transactionCount_.empty()) {
    suspect_ = true;
  }
  return RunTimeError(serverFailure(d, statement));
}

void Link::raise(SQLSMALLINT handleType, SQLHANDLE handle, const std::string& statement) {
  throw failure(handleType, handle, statement);
}

std::string Link::quoted(const std::string& name) const {
  std::string out = openQuote_;
  for (const char c : name) {
    out += c;
    if (closeQuote_[0] == c) out += c;
  }
  return out + closeQuote_;
}

std::string Link::information(SQLUSMALLINT what) const {
  std::u16string text(256, u'\0');
  SQLSMALLINT bytes = 0;
  if (!SQL_SUCCEEDED(
          SQLGetInfoW(connection_.get(), what, text.data(), static_cast<SQLSMALLINT>(text.size() * 2), &bytes)))
    return {};
  text.resize(std::min(text.size() - 1, static_cast<std::size_t>(std::max<SQLSMALLINT>(bytes, 0)) / 2));
  return toUtf8(text);
}

}  // namespace odbc
