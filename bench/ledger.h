#pragma once
// Ledger: two years' databases in a temporary folder, and the run variables as an entry leaves them before the stages.
//
//   Ledger ledger;
//   ledger.fill(ledger.closing, "code", {"iyear", "ccode", ...}, 100000, [](int i, std::vector<Value>& row) {...});
//   ledger.inRun([] { gljz::JzAccSum(); });

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/value.h"

namespace bench {

class Ledger {
public:
  Ledger();
  ~Ledger();
  Ledger(const Ledger&) = delete;
  Ledger& operator=(const Ledger&) = delete;

  const std::string closing = "TqData_900_2005", opening = "TqData_900_2006";

  using Row = std::vector<platform::Value>;
  // Adds `count` rows; `row` gives the values of the columns for row 0, 1, ...
  void fill(const std::string& database, const std::string& table, const std::vector<std::string>& columns, int count,
            const std::function<void(int, Row&)>& row);
  void sql(const std::string& database, const std::string& batch);

  // Runs a stage in a transaction of the new year's connection, as the frame of a run does, and commits.
  void inRun(const std::function<void()>& stage);
  std::int64_t number(const std::string& database, const std::string& query);  // the one cell of a selection
  std::string file(const std::string& name) const;                             // in the folder of the server

private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace bench
