#include "system/spy_connection.h"

#include <utility>

namespace gljz::test {
namespace {

using platform::Recordset;
using platform::RunTimeError;

// "Database=<name>;..."
std::string databaseOf(const std::string& connectionText) {
  const std::size_t begin = connectionText.find('=') + 1;
  return connectionText.substr(begin, connectionText.find(';') - begin);
}

class SpyConnection;

class SpyRawConnection final : public platform::RawConnection {
public:
  explicit SpyRawConnection(SpyConnection& owner) : owner_(owner) {}
  int State() const override;
  std::unique_ptr<Recordset> Open(const std::string& sql) override;
  std::unique_ptr<Recordset> OpenCommand(const std::string& sql, const std::vector<platform::TextParameter>& parameters,
                                         int timeoutSeconds) override;

private:
  SpyConnection& owner_;
};

class SpyConnection final : public platform::Connection {
public:
  SpyConnection(std::shared_ptr<Spy> spy, std::shared_ptr<platform::Connection> inner)
      : spy_(std::move(spy)), inner_(std::move(inner)), raw_(*this) {}

  void ConnectionOpen(const std::string& text) override {
    database_ = databaseOf(text);
    note("open");
    inner_->ConnectionOpen(text);
  }
  void ConnectionClose() override {
    note("close");
    inner_->ConnectionClose();
  }
  std::string ConnectionText() const override { return inner_->ConnectionText(); }
  platform::RawConnection& RawConnection() override { return raw_; }
  void BeginTrans() override {
    note("begin");
    inner_->BeginTrans();
  }
  void CommitTrans() override {
    note("commit");
    inner_->CommitTrans();
  }
  void RollbackTrans() override {
    note("rollback");
    inner_->RollbackTrans();
  }
  std::int64_t ExecuteSql(const std::string& sql) override {
    note(sql);
    return inner_->ExecuteSql(sql);
  }
  std::unique_ptr<Recordset> OpenRecordset(const std::string& sql, int options,
                                           platform::CursorLocation location) override {
    note(sql);
    return inner_->OpenRecordset(sql, options, location);
  }

  // Remembers the statement, and fails it when it is the one that shall fail.
  void note(const std::string& text, bool raw = false) {
    spy_->statements.push_back({database_, text, raw});
    if (spy_->failAt.empty() || text.find(spy_->failAt) == std::string::npos) return;
    spy_->failAt.clear();
    throw RunTimeError(platform::ServerFailure{50000, 16, 1, "failure to order", text});
  }
  platform::RawConnection& innerRaw() { return inner_->RawConnection(); }

private:
  std::shared_ptr<Spy> spy_;
  std::shared_ptr<platform::Connection> inner_;
  SpyRawConnection raw_;
  std::string database_;
};

int SpyRawConnection::State() const {
  return owner_.innerRaw().State();
}
std::unique_ptr<Recordset> SpyRawConnection::Open(const std::string& sql) {
  owner_.note(sql, true);
  return owner_.innerRaw().Open(sql);
}
std::unique_ptr<Recordset> SpyRawConnection::OpenCommand(const std::string& sql,
                                                         const std::vector<platform::TextParameter>& parameters,
                                                         int timeoutSeconds) {
  owner_.note(sql, true);
  return owner_.innerRaw().OpenCommand(sql, parameters, timeoutSeconds);
}

}  // namespace

std::shared_ptr<platform::Connection> spyConnection(std::shared_ptr<Spy> spy,
                                                    std::shared_ptr<platform::Connection> inner) {
  return std::make_shared<SpyConnection>(std::move(spy), std::move(inner));
}

}  // namespace gljz::test
