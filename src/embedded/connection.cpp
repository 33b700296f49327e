// The platform's connection over a session.

#include <map>

#include "embedded/recordset.h"

namespace embedded {

using platform::RunTimeError;
using tsql::SqlError;

namespace {

constexpr std::string_view embeddedPrefix = "embedded:";

std::map<std::string, std::string, LessNoCase> keysOf(const std::string& text) {
  std::map<std::string, std::string, LessNoCase> keys;
  std::size_t i = 0;
  while (i < text.size()) {
    auto end = text.find(';', i);
    if (end == std::string::npos) end = text.size();
    const std::string part = text.substr(i, end - i);
    if (const auto eq = part.find('='); eq != std::string::npos)
      keys.try_emplace(platform::trim(part.substr(0, eq)), platform::trim(part.substr(eq + 1)));
    i = end + 1;
  }
  return keys;
}

class LastCount : public ResultSink {
public:
  void columns(const std::vector<ColumnInfo>&) override {}
  void row(const std::vector<platform::Value>&) override {}
  void endRows(std::int64_t) override {}
  void affected(std::int64_t n) override { count = n; }
  void failure(const SqlError& e) override {
    if (!error) error = e;
  }
  std::int64_t count = -1;
  std::optional<SqlError> error;
};

class EmbeddedConnection : public platform::Connection, private platform::RawConnection {
public:
  void ConnectionOpen(const std::string& text) override {
    if (session_) throw RunTimeError(3705, "The connection is open already: " + text_);
    const auto keys = keysOf(text);
    const auto server = keys.find("Server");
    if (server == keys.end() || server->second.rfind(embeddedPrefix, 0) != 0)
      throw RunTimeError(RunTimeError::connectionClosed,
                         "The connection text names no embedded server: '" + text + "'");
    const auto opened = Server::open(server->second.substr(embeddedPrefix.size()));
    const auto database = keys.find("Database");
    const std::string name = database == keys.end() ? "" : database->second;
    if (!name.empty() && !opened->hasDatabase(name) && !tsql::sameName(name, "tempdb"))
      raise(SqlError(4060,
                     "Cannot open database \"" + name + "\" requested by the login: the folder '" + opened->folder() +
                         "' has none of that name.",
                     {}, 11),
            text);
    try {
      session_ = std::make_shared<Session>(opened, name);
    } catch (const SqlError& e) {
      raise(e, text);
    }
    text_ = text;
  }

  void ConnectionClose() override {
    if (!session_) return;
    if (session_->inTransaction()) guarded([&] { session_->impl().rollback(); }, "rollback");
    session_.reset();
  }

  std::string ConnectionText() const override { return text_; }
  platform::RawConnection& RawConnection() override { return *this; }

  int State() const override { return session_ ? open : closed; }
  std::unique_ptr<platform::Recordset> Open(const std::string& sql) override { return OpenRecordset(sql, 2); }
  // Statements have no time limit here; a text longer than its declared size simply finds nothing.
  std::unique_ptr<platform::Recordset> OpenCommand(const std::string& sql,
                                                   const std::vector<platform::TextParameter>& parameters,
                                                   int) override {
    needOpen();
    std::vector<platform::Value> values;
    for (const auto& parameter : parameters) values.emplace_back(parameter.text);
    return openRecordset(session_, sql, values);
  }

  void BeginTrans() override {
    needOpen();
    session_->impl().beginTransaction();
  }
  void CommitTrans() override {
    needOpen();
    guarded([&] { session_->impl().commit(); }, "commit transaction");
  }
  void RollbackTrans() override {
    needOpen();
    guarded([&] { session_->impl().rollback(); }, "rollback transaction");
  }

  std::int64_t ExecuteSql(const std::string& sql) override {
    needOpen();
    LastCount sink;
    session_->execute(sql, sink);
    if (sink.error) raise(*sink.error, sql);
    return sink.count;
  }

  std::unique_ptr<platform::Recordset> OpenRecordset(const std::string& sql, int,
                                                     platform::CursorLocation location) override {
    needOpen();
    return openRecordset(session_, sql, location);
  }

  std::unique_ptr<platform::Recordset> OpenRecordset(const std::string& sql, int options) {
    return OpenRecordset(sql, options, platform::CursorLocation::client);
  }

private:
  void needOpen() const {
    if (!session_) throw RunTimeError(RunTimeError::connectionClosed, "The connection is closed");
  }
  template <class F>
  void guarded(F&& f, const std::string& what) {
    try {
      f();
    } catch (const SqlError& e) {
      raise(e, what);
    } catch (const SqliteFailure& e) {
      raise(session_->impl().translate(e, nullptr), what);
    }
  }

  std::shared_ptr<Session> session_;
  std::string text_;
};

}  // namespace

std::shared_ptr<platform::Connection> makeConnection() {
  return std::make_shared<EmbeddedConnection>();
}

}  // namespace embedded
