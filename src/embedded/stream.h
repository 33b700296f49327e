#pragma once
// Stream: the rows of one selection, fetched in blocks as they are walked, with constant memory.
//
// Outside a transaction that has written, the selection runs on a connection of its own and sees the databases as they
// were when it began, whatever is written meanwhile. Inside such a transaction its first block is read at once; before
// the transaction writes again, or when more is asked for, all rows go into a table of SQLite's temporary file, so that
// what is written later does not show in them either.

#include <memory>
#include <optional>
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
  // Takes the remaining rows into memory, so that the connection is free. A row that fails is left to the fetch that
  // comes to it.
  void drain();
  // The connection's transaction is about to write: the rows that are left must not see it. The same for failures.
  void beforeWrite();
  const SelectCapture& source() const { return source_; }

private:
  void open(const std::string& statement);
  bool openReader(const Plan& plan);
  void readAhead(Plan& plan);
  void spool(const std::string& sql, const std::vector<tsql::Datum>& values);
  bool read(platform::Value* row, std::int64_t& rowNumber);
  void pause();

  Session::Impl& session_;
  std::unique_ptr<Reader> reader_;  // null: the session's own connection reads
  std::string unread_;              // the selection, when only its first block has been read
  std::string spoolTable_;
  std::int64_t spooled_ = 0;               // the row of that table that was read last
  bool reading_ = false;                   // of that table, a block
  std::optional<tsql::SqlError> failure_;  // of a row further down
  PreparedStatement rows_;
  std::vector<tsql::Datum> values_;
  std::shared_ptr<const RowShape> shape_;
  SelectCapture source_;
  bool hiddenRow_ = false, ended_ = false;
  Block drained_;
  std::size_t nextDrained_ = 0;
};

}  // namespace embedded
