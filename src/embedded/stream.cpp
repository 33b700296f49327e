#include "embedded/stream.h"

#include <algorithm>
#include <utility>

namespace embedded {

using tsql::SqlError;

namespace {

// Whether a selection that is run a second time gives the same rows in the same order.
bool givesTheSameAgain(const std::string& sql) {
  return sql.find("ts_newid(") == std::string::npos && sql.find("ts_getdate(") == std::string::npos;
}

}  // namespace

Stream::Stream(Session::Impl& session, const std::string& statement) : session_(session) {
  try {
    open(statement);
  } catch (const StalePlan&) {
    // Another session has changed a definition since it was read.
    for (auto& entry : session.attached) entry.second.catalog.reset();
    ++session.catalogEpoch;
    try {
      open(statement);
    } catch (const StalePlan&) {
      throw SqlError(50000, "The cursor cannot be opened: its tables changed while it was prepared.");
    }
  }
}

void Stream::open(const std::string& statement) {
  Session::Impl& session = session_;
  values_.clear();
  // A first try that broke off may have read rows already.
  drained_ = {};
  ended_ = false;
  const auto tokens = tsql::lex(statement);
  const auto tree = tsql::parse(tokens);
  if (tree.statements.size() != 1 || tree.statements[0]->kind != tsql::ast::StatementKind::select)
    throw SqlError(16937, "A server cursor is opened on a single SELECT statement.");
  session.context.failure.reset();
  session.context.statementTime.reset();
  if (!session.begun) session.catalogsStale = true;
  session.leaveDropped();
  session.refreshCatalogs();
  const auto plan = session.makePlan(
      tsql::bindSelect(*static_cast<const tsql::ast::SelectStatement&>(*tree.statements[0]).select, tokens, session),
      0);
  shape_ = plan->shape;
  hiddenRow_ = plan->hiddenRow;
  source_.shape = shape_;
  if (hiddenRow_) {
    source_.table = plan->table;
    source_.catalog = session.sharedCatalog(*plan->table);
  }
  const std::vector<platform::Value> none;
  const Running r{&tokens, nullptr, nullptr, &none, nullptr};
  for (const auto& slot : plan->slots) values_.push_back(session.slotValue(slot, r, 0));
  const bool ownConnection = !session.begun && !plan->temporary;
  session.check([&] {
    if (session.begun && !plan->temporary && givesTheSameAgain(plan->sql)) return readAhead(*plan);
    if (!ownConnection || !openReader(*plan)) return spool(plan->sql, values_);
    for (std::size_t i = 0; i < values_.size(); ++i) rows_.bind(static_cast<int>(i) + 1, values_[i]);
  });
}

Stream::~Stream() {
  rows_ = {};
  std::erase(session_.streams, this);
  if (!spoolTable_.empty())
    sqlite3_exec(session_.db.get(), ("DROP TABLE IF EXISTS temp." + spoolTable_).c_str(), nullptr, nullptr, nullptr);
  if (reader_) session_.idleReader = std::move(reader_);
}

// False for a selection that another connection cannot answer: it asks the session itself (object_id and the like), or
// what the session knows of its tables is no longer so.
bool Stream::openReader(const Plan& plan) {
  reader_ = std::move(session_.idleReader);
  const auto standsThere = [&](const auto& catalog) {
    return std::find(reader_->attached.begin(), reader_->attached.end(), catalog) != reader_->attached.end();
  };
  if (reader_ && !std::all_of(plan.catalogs.begin(), plan.catalogs.end(), standsThere)) reader_.reset();
  if (!reader_) {
    reader_ = std::make_unique<Reader>();
    sqlite3* handle = nullptr;
    sqlite3_open_v2(":memory:", &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    reader_->handle.reset(handle);
    sqlite3_extended_result_codes(handle, 1);
    sqlite3_busy_timeout(handle, session_.server->impl().timeout);
    useTextCollationSafely(handle);
    registerFunctions(handle, reader_->context);
    for (const auto& c : plan.catalogs) {
      PreparedStatement s(handle, "ATTACH ? AS ?");
      const tsql::Datum path = session_.server->impl().fileOf(c->name), schema = c->schemaName;
      s.bind(1, path);
      s.bind(2, schema);
      s.step();
    }
    reader_->attached = plan.catalogs;
  }
  reader_->context.failure.reset();
  reader_->context.statementTime.reset();
  reader_->context.now = session_.context.now;
  try {
    rows_ = PreparedStatement(reader_->handle.get(), plan.sql, true);
  } catch (const SqliteFailure& f) {
    reader_.reset();
    if (f.primary() != SQLITE_ERROR) throw;
    return false;
  }
  return true;
}

// The first block; when there is more behind it, the selection is kept until it is known what has to happen with it.
void Stream::readAhead(Plan& plan) {
  rows_ = std::move(plan.prepared);
  for (std::size_t i = 0; i < values_.size(); ++i) rows_.bind(static_cast<int>(i) + 1, values_[i]);
  const std::size_t columns = shape_->columns().size(), most = session_.fetchBlock;
  while (drained_.rows < most) {
    drained_.cells.resize((drained_.rows + 1) * columns);
    drained_.rowNumbers.resize(drained_.rows + 1);
    if (!read(&drained_.cells[drained_.rows * columns], drained_.rowNumbers[drained_.rows])) break;
    ++drained_.rows;
  }
  rows_ = {};
  if (ended_) return;
  unread_ = plan.sql;
  session_.streams.push_back(this);
}

void Stream::beforeWrite() {
  if (unread_.empty()) return;
  try {
    session_.check([&] { spool(std::exchange(unread_, {}), values_); });
  } catch (const SqlError& e) {
    failure_ = e;  // of a row that nobody has asked for: it belongs to the next fetch, not to the statement that writes
  } catch (const StalePlan&) {
    failure_ = SqlError(50000, "The cursor cannot be read on: its tables have changed.");
  }
}

void Stream::spool(const std::string& sql, const std::vector<tsql::Datum>& values) {
  spoolTable_ = "_ts_spool_" + std::to_string(++session_.spools);
  PreparedStatement make(session_.db.get(), "CREATE TABLE temp." + spoolTable_ + " AS " + sql);
  for (std::size_t i = 0; i < values.size(); ++i) make.bind(static_cast<int>(i) + 1, values[i]);
  make.step();
  make = {};
  rows_ =
      PreparedStatement(session_.db.get(), "SELECT * FROM temp." + spoolTable_ + " WHERE rowid>? ORDER BY rowid", true);
  spooled_ = static_cast<std::int64_t>(drained_.rows);
  if (std::find(session_.streams.begin(), session_.streams.end(), this) == session_.streams.end())
    session_.streams.push_back(this);
}

bool Stream::read(platform::Value* row, std::int64_t& rowNumber) {
  if (failure_) throw SqlError(*failure_);
  if (ended_) return false;
  bool more = false;
  try {
    if (!spoolTable_.empty() && !std::exchange(reading_, true)) rows_.bind(1, spooled_);
    more = rows_.step();
  } catch (const SqliteFailure& f) {
    if (reader_ && reader_->context.failure)
      failure_ = reader_->context.failure;
    else
      failure_ = session_.translate(f, nullptr);
    throw SqlError(*failure_);
  }
  if (!more) {
    ended_ = true;
    rows_.reset();
    return false;
  }
  ++spooled_;
  const auto& columns = shape_->columns();
  for (std::size_t i = 0; i < columns.size(); ++i) row[i] = cellValue(rows_, static_cast<int>(i), columns[i].type);
  if (hiddenRow_) rowNumber = rows_.integer(static_cast<int>(columns.size()));
  return true;
}

void Stream::fetch(Block& block) {
  const std::size_t columns = shape_->columns().size(), most = session_.fetchBlock;
  block.cells.resize(most * columns);
  block.rowNumbers.resize(most);
  block.rows = 0;
  for (; block.rows < most && nextDrained_ < drained_.rows; ++block.rows, ++nextDrained_) {
    const auto from = drained_.cells.begin() + static_cast<std::ptrdiff_t>(nextDrained_ * columns);
    std::move(from, from + static_cast<std::ptrdiff_t>(columns),
              block.cells.begin() + static_cast<std::ptrdiff_t>(block.rows * columns));
    block.rowNumbers[block.rows] = drained_.rowNumbers[nextDrained_];
  }
  if (block.rows < most) beforeWrite();
  while (block.rows < most && read(&block.cells[block.rows * columns], block.rowNumbers[block.rows])) ++block.rows;
  pause();
}

// Between two blocks nothing stays open on the session's own connection, where a rollback would break it off.
void Stream::pause() {
  if (spoolTable_.empty()) return;
  rows_.reset();
  reading_ = false;
}

void Stream::drain() {
  const std::size_t columns = shape_->columns().size();
  beforeWrite();
  while (!ended_ && !failure_) {
    drained_.cells.resize((drained_.rows + 1) * columns);
    drained_.rowNumbers.resize(drained_.rows + 1);
    try {
      if (read(&drained_.cells[drained_.rows * columns], drained_.rowNumbers[drained_.rows])) ++drained_.rows;
    } catch (const SqlError&) {  // kept for the fetch that comes to it
    }
  }
  pause();
}

}  // namespace embedded
