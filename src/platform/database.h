#pragma once
// Connection and Recordset: what the system asks of a database client.
//
//   auto rs = conn.OpenRecordset("select ccode, me from gl_accsum where iyear=2005", 2);
//   for (; !rs->Eof(); rs->MoveNext()) use(rs->Field("ccode").asText(), rs->Field("me").asMoney());
//
// Threading: a connection and its result sets belong to one thread. Reading a result set while other statements run on
// the same connection is the ordinary case and works on every driver. All failures are RunTimeError; those that the
// server reported carry its number and message and the statement.

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/value.h"

namespace platform {

// client: all rows are in memory when the result set opens. server: rows are fetched as they are walked, memory stays
// constant; walking back is limited to the current block and fails with RunTimeError 3021 beyond it.
enum class CursorLocation { client, server };

class Recordset {
public:
  virtual ~Recordset() = default;
  Recordset() = default;
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  virtual bool IsOpen() const = 0;
  virtual bool Bof() const = 0;
  virtual bool Eof() const = 0;

  virtual std::size_t FieldCount() const = 0;
  virtual const std::string& FieldName(std::size_t index) const = 0;
  // The cell of the current row. A name is found without regard to case; of two equal names the first wins.
  // RunTimeError 3265 for a name or index that is missing, 3021 without a current row.
  virtual Value Field(std::string_view name) const = 0;
  virtual Value Field(std::size_t index) const = 0;

  virtual void MoveFirst() = 0;  // on an empty result set: RunTimeError 3021
  virtual void MoveNext() = 0;   // beyond the end: RunTimeError 3021
  virtual void MovePrevious() = 0;

  // A new row of the table that the result set selects from; SetField fills it, Update writes it. SetField without
  // AddNew edits the current row, and Update writes that. Columns that were not set keep their defaults or contents.
  virtual void AddNew() = 0;
  virtual void SetField(std::string_view name, const Value& value) = 0;
  virtual void SetField(std::size_t index, const Value& value) = 0;
  virtual void Update() = 0;

  virtual void Close() = 0;  // closing twice is harmless
};

// One argument of a command: a text, and the size in characters that it is declared with.
struct TextParameter {
  std::string text;
  int size = 0;
};

// The underlying database connection that a Connection wraps.
class RawConnection {
public:
  static constexpr int open = 1, closed = 0;
  virtual ~RawConnection() = default;
  virtual int State() const = 0;
  virtual std::unique_ptr<Recordset> Open(const std::string& sql) = 0;
  // A statement with ? in place of its arguments, in their order. timeoutSeconds: how long the server may take for it.
  virtual std::unique_ptr<Recordset> OpenCommand(const std::string& sql, const std::vector<TextParameter>& parameters,
                                                 int timeoutSeconds) = 0;
};

class Connection {
public:
  virtual ~Connection() = default;
  Connection() = default;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  virtual void ConnectionOpen(const std::string& text) = 0;
  virtual void ConnectionClose() = 0;
  virtual std::string ConnectionText() const = 0;
  virtual platform::RawConnection& RawConnection() = 0;

  virtual void BeginTrans() = 0;
  virtual void CommitTrans() = 0;
  virtual void RollbackTrans() = 0;

  // A batch of one or more statements. Returns the number of rows that the last data statement changed, -1 when there
  // was none. The first failure is thrown after the statements that the server still ran behind it.
  virtual std::int64_t ExecuteSql(const std::string& sql) = 0;
  // options: the system always passes 2. A batch without a result set is RunTimeError 3704.
  virtual std::unique_ptr<Recordset> OpenRecordset(const std::string& sql, int options,
                                                   CursorLocation location = CursorLocation::client) = 0;
};

}  // namespace platform
