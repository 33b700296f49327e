#include "host/journal_connection.h"

#include <utility>

#include "core/run_state.h"

namespace host {
namespace {

using platform::CursorLocation;
using platform::Recordset;
using platform::Value;

class JournalRecordset final : public Recordset {
public:
  JournalRecordset(std::shared_ptr<Journal> journal, std::unique_ptr<Recordset> inner, Journal::Statement statement,
                   const std::string& sql)
      : journal_(std::move(journal)), inner_(std::move(inner)), statement_(statement) {
    const StatementHead head = statementHead(sql);
    if (!head.temporary) table_.assign(head.table);
    // The new year's own rows are looked at, not carried.
    fetchesData_ = !head.condensed && (statement.role == Role::closingYear || head.qualified);
    if (journal_->tracing()) sql_ = sql;
    if (!inner_->Eof())
      rows_ = 1;
    else
      journal_->selectionWasEmpty(statement_, sql);
  }
  ~JournalRecordset() override { finish(); }

  bool IsOpen() const override { return inner_->IsOpen(); }
  bool Bof() const override { return inner_->Bof(); }
  bool Eof() const override { return inner_->Eof(); }
  std::size_t FieldCount() const override { return inner_->FieldCount(); }
  const std::string& FieldName(std::size_t index) const override { return inner_->FieldName(index); }
  Value Field(std::string_view name) const override { return inner_->Field(name); }
  Value Field(std::size_t index) const override { return inner_->Field(index); }
  void SetField(std::string_view name, const Value& value) override { inner_->SetField(name, value); }
  void SetField(std::size_t index, const Value& value) override { inner_->SetField(index, value); }

  void MoveFirst() override {
    observed("move", [&] { inner_->MoveFirst(); });
  }
  void MoveNext() override {
    observed("move", [&] { inner_->MoveNext(); });
    walked_ = true;
    if (!inner_->Eof()) ++rows_;
  }
  void MovePrevious() override {
    observed("move", [&] { inner_->MovePrevious(); });
  }
  void AddNew() override {
    adding_ = true;
    observed("add", [&] { inner_->AddNew(); });
  }
  void Update() override {
    observed("update", [&] { inner_->Update(); });
    journal_->rowWritten(statement_.stage, table_, std::exchange(adding_, false));
  }
  void Close() override {
    finish();
    inner_->Close();
  }

private:
  template <class Action>
  void observed(const char* operation, const Action& action) {
    try {
      action();
    } catch (const std::exception& e) {
      const std::string& text = sql_.empty() ? table_ : sql_;
      journal_->fail(journal_->begin(statement_.role, operation, text), text, e);
      throw;
    }
  }
  // A result set that nobody walked was a look-up: a name, a total, whether there is any row.
  void finish() {
    if (!std::exchange(finished_, true)) journal_->rowsRead(statement_, sql_, table_, rows_, fetchesData_ && walked_);
  }

  std::shared_ptr<Journal> journal_;
  std::unique_ptr<Recordset> inner_;
  Journal::Statement statement_;
  std::string table_, sql_;
  std::int64_t rows_ = 0;
  bool fetchesData_ = false, walked_ = false, adding_ = false, finished_ = false;
};

class JournalConnection;

class JournalRawConnection final : public platform::RawConnection {
public:
  explicit JournalRawConnection(JournalConnection& owner) : owner_(owner) {}
  int State() const override;
  std::unique_ptr<Recordset> Open(const std::string& sql) override;
  std::unique_ptr<Recordset> OpenCommand(const std::string& sql, const std::vector<platform::TextParameter>& parameters,
                                         int timeoutSeconds) override;

private:
  JournalConnection& owner_;
};

class JournalConnection final : public platform::Connection {
public:
  JournalConnection(std::shared_ptr<Journal> journal, std::shared_ptr<Connection> inner, bool newYear)
      : journal_(std::move(journal)), inner_(std::move(inner)), newYear_(newYear), raw_(*this) {}

  std::string ConnectionText() const override { return inner_->ConnectionText(); }
  platform::RawConnection& RawConnection() override { return raw_; }

  void ConnectionOpen(const std::string& text) override {
    run("connect", text, [&] { inner_->ConnectionOpen(text); });
  }
  void ConnectionClose() override {
    run("disconnect", "", [&] { inner_->ConnectionClose(); });
  }
  void BeginTrans() override {
    run("begin", "", [&] { inner_->BeginTrans(); });
    if (newYear_) journal_->transactionBegun();
  }
  void CommitTrans() override {
    run("commit", "", [&] { inner_->CommitTrans(); });
    if (newYear_) journal_->transactionEnded(true);
  }
  void RollbackTrans() override {
    run("rollback", "", [&] { inner_->RollbackTrans(); });
    if (newYear_) journal_->transactionEnded(false);
  }

  std::int64_t ExecuteSql(const std::string& sql) override {
    const Journal::Statement statement = journal_->begin(role(), "execute", sql);
    try {
      const std::int64_t rows = inner_->ExecuteSql(sql);
      journal_->end(statement, sql, rows);
      return rows;
    } catch (const std::exception& e) {
      journal_->fail(statement, sql, e);
      throw;
    }
  }
  std::unique_ptr<Recordset> OpenRecordset(const std::string& sql, int options, CursorLocation location) override {
    return open(sql, [&] { return inner_->OpenRecordset(sql, options, location); });
  }

  template <class Opener>
  std::unique_ptr<Recordset> open(const std::string& sql, const Opener& opener) {
    Journal::Statement statement = journal_->begin(role(), "open", sql);
    try {
      auto rows = opener();
      journal_->opened(statement, sql);
      return std::make_unique<JournalRecordset>(journal_, std::move(rows), statement, sql);
    } catch (const std::exception& e) {
      journal_->fail(statement, sql, e);
      throw;
    }
  }
  Connection& inner() { return *inner_; }

private:
  Role role() const {
    if (newYear_) return Role::newYear;
    return gljz::run.m_conn.get() == this ? Role::closingYear : Role::privateConnection;
  }
  template <class Action>
  void run(const char* operation, std::string_view text, const Action& action) {
    const Journal::Statement statement = journal_->begin(role(), operation, text);
    try {
      action();
      journal_->end(statement, text, -1);
    } catch (const std::exception& e) {
      journal_->fail(statement, text, e);
      throw;
    }
  }

  std::shared_ptr<Journal> journal_;
  std::shared_ptr<Connection> inner_;
  bool newYear_;
  JournalRawConnection raw_;
};

int JournalRawConnection::State() const {
  return owner_.inner().RawConnection().State();
}
std::unique_ptr<Recordset> JournalRawConnection::Open(const std::string& sql) {
  return owner_.open(sql, [&] { return owner_.inner().RawConnection().Open(sql); });
}
std::unique_ptr<Recordset> JournalRawConnection::OpenCommand(const std::string& sql,
                                                             const std::vector<platform::TextParameter>& parameters,
                                                             int timeoutSeconds) {
  return owner_.open(sql, [&] { return owner_.inner().RawConnection().OpenCommand(sql, parameters, timeoutSeconds); });
}

}  // namespace

std::shared_ptr<platform::Connection> journalConnection(std::shared_ptr<Journal> journal,
                                                        std::shared_ptr<platform::Connection> inner, bool newYear) {
  return std::make_shared<JournalConnection>(std::move(journal), std::move(inner), newYear);
}

}  // namespace host
