#pragma once
// The statements of the carry-forward with real values in their holes.

#include <string>
#include <vector>

namespace golden {

struct SystemStatement {
  std::string stage, name;  // "account_totals", "delete_year"
  std::string text;         // empty when the corpus has no such statement
};

// All statements that the carry-forward can send, stage by stage. The values come from the corpus, which has each
// statement as it is sent.
std::vector<SystemStatement> systemStatements();

}  // namespace golden
