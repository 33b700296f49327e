#pragma once
// Explain: what becomes of a batch on its way to SQLite, without running it.
//
//   for (const Explanation& e : explain(session, "select * from code where iyear=2005")) show(e.sql);

#include <string>
#include <vector>

#include "embedded/server.h"

namespace embedded {

struct PlanStep {
  int depth = 0;     // 0 for the outermost
  std::string text;  // SQLite's own wording: "SEARCH s0 USING INDEX ..."
};

struct Explanation {
  std::string statement;           // as spelled in the batch; of an if its condition
  std::string tree;                // the typed tree (see tsql/bound_printer.h); empty for a statement without a plan
  std::string sql;                 // what SQLite gets
  std::vector<std::string> slots;  // parameter ?1, ?2, ... of the text, in words
  std::vector<PlanStep> steps;     // the query plan
};

// The batch's statements in order, those in blocks and branches included. A statement that is no select, insert, update
// or delete has no plan. All names have to exist already: a table that the batch itself makes is not found.
// Throws tsql::SqlError as execute would report it.
std::vector<Explanation> explain(Session& session, const std::string& batch);

}  // namespace embedded
