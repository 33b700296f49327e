#pragma once
// The session's own state.
//
// A session has one SQLite connection: a memory database with the server's database files attached on first use, and
// its # tables in SQLite's temporary schema. A transaction of the dialect becomes one of SQLite with its first write,
// so that until then every read sees what others have committed.

#include <array>
#include <atomic>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "embedded/batch_template.h"
#include "embedded/catalog_store.h"
#include "embedded/functions.h"
#include "embedded/row_shape.h"
#include "embedded/server.h"
#include "embedded/sqlite.h"
#include "tsql/binder.h"
#include "tsql/emitter.h"
#include "tsql/parser.h"
#include "tsql/token.h"

namespace embedded {

struct IdentityCounter {
  std::mutex mutex;
  std::optional<std::int64_t> last;
};

struct Server::Impl {
  std::string folder;
  int timeout = 5000;
  std::function<std::int64_t()> clock;
  std::mutex mutex;  // guards the map, not the counters
  // The last number given in each table with an identity column, by "db.tableid": numbers are not used twice, not even
  // after a failure or a rollback.
  std::map<std::string, std::shared_ptr<IdentityCounter>> identity;
  // How many databases have been dropped, and which was last by its name (lower case): a session that still has the
  // file of one leaves it. The map is guarded by the mutex.
  std::atomic<std::uint64_t> drops{0};
  std::map<std::string, std::uint64_t> dropped;

  std::string fileOf(const std::string& database) const;
  std::optional<std::string> find(std::string_view database) const;  // the name as spelled
};

// A statement that is bound, emitted and prepared. It holds as long as the catalogs that it was bound against stand,
// and for texts of its shape whose pinned literals are the same.
struct Plan {
  enum class Kind { select, insert, update, delete_ } kind = Kind::select;
  std::string sql;
  std::vector<tsql::Slot> slots;  // literal ordinals count from the statement's first literal
  std::vector<tsql::Pin> pins;
  std::vector<std::shared_ptr<const DatabaseCatalog>> catalogs;
  mutable std::uint64_t checkedAt = 0;  // Impl::catalogEpoch when the catalogs were last found to stand
  std::shared_ptr<const RowShape> shape;
  PreparedStatement prepared;
  const tsql::TableDef* table = nullptr;  // the one that is written, or the only one that is read
  bool hiddenRow = false;                 // a last column holds the row number of `table`
  bool numbered = false;                  // the server gives the identity number
  std::int64_t identity = -1;             // index of the IdentityRef
  int identitySlot = -1;                  // single row: the slot that takes it
  std::string selectionSql;               // an update of key columns the slow way
  bool temporary = false;                 // reads or writes # tables
  std::vector<std::string> writes;        // SQLite schemas
  std::vector<std::pair<std::string, tsql::SqlType>> variables;  // as they were typed when it was bound
};

// A plan met a definition that another session has changed: bind anew and try again.
struct StalePlan {};

struct PlanSet {
  std::vector<std::shared_ptr<Plan>> plans;
};

// A batch of one shape: its tree, and for each statement where its plans are.
struct ParsedBatch {
  tsql::ast::Batch tree;
  std::vector<std::pair<int, tsql::LiteralValue>> fixed;  // literals that are part of the tree
  std::unordered_map<const tsql::ast::Statement*, std::shared_ptr<PlanSet>> plans;
  std::unordered_map<const tsql::ast::Expr*, std::shared_ptr<PlanSet>> conditions;
  // Several statements, or one that holds others: compiled as a whole before it runs.
  bool compound = false;
  std::uint64_t compiledAt = 0;                                     // Impl::catalogEpoch when that was done last
  std::vector<std::pair<std::string, tsql::SqlType>> declarations;  // found by compiling
};

struct Variable {
  tsql::SqlType type;
  tsql::Datum value;
};
using Frame = std::map<std::string, Variable, LessNoCase>;

// A batch as it runs.
struct Running {
  const tsql::TokenStream* tokens = nullptr;
  ParsedBatch* batch = nullptr;
  ResultSink* sink = nullptr;
  const std::vector<platform::Value>* parameters = nullptr;
  Frame* frame = nullptr;
  bool ended = false;    // return, or a failure that ends this batch or procedure
  bool aborted = false;  // a failure that ends the batches around it as well
  enum class Jump { none, break_, continue_ };
  Jump jump = Jump::none;  // on the way out to the loop
  std::int64_t returned = 0;
};

struct ProcedureText {
  std::int64_t id = 0;
  std::shared_ptr<const DatabaseCatalog> catalog;
  tsql::TokenStream tokens;
  ParsedBatch batch;
};

struct IdentityRef {
  std::string key;
  std::shared_ptr<IdentityCounter> counter;
  std::int64_t id = 0;
  std::string schemaName;
  std::int64_t seed = 1, increment = 1;
  std::string typeName;  // of the column, and what it can hold
  std::int64_t lowest = INT64_MIN, highest = INT64_MAX;
  bool read = false;     // the stored number was read in this transaction
  bool pending = false;  // a number was given that is not stored yet
};

class Stream;

// A connection that streams one selection outside the session's own.
struct Reader {
  FunctionContext context;
  DatabaseHandle handle;
  std::vector<std::shared_ptr<const DatabaseCatalog>> attached;  // as they were when they were attached
};

// What the first selection of a batch read, for a result set that can be written through.
struct SelectCapture {
  std::shared_ptr<const RowShape> shape;           // null until there was a selection
  std::shared_ptr<const DatabaseCatalog> catalog;  // keeps `table`
  const tsql::TableDef* table = nullptr;           // null: the rows belong to no single table
  std::vector<std::int64_t> rowNumbers;
  std::vector<std::vector<platform::Value>> rows;
};

struct Session::Impl : tsql::Catalog {
  explicit Impl(std::shared_ptr<Server> s) : server(std::move(s)) {}
  ~Impl() override;

  std::shared_ptr<Server> server;
  FunctionContext context;
  DatabaseHandle db;
  std::string current;  // database, as spelled
  bool cacheOn = true;
  std::size_t fetchBlock = 256;

  // ---- databases (session_catalog.cpp)
  struct Attached {
    std::string name, schemaName;
    std::shared_ptr<const DatabaseCatalog> catalog;
    std::int64_t schemaVersion = -1;
    std::uint64_t used = 0;
    std::uint64_t since = 0;  // Server::Impl::drops when it was attached
  };
  std::map<std::string, Attached, LessNoCase> attached;
  std::shared_ptr<const DatabaseCatalog> temporary;  // the # tables; null until the first one
  std::uint64_t useCounter = 0;
  std::uint64_t catalogEpoch = 1;  // grows when a catalog is read anew or dropped
  bool catalogsStale = true;       // look for changes of others before the next binding

  void open();
  Attached* attach(std::string_view database);  // null when there is no such database
  void prepareAttached(const std::string& name, const std::string& schemaName);
  void detachIdle();
  void detach(const std::string& name);
  void leaveDropped();
  std::uint64_t dropsSeen = 0;
  const DatabaseCatalog* catalogOf(std::string_view database);
  std::shared_ptr<const DatabaseCatalog> sharedCatalog(const tsql::TableDef& t);
  void refreshCatalogs();
  // The catalogs as they stand, kept while a statement changes definitions and still reads the old ones.
  std::vector<std::shared_ptr<const DatabaseCatalog>> currentCatalogs() const;
  void reloadCatalog(const std::string& schemaName);
  void needTemporary();
  const tsql::TableDef* table(const tsql::ast::Name& name) override;
  std::optional<tsql::SqlType> variable(std::string_view name) override;
  std::string currentDatabase() const override { return current; }
  struct ObjectPlace {
    std::string database, schemaName, object;
    bool temporary = false, known = false;  // known: the database is there and the owner is dbo
  };
  ObjectPlace place(const tsql::ast::Name& name);
  [[noreturn]] void noSuchPlace(const tsql::ast::Name& name);
  static tsql::SqlError noSuchDatabase(const std::string& name, tsql::SourcePos pos);
  const tsql::TableDef* tableOfText(std::string_view name);  // "db..t" as object_id takes it; null when unknown
  const tsql::TableDef* tableOfId(std::int64_t id);          // of the current database
  std::optional<std::int64_t> objectId(std::string_view name, std::string_view type);
  void registerSessionFunctions();

  // ---- running (session.cpp)
  void execute(const std::string& batch, ResultSink& sink, const std::vector<platform::Value>& parameters);
  std::shared_ptr<ParsedBatch> parsed(const tsql::TokenStream& tokens, bool& known);
  void forgetPlans();
  void runStatements(const std::vector<tsql::ast::StatementPtr>& statements, Running& r);
  void runStatement(const tsql::ast::Statement& s, Running& r);
  void runBatch(Running& r);
  void runOne(const tsql::ast::Statement& s, Running& r);
  void control(const tsql::ast::Statement& s, Running& r);
  void compile(const std::vector<tsql::ast::StatementPtr>& statements, Running& r, bool procedure);  // compile.cpp
  static tsql::SqlType declaredType(const tsql::ast::TypeName& name, tsql::SourcePos pos);
  void afterFailure(const tsql::SqlError& e, Running& r);
  Frame* frame = nullptr;  // variables in force
  SelectCapture* capture = nullptr;
  std::vector<tsql::Datum> scratch;  // values of the statement that is changing rows
  std::unordered_map<std::string, std::vector<std::shared_ptr<ParsedBatch>>> batches;
  std::unordered_map<std::string, std::shared_ptr<PlanSet>> planSets;
  // Forms of the batches that ran last, the newest first; of the current database.
  std::vector<std::shared_ptr<BatchTemplate>> templates;
  std::shared_ptr<BatchTemplate> knownTemplate(std::string_view text);
  void keepTemplate(tsql::TokenStream tokens, std::shared_ptr<ParsedBatch> batch);
  std::int64_t rowCount = 0;
  int lastError = 0;
  int nesting = 0;

  // ---- plans (plan.cpp)
  std::shared_ptr<PlanSet> planSet(const tsql::ast::Statement& s, const Running& r);
  // The plan of a set that holds for these literals; bound and prepared when there is none yet.
  template <class Bind>
  std::shared_ptr<Plan> plan(PlanSet& set, const Running& r, std::size_t firstToken, Bind&& bind) {
    return planFrom(set, r, literalBase(*r.tokens, firstToken), std::forward<Bind>(bind));
  }
  template <class Bind>
  std::shared_ptr<Plan> plan(PlanSet& set, const Running& r, const tsql::ast::Statement& s, Bind&& bind) {
    return planFrom(set, r, literalBase(*r.tokens, s), std::forward<Bind>(bind));
  }
  template <class Bind>
  std::shared_ptr<Plan> planFrom(PlanSet& set, const Running& r, int base, Bind&& bind) {
    if (cacheOn)
      for (const auto& p : set.plans)
        if (holds(*p, *r.tokens, base)) return p;
    refreshCatalogs();
    return keepPlan(set, makePlan(bind(), base));
  }
  std::shared_ptr<Plan> keepPlan(PlanSet& set, std::shared_ptr<Plan> made);
  std::shared_ptr<Plan> makePlan(tsql::BoundStatement bound, int literalBase);
  bool holds(const Plan& p, const tsql::TokenStream& tokens, int literalBase) const;
  void bindSlots(Plan& p, const Running& r, int literalBase, std::vector<tsql::Datum>& values);
  tsql::Datum slotValue(const tsql::Slot& slot, const Running& r, int literalBase);
  static int literalBase(const tsql::TokenStream& tokens, std::size_t firstToken);
  static int literalBase(const tsql::TokenStream& tokens, const tsql::ast::Statement& s) {
    if (s.firstLiteral < 0) s.firstLiteral = literalBase(tokens, s.firstToken);
    return s.firstLiteral;
  }

  // ---- statements (statements.cpp)
  void select(const tsql::ast::SelectStatement& s, Running& r);
  void selectInto(const tsql::ast::SelectStatement& s, Running& r);
  void insert(const tsql::ast::Insert& s, Running& r);
  void update(const tsql::ast::Update& s, Running& r);
  void delete_(const tsql::ast::Delete& s, Running& r);
  bool condition(const tsql::ast::Expr& e, std::size_t firstToken, Running& r);
  tsql::Datum scalar(const tsql::ast::Expr& e, const tsql::TokenStream& tokens, tsql::SqlType type, Running* r);
  std::int64_t change(Plan& p, const Running& r, int literalBase);  // rows changed
  // A statement that changes rows is running: SQLite may not silently prepare it anew for tables that another session
  // has changed, for it was bound to the old ones.
  bool changing = false;
  bool preparedAnew = false;  // it tried to, and was refused; what SQLite then answers depends on where it was
  std::string_view changingBy = "INSERT";  // the word for messages
  std::int64_t updateKeys(Plan& p, std::vector<tsql::Datum>& values);
  void affected(std::int64_t n, Running& r);
  // The plan of one statement alone, for a caller that runs it again and again with other parameters.
  std::shared_ptr<Plan> rowPlan(const std::string& statement);
  bool stillHolds(const Plan& p) const;
  void runRowPlan(Plan& p, const std::vector<platform::Value>& parameters);

  // ---- conditions, loops, variables, messages, options (control_flow.cpp)
  // type: of the variable that takes the value; kind null: as it comes.
  tsql::Datum evaluate(const tsql::ast::Expr& e, tsql::SqlType type, const tsql::ast::Statement& s, Running& r,
                       tsql::SqlType* resultType = nullptr);
  void declare(const tsql::ast::Declare& s, Running& r);
  void setVariable(const tsql::ast::SetVariable& s, Running& r);
  void assign(const tsql::ast::SelectStatement& s, Running& r);
  void loop(const tsql::ast::While& s, Running& r);
  void raiserror(const tsql::ast::Raiserror& s, Running& r);
  void raised(const tsql::SqlError& e, Running& r);
  void setOption(const tsql::ast::SetOption& s);
  void setIdentityInsert(const tsql::ast::SetOption& s);
  bool xactAbort = false;

  // ---- definitions (ddl.cpp, ddl_alter.cpp, ddl_database.cpp)
  void createTable(const tsql::ast::CreateTable& s);
  void alterTable(const tsql::ast::AlterTable& s, Running& r);
  void dropTable(const tsql::ast::DropTable& s);
  void dropFound(const tsql::TableDef& t);
  // # tables of procedures that have ended.
  void dropTablesOfEnded();
  bool isTaken(const ObjectPlace& p);
  void requireFreeName(const tsql::TableDef& t, const std::string& name, tsql::SourcePos pos);
  std::string storageNameOf(const ObjectPlace& p) const;
  [[noreturn]] static void noSuchTable(const tsql::ast::Name& n, int number);
  void truncate(const tsql::ast::Truncate& s, Running& r);
  void createIndex(const tsql::ast::CreateIndex& s);
  void dropIndex(const tsql::ast::DropIndex& s);
  void createDatabase(const tsql::ast::CreateDatabase& s);
  void dropDatabase(const tsql::ast::DropDatabase& s);
  // fill: puts rows in before the keys are made.
  void makeTable(tsql::TableDef table, const ObjectPlace& p, const std::function<void()>& fill = {});
  // The type that a column is declared with, refused in the words that messages have for columns.
  static tsql::SqlType columnType(const tsql::ast::ColumnDefinition& d, std::size_t position);
  tsql::ColumnDef columnOf(const tsql::ast::ColumnDefinition& d, const std::string& tableName, std::size_t position);
  bool isConstantDefault(const std::string& text, const tsql::SqlType& type, tsql::SourcePos pos);
  std::string columnSql(const tsql::ColumnDef& c, const tsql::TableDef& t);
  void makeKey(const tsql::TableDef& t, tsql::KeyDef& key);
  std::string duplicateOf(const tsql::TableDef& t, const tsql::KeyDef& key);
  void addConstraint(tsql::TableDef& t, const tsql::ast::TableConstraint& c, std::vector<tsql::KeyDef>& keys,
                     std::vector<tsql::CheckDef>& checks);

  // ---- procedures (procedures.cpp)
  void createProcedure(const tsql::ast::CreateProcedure& s, Running& r);
  void dropProcedure(const tsql::ast::DropProcedure& s);
  void executeProcedure(const tsql::ast::Execute& s, Running& r);
  void refuseSystemProcedure(const tsql::ast::Name& name);
  void runProcedure(ProcedureText& procedure, const std::string& database, Running& inner);
  tsql::Datum argument(const tsql::ast::Expr& e, const tsql::SqlType& type, const tsql::ast::Statement& s, Running& r);
  std::map<std::string, std::shared_ptr<ProcedureText>> procedures;  // by "db.id"

  // ---- transactions and identity (transactions.cpp)
  int tranCount = 0;
  bool begun = false;                    // SQLite's transaction has begun
  std::set<std::string> changedSchemas;  // definitions changed inside the transaction
  void beginTransaction(const std::string& name = "");
  void commit();
  void rollback();
  void rollback(const std::string& name);  // to a savepoint, or the whole transaction of that name
  void save(const std::string& name);
  std::string transactionName;  // of the outermost one
  std::vector<std::string> savepoints;
  void definitionsUndone(const std::set<std::string>& schemas);
  std::set<std::string>* definedInside = nullptr;  // schemas whose definitions the work of atomically has changed
  void beforeWrite();
  // Runs `work` so that it happens whole or not at all, inside the open transaction or in one of its own.
  void atomically(const std::function<void()>& work);
  void inSavepoint(const std::function<void()>& work);
  void inTransactionOfItsOwn(const std::function<void()>& work);
  std::int64_t nextIdentity(std::int64_t ref);
  void identityGiven(const tsql::TableDef& t, std::int64_t number);
  void numbersGiven(const tsql::TableDef& t);  // the table was filled: counting goes on behind its last number
  void flushIdentities();
  void forgetIdentities();
  void readIdentity(IdentityRef& ref);
  void restartIdentity(const tsql::TableDef& t);
  std::optional<std::int64_t> currentIdentity(const tsql::TableDef& t);
  std::int64_t identityRef(const tsql::TableDef& t);
  std::vector<IdentityRef> identityRefs;
  std::optional<std::int64_t> lastIdentity, scopeIdentity;
  std::string identityInsert;    // "db.table", lower case
  std::vector<Stream*> streams;  // open streams that read through this connection
  void drainStreams();
  int spools = 0;  // for the names of their tables
  // The reader of the last stream that was closed: opening one costs more than a small selection.
  std::unique_ptr<Reader> idleReader;

  // ---- failures (failures.cpp)
  tsql::SqlError translate(const SqliteFailure& f, const tsql::TableDef* table);
  [[noreturn]] void failed(const SqliteFailure& f, const tsql::TableDef* table);
  // Runs `work`; SQLite's failures leave it in the server's words.
  template <class Work>
  void check(Work&& work, const tsql::TableDef* table = nullptr) {
    try {
      work();
    } catch (const SqliteFailure& f) {
      failed(f, table);
    }
  }
};

// Variables of a batch or procedure, in force while it runs.
class FrameInForce {
public:
  FrameInForce(Session::Impl& session, Frame* frame) : session_(session), outer_(std::exchange(session.frame, frame)) {}
  ~FrameInForce() { session_.frame = outer_; }
  FrameInForce(const FrameInForce&) = delete;
  FrameInForce& operator=(const FrameInForce&) = delete;

private:
  Session::Impl& session_;
  Frame* outer_;
};

// A cell of a result set as the platform's value.
platform::Value toValue(tsql::Datum d, const tsql::SqlType& t);
// The same of the row on which a selection stands; column from 0.
platform::Value cellValue(const PreparedStatement& rows, int column, const tsql::SqlType& t);
tsql::Datum fromValue(const platform::Value& v, tsql::SqlType& type);

}  // namespace embedded
