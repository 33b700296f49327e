#include "embedded/stream.h"

#include <algorithm>

namespace embedded {

using tsql::SqlError;

Stream::Stream(Session::Impl& session, const std::string& statement) : session_(session) {
  const auto tokens = tsql::lex(statement);
  const auto tree = tsql::parse(tokens);
  if (tree.statements.size() != 1 || tree.statements[0]->kind != tsql::ast::StatementKind::select)
    throw SqlError(16937, "A server cursor is opened on a single SELECT statement.");
  session.context.failure.reset();
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
  const Running r{&tokens, nullptr, nullptr, &none, nullptr, false};
  for (const auto& slot : plan->slots) values_.push_back(session.slotValue(slot, r, 0));
  const bool ownConnection = !session.begun && !plan->temporary;
  session.check([&] {
    if (ownConnection) {
      openReader(*plan);
      rows_ = PreparedStatement(reader_.get(), plan->sql, true);
      for (std::size_t i = 0; i < values_.size(); ++i) rows_.bind(static_cast<int>(i) + 1, values_[i]);
    } else {
      spool(plan->sql, values_);
    }
  });
}

Stream::~Stream() {
  rows_ = {};
  if (!spoolTable_.empty()) {
    std::erase(session_.streams, this);
    sqlite3_exec(session_.db.get(), ("DROP TABLE IF EXISTS temp." + spoolTable_).c_str(), nullptr, nullptr, nullptr);
  }
}

void Stream::openReader(const Plan& plan) {
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

bool Stream::read(std::vector<platform::Value>& row, std::int64_t& rowNumber) {
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
  row.resize(shape_->columns().size());
  for (std::size_t i = 0; i < row.size(); ++i)
    row[i] = toValue(rows_.column(static_cast<int>(i)), shape_->columns()[i].type);
  if (hiddenRow_) rowNumber = rows_.integer(static_cast<int>(row.size()));
  return true;
}

std::vector<std::vector<platform::Value>> Stream::fetch() {
  std::vector<std::vector<platform::Value>> block;
  rowNumbers_.clear();
  while (block.size() < session_.fetchBlock && nextDrained_ < drained_.size()) {
    block.push_back(std::move(drained_[nextDrained_]));
    rowNumbers_.push_back(drainedNumbers_[nextDrained_++]);
  }
  while (block.size() < session_.fetchBlock) {
    std::vector<platform::Value> row;
    std::int64_t number = 0;
    if (!read(row, number)) break;
    block.push_back(std::move(row));
    rowNumbers_.push_back(number);
  }
  return block;
}

void Stream::drain() {
  std::vector<platform::Value> row;
  std::int64_t number = 0;
  while (read(row, number)) {
    drained_.push_back(row);
    drainedNumbers_.push_back(number);
  }
}

}  // namespace embedded
