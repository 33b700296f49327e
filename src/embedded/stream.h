#pragma once
// Stream: the rows of one selection, fetched in blocks as they are walked, with constant memory.
//
// Outside a transaction that has written, the selection runs on a connection of its own and sees the databases as they
// were when it began, whatever is written meanwhile. Inside such a transaction its rows first go into a table of
// SQLite's temporary file, so that what the transaction writes later does not show in them either.

#include <memory>
#include <string>
#include <vector>

#include "embedded/session_impl.h"

namespace embedded {

class Stream {
public:
  // statement: one select. Throws tsql::SqlError.
  Stream(Session::Impl& session, const std::string& statement);
  ~Stream();
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  const std::shared_ptr<const RowShape>& shape() const { return shape_; }
  // Rows that were fetched together; its memory serves the next block.
  struct Block {
    std::vector<platform::Value> cells;  // row by row
    std::vector<std::int64_t> rowNumbers;
    std::size_t rows = 0;
  };
  // The next rows, at most a block; none at the end.
  void fetch(Block& block);
  // Takes the remaining rows into memory, so that the connection is free.
  void drain();
  const SelectCapture& source() const { return source_; }

private:
  void open(const std::string& statement);
  bool openReader(const Plan& plan);
  void spool(const std::string& sql, const std::vector<tsql::Datum>& values);
  bool read(platform::Value* row, std::int64_t& rowNumber);

  Session::Impl& session_;
  FunctionContext context_;
  DatabaseHandle reader_;
  std::string spoolTable_;
  PreparedStatement rows_;
  std::vector<tsql::Datum> values_;
  std::shared_ptr<const RowShape> shape_;
  SelectCapture source_;
  bool hiddenRow_ = false, ended_ = false;
  Block drained_;
  std::size_t nextDrained_ = 0;
};

}  // namespace embedded
