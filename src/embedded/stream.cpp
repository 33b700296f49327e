#include "embedded/stream.h"

#include <algorithm>

namespace embedded {

using tsql::SqlError;

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
  const auto tokens = tsql::lex(statement);
  const auto tree = tsql::parse(tokens);
  if (tree.statements.size() != 1 || tree.statements[0]->kind != tsql::ast::StatementKind::select)
    throw SqlError(16937, "A server cursor is opened on a single SELECT statement.");
  session.context.failure.reset();
  if (!session.begun) session.catalogsStale = true;
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
    if (!ownConnection || !openReader(*plan)) return spool(plan->sql, values_);
    for (std::size_t i = 0; i < values_.size(); ++i) rows_.bind(static_cast<int>(i) + 1, values_[i]);
  });
}

Stream::~Stream() {
  rows_ = {};
  if (!spoolTable_.empty()) {
    std::erase(session_.streams, this);
    sqlite3_exec(session_.db.get(), ("DROP TABLE IF EXISTS temp." + spoolTable_).c_str(), nullptr, nullptr, nullptr);
  }
}

// False for a selection that another connection cannot answer: it asks the session itself (object_id and the like), or
// what the session knows of its tables is no longer so.
bool Stream::openReader(const Plan& plan) {
  sqlite3* handle = nullptr;
  sqlite3_open_v2(":memory:", &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  reader_.reset(handle);
  sqlite3_extended_result_codes(handle, 1);
  sqlite3_busy_timeout(handle, session_.server->impl().timeout);
  useTextCollationSafely(handle);
  context_.now = session_.context.now;
  registerFunctions(handle, context_);
  for (const auto& c : plan.catalogs) {
    PreparedStatement s(handle, "ATTACH ? AS ?");
    const tsql::Datum path = session_.server->impl().fileOf(c->name), schema = c->schemaName;
    s.bind(1, path);
    s.bind(2, schema);
    s.step();
  }
  try {
    rows_ = PreparedStatement(handle, plan.sql, true);
  } catch (const SqliteFailure& f) {
    if (f.primary() != SQLITE_ERROR) throw;
    reader_.reset();
    return false;
  }
  return true;
}

void Stream::spool(const std::string& sql, const std::vector<tsql::Datum>& values) {
  static int number = 0;
  spoolTable_ = "_ts_spool_" + std::to_string(++number);
  PreparedStatement make(session_.db.get(), "CREATE TABLE temp." + spoolTable_ + " AS " + sql);
  for (std::size_t i = 0; i < values.size(); ++i) make.bind(static_cast<int>(i) + 1, values[i]);
  make.step();
  make = {};
  rows_ = PreparedStatement(session_.db.get(), "SELECT * FROM temp." + spoolTable_ + " ORDER BY rowid", true);
  session_.streams.push_back(this);
}

bool Stream::read(platform::Value* row, std::int64_t& rowNumber) {
  if (ended_) return false;
  bool more = false;
  try {
    more = rows_.step();
  } catch (const SqliteFailure& f) {
    if (context_.failure) throw SqlError(*context_.failure);
    throw session_.translate(f, nullptr);
  }
  if (!more) {
    ended_ = true;
    rows_.reset();
    return false;
  }
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
  while (block.rows < most && read(&block.cells[block.rows * columns], block.rowNumbers[block.rows])) ++block.rows;
}

void Stream::drain() {
  const std::size_t columns = shape_->columns().size();
  while (!ended_) {
    drained_.cells.resize((drained_.rows + 1) * columns);
    drained_.rowNumbers.resize(drained_.rows + 1);
    if (read(&drained_.cells[drained_.rows * columns], drained_.rowNumbers[drained_.rows])) ++drained_.rows;
  }
}

}  // namespace embedded
