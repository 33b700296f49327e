#pragma once
// RowWriter: writes new and edited rows of a result set into the table that it selects from.
//
// Each is one parameterised insert or update. A row is found again by the primary key of the table, else by its
// identity column, else by what the driver calls the best identifier of a row.

#include <memory>
#include <string>
#include <vector>

#include "odbc/columns.h"
#include "odbc/parameters.h"
#include "odbc/selection.h"
#include "platform/value.h"

namespace odbc {

class RowWriter {
public:
  // sql: the batch that the result set comes from. RunTimeError 5 when its rows belong to no single table.
  RowWriter(std::shared_ptr<Link> link, const std::vector<Column>& columns, const std::string& sql);

  // Whether the field shows a column of the table itself.
  bool isColumn(std::size_t field) const { return !names_[field].empty(); }

  // set: which fields of values count.
  void insert(const std::vector<platform::Value>& values, const std::vector<char>& set);
  // current: the row as it was read. RunTimeError 5 when nothing identifies it, or when it is no longer there.
  void update(const std::vector<platform::Value>& values, const std::vector<char>& set, const platform::Value* current);

private:
  void findKey();
  void keyFromCatalog(const std::vector<std::string>& names);
  std::vector<std::string> primaryKey();
  std::vector<std::string> bestIdentifier();
  std::vector<std::string> textsOf(Statement& answer, SQLUSMALLINT column);

  std::shared_ptr<Link> link_;
  const std::vector<Column>& columns_;
  Selection selection_;
  std::vector<std::string> names_;  // of the table's columns by field, empty for an expression

  bool keyKnown_ = false;
  std::vector<std::size_t> key_;  // fields

  // The insert of the last row, prepared: the next one mostly sets the same fields.
  struct Prepared {
    explicit Prepared(std::shared_ptr<Link> link) : statement(std::move(link)), parameters(statement) {}
    Statement statement;
    Parameters parameters;
    std::vector<char> set;
  };
  std::unique_ptr<Prepared> insert_;
};

}  // namespace odbc
