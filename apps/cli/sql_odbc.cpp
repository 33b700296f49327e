#include "sql_odbc.h"

#include "host/database_server.h"
#include "host/sql_script.h"

namespace cli {
namespace {

// Hands on what a server answers to the writer. Of a column's type it needs to know whether it is a number.
class ToWriter final : public platform::ResultSink {
public:
  explicit ToWriter(ResultWriter& writer) : writer_(writer) {}
  void columns(const std::vector<platform::ResultColumn>& columns) override {
    std::vector<embedded::ColumnInfo> told;
    for (const auto& c : columns)
      told.push_back({c.name, tsql::typeOf(c.numeric ? tsql::TypeKind::float_ : tsql::TypeKind::nvarchar)});
    writer_.columns(told);
  }
  void row(const std::vector<platform::Value>& row) override { writer_.row(row); }
  void endRows(std::int64_t count) override { writer_.endRows(count); }
  void affected(std::int64_t count) override { writer_.affected(count); }
  void failure(const platform::ServerFailure& f) override {
    writer_.failure(tsql::SqlError(f.number, f.message, {0, f.line, 1}, f.severity));
  }
  void message(const std::string& text) override { writer_.message(text); }

private:
  ResultWriter& writer_;
};

}  // namespace

void runScript(const host::ServerAddress& address, const std::string& database, const std::string& script,
               ResultWriter& writer) {
  const host::ServerPtr server = host::openAnyServer(address);
  const auto session = server->openSession(database);
  ToWriter sink(writer);
  for (const std::string& batch : host::splitBatches(script)) session->execute(batch, sink);
}

}  // namespace cli
