// Batches: parse once per shape, run statement by statement, decide what a failure ends.

#include <algorithm>

#include "embedded/session_impl.h"

namespace embedded {

using tsql::SqlError;
using tsql::TokenKind;
using tsql::TokenStream;
using tsql::ast::StatementKind;

namespace {

// A failed conversion ends the batch and the transaction.
bool endsTransaction(int number) {
  switch (number) {
    case 235:
    case 241:
    case 242:
    case 244:
    case 245:
    case 248:
    case 293:
    case 295:
    case 529:
    case 8114:
    case 8169:
      return true;
    default:
      return false;
  }
}

// Failures after which the batch goes on with its next statement; the others end it.
bool endsStatementOnly(int number) {
  switch (number) {
    case 220:
    case 232:
    case 234:
    case 512:
    case 515:
    case 517:
    case 535:
    case 544:
    case 545:
    case 547:
    case 2601:
    case 2627:
    case 2628:
    case 2714:
    case 2812:
    case 3701:
    case 3902:
    case 3903:
    case 8101:
    case 8115:
    case 8134:
    case 8152:
    case 8146:
    case 8144:
    case 201:
    case 339:
    case 4901:
    case 8143:
    case 8145:
      return true;
    default:
      return false;
  }
}

bool onlyData(const std::vector<tsql::ast::StatementPtr>& statements) {
  return std::all_of(statements.begin(), statements.end(), [](const auto& s) {
    switch (s->kind) {
      case StatementKind::select:
      case StatementKind::insert:
      case StatementKind::update:
      case StatementKind::delete_:
      case StatementKind::beginTransaction:
      case StatementKind::commit:
      case StatementKind::rollback:
        return true;
      case StatementKind::block:
        return onlyData(static_cast<const tsql::ast::Block&>(*s).statements);
      default:
        return false;
    }
  });
}

// More than one statement, or one whose parts are statements or need variables.
bool isCompound(const std::vector<tsql::ast::StatementPtr>& statements) {
  if (statements.size() != 1) return !statements.empty();
  switch (statements[0]->kind) {
    case StatementKind::if_:
    case StatementKind::while_:
    case StatementKind::block:
    case StatementKind::declare:
    case StatementKind::createProcedure:
    case StatementKind::return_:
      return true;
    default:
      return false;
  }
}

// Where the tokens' lines begin. A tree knows the lines of the text that it was made of, and its failures name them.
std::string linesOf(const TokenStream& tokens) {
  std::string lines;
  int line = 1;
  for (std::size_t i = 0; i < tokens.tokens.size(); ++i) {
    const int at = tokens.tokens[i].pos.line;
    if (at == line) continue;
    lines += '\n' + std::to_string(i) + ' ' + std::to_string(at);
    line = at;
  }
  return lines;
}

}  // namespace

Session::Session(std::shared_ptr<Server> server, const std::string& database)
    : impl_(std::make_unique<Impl>(std::move(server))) {
  impl_->open();
  if (!database.empty()) use(database);
}

Session::~Session() = default;

Session::Impl::~Impl() {
  // Statements go before the connection that they belong to.
  forgetPlans();
}

void Session::Impl::forgetPlans() {
  templates.clear();
  batches.clear();
  planSets.clear();
  procedures.clear();
}

SqlError Session::Impl::noSuchDatabase(const std::string& name, tsql::SourcePos pos) {
  return SqlError(911,
                  "Could not locate entry in sysdatabases for database '" + name +
                      "'. No entry found with that name. Make sure that the name is entered correctly.",
                  pos);
}

const std::string& Session::database() const {
  return impl_->current;
}

void Session::use(const std::string& database) {
  const auto* a = impl_->attach(database);
  if (!a) throw Impl::noSuchDatabase(database, {});
  impl_->current = a->name;
  impl_->templates.clear();
}

bool Session::inTransaction() const {
  return impl_->tranCount > 0;
}
void Session::setStatementCache(bool on) {
  impl_->cacheOn = on;
}
void Session::setFetchBlock(std::size_t rows) {
  impl_->fetchBlock = std::max<std::size_t>(1, rows);
}

void Session::execute(const std::string& batch, ResultSink& sink, const std::vector<platform::Value>& parameters) {
  impl_->execute(batch, sink, parameters);
}

std::shared_ptr<ParsedBatch> Session::Impl::parsed(const TokenStream& tokens, bool& isKnown) {
  std::string key;
  if (cacheOn) {
    key = lowerName(current) + "\n" + tokens.shape() + linesOf(tokens);
    if (const auto it = batches.find(key); it != batches.end())
      for (const auto& known : it->second) {
        // Literals that are part of the tree itself (sizes of types and the like) have to be the same.
        const bool same = std::all_of(known->fixed.begin(), known->fixed.end(), [&](const auto& f) {
          const auto& v = tokens.literals[static_cast<std::size_t>(f.first)];
          return v.type == f.second.type && v.value == f.second.value;
        });
        isKnown = same;
        if (same) return known;
      }
  }
  auto p = std::make_shared<ParsedBatch>();
  p->tree = tsql::parse(tokens);
  p->compound = isCompound(p->tree.statements);
  for (const int ordinal : p->tree.fixedLiterals)
    p->fixed.emplace_back(ordinal, tokens.literals[static_cast<std::size_t>(ordinal)]);
  constexpr std::size_t most = 2000;
  if (cacheOn && onlyData(p->tree.statements)) {
    if (batches.size() >= most) batches.clear();
    if (planSets.size() >= most) planSets.clear();
    auto& variants = batches[key];
    if (variants.size() >= 16) variants.erase(variants.begin());
    variants.push_back(p);
  }
  return p;
}

std::shared_ptr<BatchTemplate> Session::Impl::knownTemplate(std::string_view text) {
  if (!cacheOn) return nullptr;
  for (std::size_t i = 0; i < templates.size(); ++i) {
    if (!templates[i]->match(text)) continue;
    // To the front, but not past its neighbour each time: two forms that alternate would only change places.
    if (i > 1) std::swap(templates[i], templates[i / 2]);
    return templates[i > 1 ? i / 2 : i];
  }
  return nullptr;
}

void Session::Impl::keepTemplate(TokenStream tokens, std::shared_ptr<ParsedBatch> batch) {
  constexpr std::size_t most = 24;
  auto made = std::make_shared<BatchTemplate>(std::move(tokens), std::move(batch));
  if (!made->usable()) return;
  if (templates.size() >= most) templates.pop_back();
  templates.insert(templates.begin() + static_cast<std::ptrdiff_t>(templates.size() / 2), std::move(made));
}

void Session::Impl::execute(const std::string& text, ResultSink& sink, const std::vector<platform::Value>& parameters) {
  context.failure.reset();
  if (!begun) catalogsStale = true;
  Frame variables;
  const FrameInForce inForce(*this, &variables);
  try {
    leaveDropped();
    if (const auto form = knownTemplate(text)) {
      const BatchTemplate::Use use(*form);
      Running r{&form->tokens(), &form->batch(), &sink, &parameters, &variables};
      runBatch(r);
      return;
    }
    TokenStream tokens = tsql::lex(text);
    bool known = false;
    const auto batch = parsed(tokens, known);
    Running r{&tokens, batch.get(), &sink, &parameters, &variables};
    runBatch(r);
    if (known) keepTemplate(std::move(tokens), batch);  // seen before, so it may well come again
  } catch (const SqlError& e) {
    lastError = e.number;
    rowCount = 0;
    sink.failure(e);
  }
}

void Session::Impl::runBatch(Running& r) {
  const auto& statements = r.batch->tree.statements;
  if (r.batch->compound) {
    try {
      compile(statements, r, false);
    } catch (const SqliteFailure& f) {
      throw translate(f, nullptr);
    }
  }
  runStatements(statements, r);
}

void Session::Impl::runStatements(const std::vector<tsql::ast::StatementPtr>& statements, Running& r) {
  for (const auto& s : statements) {
    if (r.ended || r.jump != Running::Jump::none) return;
    runStatement(*s, r);
  }
}

void Session::Impl::runStatement(const tsql::ast::Statement& s, Running& r) {
  context.statementTime.reset();
  try {
    try {
      runOne(s, r);
    } catch (const StalePlan&) {
      for (auto& [name, a] : attached) a.catalog.reset();
      ++catalogEpoch;
      r.batch->plans.clear();
      r.batch->conditions.clear();
      planSets.clear();
      try {
        runOne(s, r);
      } catch (const StalePlan&) {
        throw SqlError(50000, "The statement failed inside the server: its tables changed while it was prepared.",
                       s.pos);
      }
    } catch (const SqliteFailure& f) {
      throw translate(f, nullptr);
    }
  } catch (SqlError& e) {
    if (e.pos.offset == 0 && e.pos.line == 1) e.pos = s.pos;
    afterFailure(e, r);
  }
}

void Session::Impl::afterFailure(const SqlError& e, Running& r) {
  lastError = e.number;
  rowCount = 0;
  r.sink->failure(e);
  if (endsTransaction(e.number) || xactAbort) {
    if (tranCount > 0) rollback();
    r.ended = r.aborted = true;
  } else if (!endsStatementOnly(e.number)) {
    r.ended = true;
  }
}

void Session::Impl::runOne(const tsql::ast::Statement& s, Running& r) {
  using namespace tsql::ast;
  switch (s.kind) {
    case StatementKind::select:
      return select(static_cast<const SelectStatement&>(s), r);
    case StatementKind::insert:
      return insert(static_cast<const Insert&>(s), r);
    case StatementKind::update:
      return update(static_cast<const Update&>(s), r);
    case StatementKind::delete_:
      return delete_(static_cast<const Delete&>(s), r);
    case StatementKind::truncate:
      return truncate(static_cast<const Truncate&>(s), r);
    case StatementKind::execute:
      return executeProcedure(static_cast<const Execute&>(s), r);
    case StatementKind::if_: {
      const auto& i = static_cast<const If&>(s);
      const bool holds = condition(*i.condition, s.firstToken, r);
      rowCount = 0;
      lastError = 0;
      if (holds)
        runStatement(*i.then, r);
      else if (i.otherwise)
        runStatement(*i.otherwise, r);
      return;
    }
    case StatementKind::while_:
      return loop(static_cast<const While&>(s), r);
    case StatementKind::break_:
      r.jump = Running::Jump::break_;
      return;
    case StatementKind::continue_:
      r.jump = Running::Jump::continue_;
      return;
    case StatementKind::block:
      return runStatements(static_cast<const Block&>(s).statements, r);
    case StatementKind::declare:
      return declare(static_cast<const Declare&>(s), r);
    case StatementKind::setVariable:
      return setVariable(static_cast<const SetVariable&>(s), r);
    case StatementKind::raiserror:
      return raiserror(static_cast<const Raiserror&>(s), r);
    case StatementKind::return_:
      if (const auto& value = static_cast<const Return&>(s).value) {
        const auto v = evaluate(*value, tsql::typeOf(tsql::TypeKind::integer), s, r);
        r.returned = v.index() == 1 ? std::get<std::int64_t>(v) : 0;
      }
      r.ended = true;
      return;
    default:
      control(s, r);
      rowCount = 0;
      lastError = 0;
  }
}

// Statements that affect no rows and reset @@rowcount and @@error.
void Session::Impl::control(const tsql::ast::Statement& s, Running& r) {
  using namespace tsql::ast;
  switch (s.kind) {
    case StatementKind::createTable:
      return createTable(static_cast<const CreateTable&>(s));
    case StatementKind::alterTable:
      return alterTable(static_cast<const AlterTable&>(s), r);
    case StatementKind::dropTable:
      return dropTable(static_cast<const DropTable&>(s));
    case StatementKind::createIndex:
      return createIndex(static_cast<const CreateIndex&>(s));
    case StatementKind::dropIndex:
      return dropIndex(static_cast<const DropIndex&>(s));
    case StatementKind::createProcedure:
      return createProcedure(static_cast<const CreateProcedure&>(s), r);
    case StatementKind::dropProcedure:
      return dropProcedure(static_cast<const DropProcedure&>(s));
    case StatementKind::beginTransaction:
      return beginTransaction(static_cast<const BeginTransaction&>(s).name);
    case StatementKind::commit:
      return commit();
    case StatementKind::rollback:
      return rollback(static_cast<const Rollback&>(s).name);
    case StatementKind::saveTransaction:
      return save(static_cast<const SaveTransaction&>(s).name);
    case StatementKind::setOption:
      return setOption(static_cast<const SetOption&>(s));
    case StatementKind::createDatabase:
      return createDatabase(static_cast<const CreateDatabase&>(s));
    case StatementKind::dropDatabase:
      return dropDatabase(static_cast<const DropDatabase&>(s));
    case StatementKind::use: {
      const auto* a = attach(static_cast<const Use&>(s).name);
      if (!a) throw noSuchDatabase(static_cast<const Use&>(s).name, s.pos);
      current = a->name;
      templates.clear();
      return;
    }
    case StatementKind::print: {
      const auto v = evaluate(*static_cast<const Print&>(s).value, tsql::typeOf(tsql::TypeKind::nvarchar, 4000), s, r);
      r.sink->message(v.index() == 3 ? std::get<std::string>(v) : std::string());
      return;
    }
    default:
      return;
  }
}

}  // namespace embedded
