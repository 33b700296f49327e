#include "embedded/recordset.h"

#include <algorithm>

#include "platform/row_position.h"

namespace embedded {

using platform::RunTimeError;
using platform::Value;
using tsql::SqlError;

void raise(const SqlError& e, const std::string& statement) {
  platform::ServerFailure f;
  f.number = e.number;
  f.severity = e.severity;
  f.line = e.pos.line;
  f.message = e.what();
  f.statement = statement;
  throw RunTimeError(std::move(f));
}

namespace {

// The first selection's rows go into the capture; what is left for the sink is the failure.
class FirstFailure : public ResultSink {
public:
  void columns(const std::vector<ColumnInfo>&) override {}
  void row(const std::vector<Value>&) override {}
  void endRows(std::int64_t) override {}
  void failure(const SqlError& e) override {
    if (!error) error = e;
  }
  std::optional<SqlError> error;
};

// What both kinds share: the current row, fields by name, new and edited rows.
class Rows : public platform::Recordset {
public:
  Rows(std::shared_ptr<Session> session, std::string sql) : session_(std::move(session)), sql_(std::move(sql)) {}

  bool IsOpen() const override { return open_; }

  std::size_t FieldCount() const override { return shape_->columns().size(); }

  const std::string& FieldName(std::size_t i) const override {
    if (i >= shape_->columns().size()) noField(std::to_string(i));
    return shape_->columns()[i].name;
  }

  Value Field(std::string_view name) const override { return Field(index(name)); }

  Value Field(std::size_t i) const override {
    if (i >= shape_->columns().size()) noField(std::to_string(i));
    if (adding_) return set_[i] ? pending_[i] : Value();
    if (editing_ && set_[i]) return pending_[i];
    return current()[i];
  }

  void AddNew() override {
    needTable();
    adding_ = true;
    editing_ = false;
    pending_.resize(shape_->columns().size());  // values of an earlier row stay, but they do not count: set_ decides
    set_.assign(shape_->columns().size(), 0);
  }

  void SetField(std::string_view name, const Value& v) override { SetField(index(name), v); }

  void SetField(std::size_t i, const Value& v) override {
    if (i >= shape_->columns().size()) noField(std::to_string(i));
    if (!adding_ && !editing_) {
      needTable();
      current();
      editing_ = true;
      pending_.assign(shape_->columns().size(), Value());
      set_.assign(shape_->columns().size(), false);
    }
    if (shape_->baseColumns()[i] < 0)
      throw RunTimeError(RunTimeError::invalidCall,
                         "The field '" + shape_->columns()[i].name + "' is an expression and cannot be set");
    pending_[i] = v;
    set_[i] = 1;
  }

  void Update() override {
    try {
      if (adding_)
        addRow();
      else if (editing_)
        editRow();
    } catch (const SqlError& e) {
      raise(e, sql_);
    } catch (const SqliteFailure& f) {
      raise(session_->impl().translate(f, source_.table), sql_);
    }
    adding_ = editing_ = false;
  }

protected:
  virtual const Value* current() const = 0;  // the cells of the row
  virtual std::int64_t currentRowNumber() const = 0;
  virtual void replaceCurrent(std::size_t column, const Value& v) = 0;

  void needOpen() const {
    if (!open_) throw RunTimeError(RunTimeError::objectClosed, "The result set is closed");
  }
  [[noreturn]] static void noField(const std::string& name) {
    throw RunTimeError(RunTimeError::noSuchField, "The result set has no field '" + name + "'");
  }

  std::size_t index(std::string_view name) const {
    const int i = shape_->find(name);
    if (i < 0) noField(std::string(name));
    return static_cast<std::size_t>(i);
  }

  void leaveRow() {
    needOpen();
    adding_ = editing_ = false;
  }

  void needTable() const {
    needOpen();
    if (!source_.table)
      throw RunTimeError(RunTimeError::invalidCall,
                         "The rows of this selection belong to no single table and cannot be written");
  }

  void addRow() {
    auto& columns = rowColumns_;
    columns.clear();
    for (std::size_t i = 0; i < set_.size(); ++i)
      if (set_[i]) columns.push_back(static_cast<int>(i));
    auto& impl = session_->impl();
    if (!insert_ || insertColumns_ != columns || !impl.stillHolds(*insert_)) {
      std::string names, marks;
      for (const int c : columns) {
        const int base = shape_->baseColumns()[static_cast<std::size_t>(c)];
        names += (names.empty() ? "[" : ",[") + source_.table->columns[static_cast<std::size_t>(base)].name + "]";
        marks += marks.empty() ? "?" : ",?";
      }
      const std::string target = source_.table->temporary
                                     ? source_.table->name
                                     : "[" + source_.table->database + "]..[" + source_.table->name + "]";
      insert_ = impl.rowPlan(columns.empty() ? "insert into " + target + " default values"
                                             : "insert into " + target + "(" + names + ") values(" + marks + ")");
      // The n-th mark takes the value of the n-th column that is set: straight from the pending row.
      for (auto& slot : insert_->slots)
        if (slot.source == tsql::Slot::Source::parameter)
          slot.ordinal = columns[static_cast<std::size_t>(slot.ordinal)];
      insertColumns_ = columns;
    }
    impl.runRowPlan(*insert_, pending_);
  }

  void editRow() {
    auto& impl = session_->impl();
    impl.context.failure.reset();
    std::string sql = "UPDATE " + source_.table->storage + " SET ";
    std::vector<tsql::Datum> values;
    for (std::size_t i = 0; i < set_.size(); ++i) {
      if (!set_[i]) continue;
      const auto& c = source_.table->columns[static_cast<std::size_t>(shape_->baseColumns()[i])];
      tsql::SqlType from;
      auto v = fromValue(pending_[i], from);
      sql += (values.empty() ? "" : ",") + tsql::quoteName(c.name) + "=?";
      values.push_back(tsql::convert(v, from, c.type, 0, tsql::ConvertMode::store));
    }
    if (values.empty()) return;
    values.emplace_back(currentRowNumber());
    PreparedStatement s(impl.db.get(), sql + " WHERE " + source_.table->rowNumber + "=?");
    for (std::size_t i = 0; i < values.size(); ++i) s.bind(static_cast<int>(i) + 1, values[i]);
    impl.beforeWrite();
    s.step();
    for (std::size_t i = 0; i < set_.size(); ++i)
      if (set_[i]) replaceCurrent(i, pending_[i]);
  }

  std::shared_ptr<Session> session_;
  std::string sql_;
  bool open_ = true;
  std::shared_ptr<const RowShape> shape_;
  SelectCapture source_;
  bool adding_ = false, editing_ = false;
  std::vector<Value> pending_;
  std::vector<char> set_;
  std::shared_ptr<Plan> insert_;
  std::vector<int> insertColumns_;
  std::vector<int> rowColumns_;  // kept from row to row for its memory
};

class ClientRows : public Rows {
public:
  ClientRows(std::shared_ptr<Session> session, const std::string& sql, const std::vector<Value>& parameters = {})
      : Rows(std::move(session), sql) {
    FirstFailure first;
    auto& impl = session_->impl();
    struct Restore {
      SelectCapture*& slot;
      ~Restore() { slot = nullptr; }
    } const restore{impl.capture};
    impl.capture = &source_;
    session_->execute(sql, first, parameters);
    if (first.error) raise(*first.error, sql);
    if (!source_.shape) throw RunTimeError(RunTimeError::objectClosed, "The batch gave no result set: " + sql);
    shape_ = source_.shape;
    rows_ = std::move(source_.rows);
  }

  bool Bof() const override {
    needOpen();
    return position_.isBefore() || rows_.size() == 0;
  }
  bool Eof() const override {
    needOpen();
    return position_.isBehind(rows_.size());
  }

  void MoveFirst() override {
    leaveRow();
    position_.toFirst(rows_.size());
  }
  void MoveNext() override {
    leaveRow();
    position_.toNext(rows_.size());
  }
  void MovePrevious() override {
    leaveRow();
    position_.toPrevious(rows_.size());
  }

  void Close() override {
    open_ = false;
    rows_.clear();
    rows_.shrink_to_fit();
    insert_.reset();
  }

protected:
  const Value* current() const override {
    needOpen();
    return rows_[position_.row(rows_.size())].data();
  }
  std::int64_t currentRowNumber() const override { return source_.rowNumbers.at(position_.row(rows_.size())); }
  void replaceCurrent(std::size_t column, const Value& v) override { rows_[position_.row(rows_.size())][column] = v; }

private:
  std::vector<std::vector<Value>> rows_;
  platform::RowPosition position_;
};

class ServerRows : public Rows {
public:
  ServerRows(std::shared_ptr<Session> session, const std::string& sql) : Rows(std::move(session), sql) {
    guarded([&] {
      stream_ = std::make_unique<Stream>(session_->impl(), sql);
      shape_ = stream_->shape();
      source_ = stream_->source();
      fetch();
    });
  }

  bool Bof() const override {
    needOpen();
    return position_.isBefore() || (first_ && block_.rows == 0);
  }
  bool Eof() const override {
    needOpen();
    return position_.isBehind(block_.rows);
  }

  void MoveFirst() override {
    leaveRow();
    if (!first_) reopen();
    position_.toFirst(block_.rows);
  }
  void MoveNext() override {
    leaveRow();
    position_.toNext(block_.rows);
    if (!position_.isBehind(block_.rows)) return;
    guarded([&] { fetch(); });
    first_ = false;
  }
  // Not back into a block that has been left.
  void MovePrevious() override {
    leaveRow();
    if (!first_ && position_.isAtStart()) platform::RowPosition::noRow();
    position_.toPrevious(block_.rows);
  }

  void Close() override {
    open_ = false;
    stream_.reset();
    block_ = {};
    insert_.reset();
  }

protected:
  const Value* current() const override {
    needOpen();
    return &block_.cells[position_.row(block_.rows) * shape_->columns().size()];
  }
  std::int64_t currentRowNumber() const override { return block_.rowNumbers.at(position_.row(block_.rows)); }
  void replaceCurrent(std::size_t column, const Value& v) override {
    block_.cells[position_.row(block_.rows) * shape_->columns().size() + column] = v;
  }

private:
  void fetch() {
    stream_->fetch(block_);
    position_.toStart();
  }
  void reopen() {
    guarded([&] {
      stream_.reset();
      stream_ = std::make_unique<Stream>(session_->impl(), sql_);
      fetch();
      first_ = true;
    });
  }
  template <class F>
  void guarded(F&& f) {
    try {
      f();
    } catch (const SqlError& e) {
      raise(e, sql_);
    } catch (const SqliteFailure& f2) {
      raise(session_->impl().translate(f2, nullptr), sql_);
    }
  }

  std::unique_ptr<Stream> stream_;
  Stream::Block block_;
  platform::RowPosition position_;  // in the block
  bool first_ = true;               // it is the first block
};

}  // namespace

std::unique_ptr<platform::Recordset> openRecordset(std::shared_ptr<Session> session, const std::string& sql,
                                                   platform::CursorLocation location) {
  if (location == platform::CursorLocation::server) return std::make_unique<ServerRows>(std::move(session), sql);
  return std::make_unique<ClientRows>(std::move(session), sql);
}

std::unique_ptr<platform::Recordset> openRecordset(std::shared_ptr<Session> session, const std::string& sql,
                                                   const std::vector<Value>& parameters) {
  return std::make_unique<ClientRows>(std::move(session), sql, parameters);
}

}  // namespace embedded
