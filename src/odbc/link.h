#pragma once
// Link: one open connection of the driver, shared by those who work on it: the connection itself and its result sets.

#include <set>
#include <string>
#include <vector>

#include "odbc/connection_string.h"
#include "odbc/diagnostics.h"
#include "odbc/handle.h"
#include "odbc/settings.h"
#include "platform/run_time_error.h"

namespace odbc {

class Statement;

class Link {
public:
  // Connects, within the settings' time. A failure of the server (no such database, wrong password) is a RunTimeError
  // with the server's number and text, any other one RunTimeError 3709; where: what a message calls the place.
  Link(const ConnectionString& place, const std::string& where, const Settings& settings);
  ~Link();
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  SQLHANDLE handle() const { return connection_.get(); }
  // Undoes what is open and disconnects. Result sets that are still there are closed with it.
  void close() noexcept;
  // Open, and not known to be lost.
  bool isOpen() const { return open_ && !lost_; }
  // RunTimeError 3709 unless open; after a loss it says so.
  void needOpen() const;

  // Before each statement: open, as above; and behind a failure it finds out what became of the transaction, before a
  // new one begins without a word.
  void beforeStatement();

  // Transactions nest as the server's own do: only the outermost commit counts, a rollback undoes all. When the server
  // has undone the transaction behind a failure, the commit fails with 3902, as it would there, and nothing of what ran
  // since stays either: the driver began a transaction anew without a word.
  void begin();
  void commit();
  void rollback();
  int transactionDepth() const { return depth_; }

  // After a call that failed: the records of the handle as an exception. Notices when the connection is gone; the
  // failure then says so, and all later calls on the link are refused.
  [[noreturn]] void raise(SQLSMALLINT handleType, SQLHANDLE handle, const std::string& statement);
  platform::RunTimeError failure(SQLSMALLINT handleType, SQLHANDLE handle, const std::string& statement);

  const std::vector<std::string>& secrets() const { return secrets_; }
  ServerCursor serverCursor() const { return serverCursor_; }
  // A column or table name as the server reads it: [name] or "name".
  std::string quoted(const std::string& name) const;
  // The information of the driver that is a text (product names and the like).
  std::string information(SQLUSMALLINT what) const;

private:
  friend class Statement;
  void connect(const ConnectionString& place, const std::string& where, const Settings& settings);
  void prepare(const Settings& settings);
  void setAutocommit(bool on);
  void setLockTimeout(int seconds);
  void checkAmounts(const std::string& type);
  bool hasActiveResults() const;
  void endTransaction(SQLSMALLINT how, const char* name);
  bool isDead(const std::vector<Diagnostic>& records) const;
  bool transactionIsGone() const;

  EnvironmentHandle environment_;
  ConnectionHandle connection_;
  std::vector<std::string> secrets_;
  std::set<Statement*> statements_;
  bool isSqlServer_ = false;
  std::string openQuote_ = "\"", closeQuote_ = "\"", lossText_;
  ServerCursor serverCursor_ = ServerCursor::automatic;
  std::string transactionCount_;
  bool open_ = false, lost_ = false;
  bool worked_ = false;                    // a statement has succeeded inside the transaction
  bool suspect_ = false, undone_ = false;  // the server may have undone it; it has
  int depth_ = 0;
};

}  // namespace odbc
