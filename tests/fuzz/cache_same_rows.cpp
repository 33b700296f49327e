// A batch answers the same with the statement cache on and off, also when it comes again and when it comes with other
// literals in it.

#include <sqlite3.h>

#include <filesystem>
#include <random>
#include <vector>

#include "embedded/server.h"
#include "embedded/session_impl.h"
#include "fuzz/fuzz.h"
#include "tsql/parser.h"

namespace {

using tsql::ast::StatementKind;

constexpr const char* setup[] = {
    "create table a (k int not null, p nvarchar(10) null, q varchar(10) null, m money null, n int null, d datetime "
    "null)",
    "create table b (k int not null, p nvarchar(10) null, m money null, d datetime null, f float null, c decimal(10,2) "
    "null, "
    "constraint pk_b primary key(k))",
    "insert into a values(1,N'x','x',1.5,7,'2006-01-01') insert into a values(2,N'X ','y',-2,null,null) "
    "insert into a values(3,N'中','',null,0,'2005-12-31') insert into a values(10,null,null,100.0001,5,'2006-02-28')",
    "insert into b values(1,N'x',1,'2006-01-01',1.5,0.25) insert into b values(2,N'中文',null,null,-3,null) insert "
    "into b "
    "values(3,N'',2.5,'2005-12-31',null,99.99)",
    "create index ix_a on a(p,k)",
};

// Everything that came from a batch, in order.
class Record : public embedded::ResultSink {
public:
  void columns(const std::vector<embedded::ColumnInfo>& c) override {
    text += "columns";
    for (const auto& i : c) text += " [" + i.name + " " + typeName(i.type) + "]";
    text += '\n';
  }
  // A statement of a known form keeps the whole digits of the first number that stood there, 0.5 or 21.5, for the
  // column that shows it; no value depends on them.
  static std::string typeName(const tsql::SqlType& type) {
    return type.kind == tsql::TypeKind::decimal ? "decimal(*," + std::to_string(type.scale) + ")" : type.name();
  }
  // Bytes have no text of their own.
  static std::string spelled(const platform::Value& v) {
    if (v.kind() != platform::Value::Kind::bytes) return v.displayText();
    std::string numbers;
    for (const auto byte : v.asBytes()) numbers += std::to_string(byte) + " ";
    return numbers;
  }
  void row(const std::vector<platform::Value>& r) override {
    for (const auto& v : r) text += v.isNull() ? "Null|" : "'" + spelled(v) + "'|";
    text += '\n';
  }
  void endRows(std::int64_t n) override { text += std::to_string(n) + " rows\n"; }
  void affected(std::int64_t n) override { text += std::to_string(n) + " affected\n"; }
  void failure(const tsql::SqlError& e) override {
    text += std::to_string(e.number) + " " + e.what() + " line " + std::to_string(e.pos.line) + '\n';
    interrupted = interrupted || e.number == 3621;
  }
  void message(const std::string& m) override { text += "message " + m + '\n'; }
  std::string text;
  bool interrupted = false;
};

class Side {
public:
  explicit Side(bool cache) {
    folder_ = std::filesystem::temp_directory_path() / ("gljz-fuzz-" + std::to_string(std::random_device()()));
    std::filesystem::create_directories(folder_);
    server_ = embedded::Server::open(folder_.string());
    server_->setClock([] { return std::int64_t{38716} * 300 * 86400; });  // 2006-01-01
    embedded::Session first(server_, "");
    Record made;
    first.execute("create database d", made);
    session_ = std::make_unique<embedded::Session>(server_, "d");
    session_->setStatementCache(cache);
    for (const char* batch : setup) session_->execute(batch, made);
    if (made.text.find(" line ") != std::string::npos) fuzz::fail("the tables can be made", made.text);
  }
  ~Side() {
    session_.reset();
    server_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  Side(const Side&) = delete;
  Side& operator=(const Side&) = delete;

  // Runs the batches in one transaction, which is undone at the end.
  Record run(const std::vector<std::string>& batches) {
    Record record;
    sqlite3* db = session_->impl().db.get();
    for (const std::string& batch : batches) {
      if (!session_->inTransaction()) session_->impl().beginTransaction();
      // A join of everything with everything ends here, and such an input is not compared.
      steps_ = 0;
      sqlite3_progress_handler(
          db, 1000, [](void* self) { return static_cast<int>(++static_cast<Side*>(self)->steps_ > 2000); }, this);
      session_->execute(batch, record);
      sqlite3_progress_handler(db, 0, nullptr, nullptr);
      record.interrupted = record.interrupted || steps_ > 2000;
      if (record.interrupted) break;
      record.text += "--\n";
    }
    if (session_->inTransaction()) session_->impl().rollback();
    return record;
  }

private:
  std::filesystem::path folder_;
  std::shared_ptr<embedded::Server> server_;
  std::unique_ptr<embedded::Session> session_;
  int steps_ = 0;
};

// Only what leaves definitions, transactions and the session's own state alone: the next input finds the same tables.
bool changesRowsOnly(const std::vector<tsql::ast::StatementPtr>& statements) {
  for (const auto& s : statements) {
    switch (s->kind) {
      case StatementKind::select:
        if (static_cast<const tsql::ast::SelectStatement&>(*s).select->into) return false;
        break;
      case StatementKind::insert:
      case StatementKind::update:
      case StatementKind::delete_:
      case StatementKind::print:
        break;
      case StatementKind::block:
        if (!changesRowsOnly(static_cast<const tsql::ast::Block&>(*s).statements)) return false;
        break;
      default:
        return false;
    }
  }
  return true;
}

// The batch with other contents in its literals.
std::string withOtherLiterals(const tsql::TokenStream& tokens) {
  std::string out;
  std::size_t at = 0;
  for (const auto& t : tokens.tokens) {
    if (!t.isLiteral()) continue;
    out.append(tokens.source, at, t.pos.offset - at);
    const std::string raw(t.raw);
    switch (t.kind) {
      case tsql::TokenKind::integer:
        out += raw.size() > 1 ? raw.substr(1) : raw == "1" ? "2" : "1";
        break;
      case tsql::TokenKind::string:
      case tsql::TokenKind::nstring:
        out += (t.kind == tsql::TokenKind::nstring ? "N'" : "'") + std::string(t.text.empty() ? "x" : "") + "'";
        break;
      default:
        out += raw;
    }
    at = t.pos.offset + t.length;
  }
  return out.append(tokens.source, at, std::string::npos);
}

bool contains(const tsql::TokenStream& tokens, std::string_view word) {
  for (const auto& t : tokens.tokens)
    if (tsql::sameName(t.text, word)) return true;
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t longest = 2000;
  if (size > longest) return 0;
  static Side cached(true), plain(false);
  const std::string text = fuzz::textOf(data, size);
  std::string other;
  try {
    const auto tokens = tsql::lex(text);
    if (contains(tokens, "newid") || contains(tokens, "@@servername")) return 0;  // never the same twice
    if (!changesRowsOnly(tsql::parse(tokens).statements)) return 0;
    other = withOtherLiterals(tokens);
  } catch (const tsql::SqlError&) {
    return 0;
  }
  const std::vector<std::string> batches = {text, text, other, text, other};
  const Record a = cached.run(batches), b = plain.run(batches);
  if (a.interrupted || b.interrupted) return 0;
  if (a.text != b.text)
    fuzz::fail("the statement cache does not show", text + "\n== with other literals\n" + other +
                                                        "\n== answers with the cache\n" + a.text +
                                                        "== answers without\n" + b.text);
  return 0;
}
