#pragma once
// Connections of which the n-th call fails.
//
//   auto faults = std::make_shared<Faults>();
//   run.m_conn = faultyConnection(faults, run.m_conn);
//   for (faults->failAt(1); ; ...) ...
//
// One Faults counts the calls of all its connections and their result sets: statements, selections, moves between rows,
// rows and fields written. The call fails before it does anything; the calls behind it work.

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/database.h"

namespace gljz::test {

class Faults {
public:
  // The n-th call from now on fails, counted from 1; 0: none.
  void failAt(int n) {
    calls_ = 0;
    failAt_ = n;
    failed_.clear();
  }
  int calls() const { return calls_; }
  bool happened() const { return !failed_.empty(); }
  const std::string& failed() const { return failed_; }  // the call that failed: a statement or "update", "move", ...

  int serverCursors() const { return serverCursors_; }  // selections that were opened with one
  void cursor(platform::CursorLocation location) { serverCursors_ += location == platform::CursorLocation::server; }

  void call(const std::string& what) {
    if (++calls_ != failAt_) return;
    failed_ = what;
    throw platform::RunTimeError(platform::ServerFailure{50000, 16, 1, "the line is down", what});
  }

private:
  int calls_ = 0, failAt_ = 0, serverCursors_ = 0;
  std::string failed_;
};

namespace fault_injection {

using Rows = std::unique_ptr<platform::Recordset>;
using platform::Value;

class FaultyRecordset final : public platform::Recordset {
public:
  FaultyRecordset(std::shared_ptr<Faults> faults, Rows inner) : faults_(std::move(faults)), inner_(std::move(inner)) {}

  bool IsOpen() const override { return inner_->IsOpen(); }
  bool Bof() const override { return inner_->Bof(); }
  bool Eof() const override { return inner_->Eof(); }
  std::size_t FieldCount() const override { return inner_->FieldCount(); }
  const std::string& FieldName(std::size_t index) const override { return inner_->FieldName(index); }
  Value Field(std::string_view name) const override { return inner_->Field(name); }
  Value Field(std::size_t index) const override { return inner_->Field(index); }
  void MoveFirst() override { faults_->call("move"), inner_->MoveFirst(); }
  void MoveNext() override { faults_->call("move"), inner_->MoveNext(); }
  void MovePrevious() override { faults_->call("move"), inner_->MovePrevious(); }
  void AddNew() override { faults_->call("add"), inner_->AddNew(); }
  void SetField(std::string_view name, const Value& value) override {
    faults_->call("set " + std::string(name));
    inner_->SetField(name, value);
  }
  void SetField(std::size_t index, const Value& value) override {
    faults_->call("set " + inner_->FieldName(index));
    inner_->SetField(index, value);
  }
  void Update() override { faults_->call("update"), inner_->Update(); }
  void Close() override { inner_->Close(); }

private:
  std::shared_ptr<Faults> faults_;
  Rows inner_;
};

class FaultyConnection final : public platform::Connection, private platform::RawConnection {
public:
  FaultyConnection(std::shared_ptr<Faults> faults, std::shared_ptr<platform::Connection> inner)
      : faults_(std::move(faults)), inner_(std::move(inner)) {}

  void ConnectionOpen(const std::string& text) override { inner_->ConnectionOpen(text); }
  void ConnectionClose() override { inner_->ConnectionClose(); }
  std::string ConnectionText() const override { return inner_->ConnectionText(); }
  platform::RawConnection& RawConnection() override { return *this; }
  void BeginTrans() override { inner_->BeginTrans(); }
  void CommitTrans() override { inner_->CommitTrans(); }
  void RollbackTrans() override { inner_->RollbackTrans(); }

  std::int64_t ExecuteSql(const std::string& sql) override {
    faults_->call(sql);
    return inner_->ExecuteSql(sql);
  }
  Rows OpenRecordset(const std::string& sql, int options, platform::CursorLocation location) override {
    faults_->cursor(location);
    return opened(sql, [&] { return inner_->OpenRecordset(sql, options, location); });
  }

private:
  int State() const override { return inner_->RawConnection().State(); }
  Rows Open(const std::string& sql) override {
    return opened(sql, [&] { return inner_->RawConnection().Open(sql); });
  }
  Rows OpenCommand(const std::string& sql, const std::vector<platform::TextParameter>& parameters,
                   int timeoutSeconds) override {
    return opened(sql, [&] { return inner_->RawConnection().OpenCommand(sql, parameters, timeoutSeconds); });
  }

  template <class Opener>
  Rows opened(const std::string& sql, const Opener& opener) {
    faults_->call(sql);
    return std::make_unique<FaultyRecordset>(faults_, opener());
  }

  std::shared_ptr<Faults> faults_;
  std::shared_ptr<platform::Connection> inner_;
};

}  // namespace fault_injection

inline std::shared_ptr<platform::Connection> faultyConnection(std::shared_ptr<Faults> faults,
                                                              std::shared_ptr<platform::Connection> inner) {
  return std::make_shared<fault_injection::FaultyConnection>(std::move(faults), std::move(inner));
}

}  // namespace gljz::test
