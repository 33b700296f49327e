#include "odbc/connection.h"

#include "odbc/recordset.h"
#include "odbc/statement.h"

namespace odbc {

using platform::Recordset;
using platform::RunTimeError;

namespace {

constexpr std::string_view serverPrefix = "server=odbc:";

class OdbcConnection final : public platform::Connection, private platform::RawConnection {
public:
  explicit OdbcConnection(Settings settings) : settings_(std::move(settings)) {}

  void ConnectionOpen(const std::string& text) override {
    constexpr int alreadyOpen = 3705;
    if (link_ && link_->isOpen()) throw RunTimeError(alreadyOpen, "The connection is open already: " + text_);
    statement_.reset();
    text_ = redacted(text);
    link_ = std::make_shared<Link>(connectionStringOf(text), "'" + text_ + "'", settings_);
  }
  void ConnectionClose() override {
    statement_.reset();
    if (link_) link_->close();
    link_.reset();
  }
  std::string ConnectionText() const override { return text_; }
  platform::RawConnection& RawConnection() override { return *this; }

  int State() const override { return link_ && link_->isOpen() ? open : closed; }
  std::unique_ptr<Recordset> Open(const std::string& sql) override { return openClientRows(needLink(), sql); }
  std::unique_ptr<Recordset> OpenCommand(const std::string& sql, const std::vector<platform::TextParameter>& parameters,
                                         int timeoutSeconds) override {
    return openCommand(needLink(), sql, parameters, timeoutSeconds);
  }

  void BeginTrans() override { needLink()->begin(); }
  void CommitTrans() override { needLink()->commit(); }
  void RollbackTrans() override { needLink()->rollback(); }

  std::int64_t ExecuteSql(const std::string& sql) override {
    const auto& link = needLink();
    if (!statement_) statement_ = std::make_unique<Statement>(link);  // kept: most of a run's calls are these
    std::int64_t changed = -1;
    std::optional<RunTimeError> first;
    for (auto r = statement_->execute(sql); r != Statement::Result::end; r = statement_->next()) {
      if (r == Statement::Result::failure && !first) first = statement_->failureOfResult();
      if (r == Statement::Result::count && statement_->rowCount() >= 0) changed = statement_->rowCount();
    }
    if (first) throw *first;
    return changed;
  }

  std::unique_ptr<Recordset> OpenRecordset(const std::string& sql, int, platform::CursorLocation location) override {
    return location == platform::CursorLocation::server ? openServerRows(needLink(), sql)
                                                        : openClientRows(needLink(), sql);
  }

private:
  const std::shared_ptr<Link>& needLink() const {
    if (!link_) throw RunTimeError(RunTimeError::connectionClosed, "The connection is closed");
    link_->needOpen();
    return link_;
  }

  Settings settings_;
  std::string text_;
  std::shared_ptr<Link> link_;
  std::unique_ptr<Statement> statement_;
};

}  // namespace

ConnectionString connectionStringOf(std::string_view connectionText) {
  const std::string lower = platform::toLowerAscii(connectionText);
  std::size_t at = lower.find(serverPrefix);
  while (at != std::string::npos && at > 0 && lower[at - 1] != ';') at = lower.find(serverPrefix, at + 1);
  if (at == std::string::npos)
    throw RunTimeError(RunTimeError::connectionClosed,
                       "The connection text names no ODBC server: '" + redacted(connectionText) + "'");
  ConnectionString place(connectionText.substr(at + serverPrefix.size()));
  const ConnectionString before(connectionText.substr(0, at));
  if (const std::string* database = before.find("Database"); database && !database->empty())
    place.set("Database", *database);
  return place;
}

std::shared_ptr<platform::Connection> makeConnection(Settings settings) {
  return std::make_shared<OdbcConnection>(std::move(settings));
}

}  // namespace odbc
