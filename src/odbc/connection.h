#pragma once
// A database server of the dialect of Microsoft SQL Server, through a driver for ODBC.
//
//   odbc::Settings settings;
//   settings.credentials = odbc::ConnectionString("UID=ledger;PWD=...");
//   auto connection = odbc::makeConnection(settings);
//   connection->ConnectionOpen("Database=TqData_001_2006;Server=odbc:Driver={FreeTDS};Server=db1;Port=1433;");
//
// A connection text names the database first, and behind "Server=odbc:" stands a connection string as the driver
// manager reads it. Secrets in it are used and forgotten: ConnectionText() has none.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "odbc/settings.h"
#include "platform/database.h"
#include "platform/result_sink.h"

namespace odbc {

class Link;

// A closed connection. The loss of an open one is told by the call that meets it; later calls are refused with 3709.
// OpenRecordset with a server cursor is RunTimeError 5 where the driver can read it in no way beside other statements.
std::shared_ptr<platform::Connection> makeConnection(Settings settings);

// For work that wants all that a batch answers.
class Session {
public:
  // RunTimeError when it cannot be opened, with the server's number and text when it was the server that refused.
  Session(const std::string& connectionText, const Settings& settings);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // A failure of the batch goes to the sink, and what the server answers behind it follows. parameters fill the ? in
  // order. RunTimeError when the connection is lost.
  void execute(const std::string& batch, platform::ResultSink& sink,
               const std::vector<platform::Value>& parameters = {});

  void begin();
  void commit();
  void rollback();
  bool inTransaction() const;
  // How server cursors of such a connection are read.
  ServerCursor serverCursor() const;

private:
  class Command;
  std::shared_ptr<Link> link_;
  std::unique_ptr<Command> command_;  // the last one with parameters, prepared
};

// The connection string of a connection text, with its database as the driver wants it. RunTimeError 3709 when the text
// names no ODBC server, 5 when the string cannot be read.
ConnectionString connectionStringOf(std::string_view connectionText);

}  // namespace odbc
