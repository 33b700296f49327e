#include "embedded/explain.h"

#include <map>

#include "embedded/session_impl.h"
#include "tsql/bound_printer.h"

namespace embedded {

using tsql::SqlError;
using tsql::ast::StatementKind;

namespace {

class Explainer {
public:
  Explainer(Session::Impl& session, const std::string& batch)
      : session_(session), tokens_(tsql::lex(batch)), tree_(tsql::parse(tokens_)) {}

  std::vector<Explanation> run() {
    session_.context.failure.reset();
    if (!session_.begun) session_.catalogsStale = true;
    session_.refreshCatalogs();
    try {
      statements(tree_.statements);
    } catch (const StalePlan&) {
      throw SqlError(50000, "The batch cannot be explained: its tables changed meanwhile. Try again.");
    }
    return std::move(out_);
  }

private:
  void statements(const std::vector<tsql::ast::StatementPtr>& list) {
    for (const auto& s : list) statement(*s);
  }

  void statement(const tsql::ast::Statement& s) {
    using namespace tsql::ast;
    switch (s.kind) {
      case StatementKind::select: {
        const auto& select = *static_cast<const SelectStatement&>(s).select;
        return bound(s, tsql::bindSelect(select, tokens_, session_), select.into.has_value());
      }
      case StatementKind::insert:
        return bound(s, tsql::bindInsert(static_cast<const Insert&>(s), tokens_, session_, {session_.identityInsert}));
      case StatementKind::update:
        return bound(s, tsql::bindUpdate(static_cast<const Update&>(s), tokens_, session_));
      case StatementKind::delete_:
        return bound(s, tsql::bindDelete(static_cast<const Delete&>(s), tokens_, session_));
      case StatementKind::block:
        return statements(static_cast<const Block&>(s).statements);
      case StatementKind::if_: {
        const auto& i = static_cast<const If&>(s);
        bound(s, tsql::bindCondition(*i.condition, tokens_, session_), false, i.then->firstToken);
        statement(*i.then);
        if (i.otherwise) statement(*i.otherwise);
        return;
      }
      default:
        out_.push_back({spelled(s.firstToken, s.lastToken), {}, {}, {}, {}});
    }
  }

  // end: the first token that does not belong to what is explained; 0 for the statement's own end.
  void bound(const tsql::ast::Statement& s, tsql::BoundStatement b, bool into = false, std::size_t end = 0) {
    Explanation e;
    e.statement = spelled(s.firstToken, end ? end : s.lastToken);
    e.tree = tsql::printBound(b);
    for (const auto& slot : b.slots) e.slots.push_back(tsql::printSlot(slot));
    // The rows of a selection into a new table have no hidden column; the table itself is not there yet.
    e.sql = into ? tsql::emitSelect(*b.select, true) : session_.makePlan(std::move(b), 0)->sql;
    session_.check([&] {
      PreparedStatement plan(session_.db.get(), "EXPLAIN QUERY PLAN " + e.sql);
      std::map<std::int64_t, int> depths;
      while (plan.step()) {
        const auto parent = depths.find(plan.integer(1));
        const int depth = parent == depths.end() ? 0 : parent->second + 1;
        depths[plan.integer(0)] = depth;
        e.steps.push_back({depth, plan.text(3)});
      }
    });
    out_.push_back(std::move(e));
  }

  std::string spelled(std::size_t first, std::size_t last) const {
    const std::size_t begin = tokens_.tokens[first].pos.offset;
    const auto& end = tokens_.tokens[last - 1];
    return tokens_.source.substr(begin, end.pos.offset + end.length - begin);
  }

  Session::Impl& session_;
  tsql::TokenStream tokens_;
  tsql::ast::Batch tree_;
  std::vector<Explanation> out_;
};

}  // namespace

std::vector<Explanation> explain(Session& session, const std::string& batch) {
  return Explainer(session.impl(), batch).run();
}

std::string Session::plan(const std::string& statement) {
  std::string out;
  for (const Explanation& e : explain(*this, statement)) {
    if (e.sql.empty()) throw SqlError(50000, "Only select, insert, update and delete have a plan.");
    out += e.sql + "\n";
    for (const PlanStep& step : e.steps)
      out += std::string(2 + 2 * static_cast<std::size_t>(step.depth), ' ') + step.text + "\n";
  }
  return out;
}

}  // namespace embedded
