#include "odbc/row_writer.h"

#include <algorithm>
#include <array>

#include "odbc/text.h"

namespace odbc {

using platform::RunTimeError;
using platform::Value;

RowWriter::RowWriter(std::shared_ptr<Link> link, const std::vector<Column>& columns, const std::string& sql)
    : link_(std::move(link)), columns_(columns) {
  auto selection = selectionOf(sql);
  if (!selection)
    throw RunTimeError(RunTimeError::invalidCall,
                       "The rows of this selection belong to no single table and cannot be written");
  selection_ = std::move(*selection);
  const bool inOrder = !selection_.allColumns && selection_.columns.size() == columns_.size();
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    std::string name = columns_[i].name;
    if (inOrder && !platform::equalsIgnoreCase(selection_.columns[i], name)) name.clear();
    names_.push_back(std::move(name));
  }
}

void RowWriter::insert(const std::vector<Value>& values, const std::vector<char>& set) {
  if (!insert_ || insert_->set != set) {
    std::string names, marks;
    for (std::size_t i = 0; i < set.size(); ++i) {
      if (!set[i]) continue;
      names += (names.empty() ? "" : ",") + link_->quoted(names_[i]);
      marks += marks.empty() ? "?" : ",?";
    }
    insert_ = std::make_unique<Prepared>(link_);
    insert_->statement.prepare(names.empty()
                                   ? "insert into " + selection_.table + " default values"
                                   : "insert into " + selection_.table + "(" + names + ") values(" + marks + ")");
    insert_->set = set;
  }
  std::size_t n = 0;
  for (std::size_t i = 0; i < set.size(); ++i)
    if (set[i]) insert_->parameters.set(n++, values[i], &columns_[i]);
  insert_->statement.changePrepared();
}

void RowWriter::update(const std::vector<Value>& values, const std::vector<char>& set, const Value* current) {
  findKey();
  Prepared statement(link_);
  std::string assignments, condition;
  for (std::size_t i = 0; i < set.size(); ++i)
    if (set[i]) assignments += (assignments.empty() ? "" : ",") + link_->quoted(names_[i]) + "=?";
  if (assignments.empty()) return;
  for (const std::size_t field : key_)
    condition += (condition.empty() ? "" : " and ") + link_->quoted(names_[field]) + "=?";
  statement.statement.prepare("update " + selection_.table + " set " + assignments + " where " + condition);
  std::size_t n = 0;
  for (std::size_t i = 0; i < set.size(); ++i)
    if (set[i]) statement.parameters.set(n++, values[i], &columns_[i]);
  for (const std::size_t field : key_) statement.parameters.set(n++, current[field], &columns_[field]);
  if (statement.statement.changePrepared() == 0)
    throw RunTimeError(RunTimeError::invalidCall, "The row of " + selection_.table +
                                                      " is no longer there: it has been deleted or given another key "
                                                      "since it was read");
}

void RowWriter::findKey() {
  if (!keyKnown_) {
    keyFromCatalog(primaryKey());
    if (key_.empty())
      for (std::size_t i = 0; i < columns_.size(); ++i)
        if (columns_[i].identity && isColumn(i)) key_ = {i};
    if (key_.empty()) keyFromCatalog(bestIdentifier());
    keyKnown_ = true;
  }
  if (key_.empty())
    throw RunTimeError(RunTimeError::invalidCall,
                       "The current row of " + selection_.table +
                           " cannot be written: the selection has neither the primary key nor an identity column");
}

// A key counts only when the selection has all of its columns.
void RowWriter::keyFromCatalog(const std::vector<std::string>& names) {
  std::vector<std::size_t> fields;
  for (const std::string& name : names) {
    const auto field = std::find_if(names_.begin(), names_.end(),
                                    [&](const std::string& known) { return platform::equalsIgnoreCase(known, name); });
    if (field == names_.end()) return;
    fields.push_back(static_cast<std::size_t>(field - names_.begin()));
  }
  key_ = std::move(fields);
}

namespace {

// The last parts of a name are table, owner, database; a part that is not there is a null argument.
struct CatalogName {
  explicit CatalogName(const std::vector<std::string>& parts) {
    for (std::size_t i = 0; i < parts.size() && i < text.size(); ++i) text[i] = toUtf16(parts[parts.size() - 1 - i]);
  }
  SQLWCHAR* pointer(std::size_t i) const { return text[i].empty() ? nullptr : wide(text[i].data()); }
  SQLSMALLINT length(std::size_t i) const { return static_cast<SQLSMALLINT>(text[i].size()); }
  std::array<std::u16string, 3> text;
};
constexpr std::size_t tableName = 0, ownerName = 1, databaseName = 2;

}  // namespace

std::vector<std::string> RowWriter::primaryKey() {
  constexpr SQLUSMALLINT columnName = 4;
  const CatalogName name(selection_.parts);
  Statement answer(link_);
  const SQLRETURN result =
      SQLPrimaryKeysW(answer.handle(), name.pointer(databaseName), name.length(databaseName), name.pointer(ownerName),
                      name.length(ownerName), name.pointer(tableName), name.length(tableName));
  if (!SQL_SUCCEEDED(result)) return {};  // a driver without this part of the catalog; the other ways remain
  return textsOf(answer, columnName);
}

std::vector<std::string> RowWriter::bestIdentifier() {
  constexpr SQLUSMALLINT columnName = 2;
  const CatalogName name(selection_.parts);
  Statement answer(link_);
  const SQLRETURN result = SQLSpecialColumnsW(
      answer.handle(), SQL_BEST_ROWID, name.pointer(databaseName), name.length(databaseName), name.pointer(ownerName),
      name.length(ownerName), name.pointer(tableName), name.length(tableName), SQL_SCOPE_SESSION, SQL_NO_NULLS);
  if (!SQL_SUCCEEDED(result)) return {};
  return textsOf(answer, columnName);
}

std::vector<std::string> RowWriter::textsOf(Statement& answer, SQLUSMALLINT column) {
  std::vector<std::string> texts;
  std::array<char16_t, 256> text{};
  while (SQL_SUCCEEDED(SQLFetch(answer.handle()))) {
    SQLLEN bytes = 0;
    answer.check(SQLGetData(answer.handle(), column, SQL_C_WCHAR, text.data(), sizeof text, &bytes));
    if (bytes > 0)
      texts.push_back(toUtf8({text.data(), std::min(text.size() - 1, static_cast<std::size_t>(bytes) / 2)}));
  }
  return texts;
}

}  // namespace odbc
