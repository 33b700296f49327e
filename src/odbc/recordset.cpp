#include "odbc/recordset.h"

#include <algorithm>
#include <optional>

#include "odbc/parameters.h"
#include "odbc/row_block.h"
#include "odbc/row_writer.h"
#include "platform/row_position.h"

namespace odbc {

using platform::Recordset;
using platform::RunTimeError;
using platform::Value;

namespace {

// What both kinds share: the current row, fields by name, new and edited rows.
class Rows : public Recordset {
public:
  Rows(std::shared_ptr<Link> link, std::string sql) : link_(std::move(link)), sql_(std::move(sql)) {}

  bool IsOpen() const override { return open_; }
  std::size_t FieldCount() const override { return columns_.size(); }
  const std::string& FieldName(std::size_t i) const override {
    if (i >= columns_.size()) noField(std::to_string(i));
    return columns_[i].name;
  }
  Value Field(std::string_view name) const override { return Field(index(name)); }
  Value Field(std::size_t i) const override {
    if (i >= columns_.size()) noField(std::to_string(i));
    if (adding_) return set_[i] ? pending_[i] : Value();
    if (editing_ && set_[i]) return pending_[i];
    return current()[i];
  }

  void AddNew() override {
    needWriter();
    begin(adding_);
  }
  void SetField(std::string_view name, const Value& v) override { SetField(index(name), v); }
  void SetField(std::size_t i, const Value& v) override {
    if (i >= columns_.size()) noField(std::to_string(i));
    if (!adding_ && !editing_) {
      needWriter();
      current();
      begin(editing_);
    }
    if (!writer_->isColumn(i))
      throw RunTimeError(RunTimeError::invalidCall,
                         "The field '" + columns_[i].name + "' is an expression and cannot be set");
    pending_[i] = v;
    set_[i] = 1;
  }
  void Update() override {
    needOpen();
    if (adding_) {
      writer_->insert(pending_, set_);
    } else if (editing_) {
      Value* row = mutableRow();
      writer_->update(pending_, set_, row);
      for (std::size_t i = 0; i < set_.size(); ++i)
        if (set_[i]) row[i] = pending_[i];
    }
    adding_ = editing_ = false;
  }

  void Close() override {
    open_ = false;
    adding_ = editing_ = false;
    writer_.reset();
    discard();
  }

protected:
  virtual const Value* current() const = 0;  // the cells of the current row; RunTimeError 3021 without one
  virtual void discard() = 0;
  Value* mutableRow() { return const_cast<Value*>(current()); }  // of rows that this object owns

  void describe(Statement& statement) {
    columns_ = describeColumns(statement);
    names_.emplace(columns_);
  }
  void needOpen() const {
    if (!open_) throw RunTimeError(RunTimeError::objectClosed, "The result set is closed");
  }
  [[noreturn]] static void noField(const std::string& name) {
    throw RunTimeError(RunTimeError::noSuchField, "The result set has no field '" + name + "'");
  }
  void leaveRow() {
    needOpen();
    adding_ = editing_ = false;
  }

  std::shared_ptr<Link> link_;
  std::string sql_;
  std::vector<Column> columns_;

private:
  std::size_t index(std::string_view name) const {
    const int i = names_->find(name);
    if (i < 0) noField(std::string(name));
    return static_cast<std::size_t>(i);
  }
  void needWriter() {
    needOpen();
    if (!writer_) writer_ = std::make_unique<RowWriter>(link_, columns_, sql_);
  }
  void begin(bool& which) {
    adding_ = editing_ = false;
    which = true;
    pending_.resize(columns_.size());  // values of an earlier row stay, but they do not count: set_ decides
    set_.assign(columns_.size(), 0);
  }

  bool open_ = true;
  std::optional<ColumnIndex> names_;
  bool adding_ = false, editing_ = false;
  std::vector<Value> pending_;
  std::vector<char> set_;
  std::unique_ptr<RowWriter> writer_;
};

// The statement's next result with rows. The first failure of the batch on the way is thrown at its end.
void toRows(Statement& statement, Statement::Result result) {
  while (result == Statement::Result::count) result = statement.next();
  if (result == Statement::Result::rows) return;
  if (result == Statement::Result::failure) {
    const RunTimeError first = statement.failureOfResult();
    statement.drain();
    throw first;
  }
  throw RunTimeError(RunTimeError::objectClosed, "The batch gave no result set: " + statement.text());
}

class ClientRows final : public Rows {
public:
  ClientRows(const std::shared_ptr<Link>& link, const std::string& sql) : Rows(link, sql) {
    Statement statement(link);
    load(statement, statement.execute(sql));
  }
  ClientRows(const std::shared_ptr<Link>& link, const std::string& sql,
             const std::vector<platform::TextParameter>& parameters, int timeoutSeconds)
      : Rows(link, sql) {
    Statement statement(link);
    if (timeoutSeconds > 0) statement.setTimeout(timeoutSeconds);
    Parameters values(statement);
    for (std::size_t i = 0; i < parameters.size(); ++i) values.setText(i, parameters[i].text, parameters[i].size);
    load(statement, statement.execute(sql));
  }

  bool Bof() const override {
    needOpen();
    return position_.isBefore() || rows_ == 0;
  }
  bool Eof() const override {
    needOpen();
    return position_.isBehind(rows_);
  }

  void MoveFirst() override {
    leaveRow();
    position_.toFirst(rows_);
  }
  void MoveNext() override {
    leaveRow();
    position_.toNext(rows_);
  }
  void MovePrevious() override {
    leaveRow();
    position_.toPrevious(rows_);
  }

protected:
  const Value* current() const override {
    needOpen();
    const std::size_t at = position_.row(rows_);
    return blocks_[at / blockRows_].data() + at % blockRows_ * columns_.size();
  }
  void discard() override {
    blocks_ = {};
    rows_ = 0;
  }

private:
  void load(Statement& statement, Statement::Result result) {
    toRows(statement, result);
    describe(statement);
    {
      RowBlock block(statement, columns_, RowBlock::defaultBytes);
      blockRows_ = block.capacity();
      while (const std::size_t rows = block.fetch()) {
        // A driver may fill a block in part though more is to come: rows are counted, not fetches.
        for (std::size_t r = 0; r < rows; ++r, ++rows_) {
          if (rows_ % blockRows_ == 0) blocks_.emplace_back().reserve((rows - r) * columns_.size());
          block.read(r, blocks_.back());
        }
      }
    }
    if (const auto failure = statement.drain()) throw *failure;
  }
  std::vector<std::vector<Value>> blocks_;  // of blockRows_ rows, cell after cell; the last one may have fewer
  std::size_t blockRows_ = 1, rows_ = 0;
  platform::RowPosition position_;
};

class ServerRows final : public Rows {
public:
  ServerRows(const std::shared_ptr<Link>& link, const std::string& sql) : Rows(link, sql) { open(); }

  bool Bof() const override {
    needOpen();
    return position_.isBefore() || (first_ && rows_ == 0);
  }
  bool Eof() const override {
    needOpen();
    return position_.isBehind(rows_);
  }

  void MoveFirst() override {
    leaveRow();
    if (!first_) {
      discard();
      open();
    }
    position_.toFirst(rows_);
  }
  void MoveNext() override {
    leaveRow();
    position_.toNext(rows_);
    if (!position_.isBehind(rows_)) return;
    fetch();
    first_ = false;
  }
  // Not back into a block that has been left.
  void MovePrevious() override {
    leaveRow();
    if (!first_ && position_.isAtStart()) platform::RowPosition::noRow();
    position_.toPrevious(rows_);
  }

protected:
  const Value* current() const override {
    needOpen();
    return cells_.data() + position_.row(rows_) * columns_.size();
  }
  void discard() override {
    block_.reset();
    statement_.reset();
    cells_ = {};
    rows_ = 0;
  }

private:
  void open() {
    statement_ = std::make_unique<Statement>(link_);
    const bool isStatic = link_->serverCursor() == ServerCursor::staticCursor;
    if (isStatic) {
      statement_->setAttribute(SQL_ATTR_CURSOR_TYPE, SQL_CURSOR_STATIC, "static server cursors");
      statement_->setAttribute(SQL_ATTR_ROW_ARRAY_SIZE, RowBlock::rowsOfServerCursor, "fetching rows in blocks");
    }
    toRows(*statement_, statement_->execute(sql_));
    // A driver may put another cursor in place of the one that was asked for: with this one, the connection would be
    // busy until the last row has been read.
    if (isStatic && statement_->attributeValue(SQL_ATTR_CURSOR_TYPE) == SQL_CURSOR_FORWARD_ONLY)
      throw RunTimeError(
          RunTimeError::invalidCall,
          "The driver has one open result set at a time and gives this selection no server cursor: " + sql_);
    describe(*statement_);
    block_ = std::make_unique<RowBlock>(*statement_, columns_, RowBlock::defaultBytes);
    fetch();
    first_ = true;
  }
  void fetch() {
    cells_.clear();
    rows_ = 0;  // none, should the fetch fail
    position_.toStart();
    rows_ = block_->fetch();
    for (std::size_t r = 0; r < rows_; ++r) block_->read(r, cells_);
  }

  std::unique_ptr<Statement> statement_;
  std::unique_ptr<RowBlock> block_;
  std::vector<Value> cells_;        // of the block
  std::size_t rows_ = 0;            // in the block
  platform::RowPosition position_;  // in the block
  bool first_ = true;               // it is the first block
};

}  // namespace

std::unique_ptr<Recordset> openClientRows(const std::shared_ptr<Link>& link, const std::string& sql) {
  return std::make_unique<ClientRows>(link, sql);
}

std::unique_ptr<Recordset> openCommand(const std::shared_ptr<Link>& link, const std::string& sql,
                                       const std::vector<platform::TextParameter>& parameters, int timeoutSeconds) {
  return std::make_unique<ClientRows>(link, sql, parameters, timeoutSeconds);
}

std::unique_ptr<Recordset> openServerRows(const std::shared_ptr<Link>& link, const std::string& sql) {
  return std::make_unique<ServerRows>(link, sql);
}

}  // namespace odbc
