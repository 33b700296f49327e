#include "host/format_database.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "embedded/sqlite.h"

namespace host {
namespace {

using platform::Recordset;
using platform::RunTimeError;
using platform::Value;

// Work on the file; its failures become the platform's.
template <class Work>
auto translated(const Work& work) -> decltype(work()) {
  try {
    return work();
  } catch (const embedded::SqliteFailure& failure) {
    throw RunTimeError(RunTimeError::serverError, failure.message);
  }
}

std::string quotedName(const std::string& name) {
  std::string out = "\"";
  for (const char c : name) out += c == '"' ? "\"\"" : std::string(1, c);
  return out + "\"";
}

bool isLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || (c >= '0' && c <= '9');
}

// SQLite would take the type word String for a number's. Words of the statement only; the texts that come here hold no
// literals.
std::string withTextColumns(const std::string& sql) {
  std::string out;
  for (std::size_t at = 0; at < sql.size();) {
    if (!isLetter(sql[at])) {
      out += sql[at++];
      continue;
    }
    std::size_t end = at;
    while (end < sql.size() && isLetter(sql[end])) ++end;
    const std::string word = sql.substr(at, end - at);
    out += platform::equalsIgnoreCase(word, "String") ? "text" : word;
    at = end;
  }
  return out;
}

// All rows of a table in memory; changes are written through by row number.
class TableRows final : public Recordset {
public:
  TableRows(sqlite3* db, std::string table) : db_(db), table_(std::move(table)) {
    embedded::PreparedStatement rows(db_, "select rowid, * from " + quotedName(table_) + " order by rowid");
    for (int i = 1; i < rows.columns(); ++i) names_.emplace_back(sqlite3_column_name(rows.get(), i));
    while (rows.step()) {
      Row row{rows.integer(0), {}};
      for (int i = 1; i < rows.columns(); ++i)
        row.cells.push_back(sqlite3_column_type(rows.get(), i) == SQLITE_NULL ? Value() : Value(rows.text(i)));
      rows_.push_back(std::move(row));
    }
  }

  bool IsOpen() const override { return open_; }
  bool Bof() const override { return beforeFirst_ || rows_.empty(); }
  bool Eof() const override { return !beforeFirst_ && at_ >= rows_.size(); }
  std::size_t FieldCount() const override { return names_.size(); }
  const std::string& FieldName(std::size_t index) const override {
    requireField(index);
    return names_[index];
  }
  Value Field(std::string_view name) const override { return Field(indexOf(name)); }
  Value Field(std::size_t index) const override {
    requireField(index);
    requireRow();
    return rows_[at_].cells[index];
  }

  void MoveFirst() override {
    beforeFirst_ = false;
    at_ = 0;
    requireRow();
  }
  void MoveNext() override {
    if (Eof()) requireRow();
    at_ = std::exchange(beforeFirst_, false) ? 0 : at_ + 1;
  }
  void MovePrevious() override {
    if (Bof()) requireRow();
    if (at_ == 0)
      beforeFirst_ = true;
    else
      --at_;
  }

  void AddNew() override {
    adding_ = true;
    edited_.clear();
  }
  void SetField(std::string_view name, const Value& value) override { SetField(indexOf(name), value); }
  void SetField(std::size_t index, const Value& value) override {
    requireField(index);
    if (!adding_) requireRow();
    edited_[index] = value;
  }
  void Update() override {
    translated([&] { std::exchange(adding_, false) ? insert() : change(); });
    edited_.clear();
  }
  void Close() override { open_ = false; }

private:
  struct Row {
    std::int64_t id;
    std::vector<Value> cells;
  };

  std::size_t indexOf(std::string_view name) const {
    for (std::size_t i = 0; i < names_.size(); ++i)
      if (platform::equalsIgnoreCase(names_[i], name)) return i;
    throw RunTimeError(RunTimeError::noSuchField, "There is no field " + std::string(name));
  }
  void requireField(std::size_t index) const {
    if (index >= names_.size())
      throw RunTimeError(RunTimeError::noSuchField, "There is no field " + std::to_string(index));
  }
  void requireRow() const {
    if (!open_ || beforeFirst_ || at_ >= rows_.size())
      throw RunTimeError(RunTimeError::noCurrentRecord, "There is no current record");
  }

  void insert() {
    std::string columns, holes;
    for (const auto& [index, value] : edited_) {
      columns += (columns.empty() ? "" : ",") + quotedName(names_[index]);
      holes += holes.empty() ? "?" : ",?";
    }
    const std::string values = columns.empty() ? " default values" : "(" + columns + ") values(" + holes + ")";
    run("insert into " + quotedName(table_) + values);
    Row row{sqlite3_last_insert_rowid(db_), std::vector<Value>(names_.size())};
    for (const auto& [index, value] : edited_) row.cells[index] = value;
    rows_.push_back(std::move(row));
    at_ = rows_.size() - 1;
    beforeFirst_ = false;
  }
  void change() {
    if (edited_.empty()) return;
    requireRow();
    std::string columns;
    for (const auto& [index, value] : edited_)
      columns += (columns.empty() ? "" : ",") + quotedName(names_[index]) + "=?";
    run("update " + quotedName(table_) + " set " + columns + " where rowid=" + std::to_string(rows_[at_].id));
    for (const auto& [index, value] : edited_) rows_[at_].cells[index] = value;
  }
  void run(const std::string& sql) {
    embedded::PreparedStatement statement(db_, sql);
    std::vector<tsql::Datum> data;
    for (const auto& [index, value] : edited_)
      data.push_back(value.isNull() ? tsql::Datum() : tsql::Datum(value.displayText()));
    for (std::size_t i = 0; i < data.size(); ++i) statement.bind(static_cast<int>(i) + 1, data[i]);
    statement.step();
  }

  sqlite3* db_;
  std::string table_;
  std::vector<std::string> names_;
  std::vector<Row> rows_;
  std::size_t at_ = 0;
  std::map<std::size_t, Value> edited_;
  bool adding_ = false, beforeFirst_ = false, open_ = true;
};

class SqliteFormatDatabase final : public platform::FormatDatabase {
public:
  explicit SqliteFormatDatabase(std::string file) : file_(std::move(file)) {}
  std::string Name() const override { return file_; }
  void Execute(const std::string& sql) override {
    translated([&] { embedded::run(handle(), withTextColumns(sql)); });
  }
  std::unique_ptr<Recordset> OpenTable(const std::string& table) override {
    return translated([&]() -> std::unique_ptr<Recordset> { return std::make_unique<TableRows>(handle(), table); });
  }

private:
  sqlite3* handle() {
    if (!db_) {
      sqlite3* db = nullptr;
      const int rc = sqlite3_open(file_.c_str(), &db);
      db_.reset(db);
      if (rc != SQLITE_OK) {
        const std::string message = db ? sqlite3_errmsg(db) : "out of memory";
        db_.reset();
        throw RunTimeError(RunTimeError::serverError, "format database " + file_ + ": " + message);
      }
    }
    return db_.get();
  }
  std::string file_;
  embedded::DatabaseHandle db_;
};

}  // namespace

std::unique_ptr<platform::FormatDatabase> openFormatDatabase(std::string file) {
  return std::make_unique<SqliteFormatDatabase>(std::move(file));
}

}  // namespace host
