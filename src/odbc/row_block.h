#pragma once
// RowBlock: the rows of a result set, fetched many at a time into arrays that the driver fills.
//
//   RowBlock block(statement, columns, RowBlock::defaultBytes);
//   while (const std::size_t rows = block.fetch())
//     for (std::size_t r = 0; r < rows; ++r) block.read(r, cells);
//
// A result set with a column of unlimited size is fetched row by row: such values come in pieces, and drivers give
// pieces of the current row only.

#include <cstddef>
#include <memory>
#include <vector>

#include "odbc/columns.h"
#include "platform/value.h"

namespace odbc {

class RowBlock {
public:
  static constexpr std::size_t defaultBytes = 512 * 1024;

  // Statement and columns have to outlive the block. bytes: what the arrays may take, at least one row.
  RowBlock(Statement& statement, const std::vector<Column>& columns, std::size_t bytes);
  ~RowBlock();
  RowBlock(const RowBlock&) = delete;
  RowBlock& operator=(const RowBlock&) = delete;

  // For a cursor whose block size has to be known before the statement runs.
  static constexpr std::size_t rowsOfServerCursor = 256;

  std::size_t capacity() const { return capacity_; }  // rows that a fetch gives at the most
  std::size_t fetch();                                // rows that are in the block now, 0 behind the last one
  // Appends the cells of a row. RunTimeError 6 for a cell that is longer than its column was declared.
  void read(std::size_t row, std::vector<platform::Value>& cells);

private:
  struct Bound {
    SQLSMALLINT cType = 0;
    std::size_t width = 0;  // bytes of a cell
    std::unique_ptr<unsigned char[]> data;
    std::unique_ptr<SQLLEN[]> sizes;
  };
  void bind(SQLUSMALLINT number, const Column& column);
  void checkRows();
  static void addCell(std::vector<platform::Value>& cells, const Column& column, const Bound& bound, std::size_t row);
  void addPieces(SQLUSMALLINT number, const Column& column);  // of the current row, to unbound_

  Statement& statement_;
  const std::vector<Column>& columns_;
  std::vector<Bound> bound_;  // as many as come before the first long column
  std::size_t capacity_ = 1;
  SQLULEN fetched_ = 0;
  std::vector<SQLUSMALLINT> states_;
  std::vector<platform::Value> unbound_;
};

}  // namespace odbc
