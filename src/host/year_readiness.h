#pragma once
// Which account sets a server has, and whether one of their years is ready to be carried forward, in plain words before
// anything runs.
//
//   auto connection = openSystem(server, address);
//   for (const AccountSet& set : accountSets(*connection)) offer(set.account, set.name, set.years());
//   yearReadiness(*connection, {"001", 2005, 2006}, Messages("en-US"));

#include <string>
#include <vector>

#include "host/database_server.h"
#include "host/messages.h"
#include "platform/database.h"

namespace host {

struct ServerAddress;

struct AccountSet {
  struct Span {
    int beginYear = 0, endYear = 0;
    std::string database;
  };
  std::string account, name;  // the name may be unknown
  std::vector<Span> spans;    // in the order of their years

  std::vector<int> years() const;
  std::string databaseOf(int year) const;  // empty when no span begins so early
};

// A connection to the system database. UsageError when the server has none, or cannot be reached.
std::shared_ptr<platform::Connection> openSystem(const ServerPtr& server, const ServerAddress& address);

// All that are registered, by account. A span without an end reaches to the next one, the last span to the last year
// that its database has accounts of. RunTimeError for what the server says, here and below.
std::vector<AccountSet> accountSets(platform::Connection& system);

struct YearPair {
  std::string account;
  int closingYear = 0, newYear = 0;
};

struct ReadinessFinding {
  bool good = false;
  std::string text;  // a sentence
};

// The conditions that a carry-forward checks about the two years themselves: databases, closing of the old year, chart
// and voucher categories of the new one, no posted voucher there. They are read with the statements of the checks; a
// condition that cannot be looked at because an earlier one fails is left out. Nothing is written.
std::vector<ReadinessFinding> yearReadiness(const ServerPtr& server, const ServerAddress& address,
                                            const YearPair& years, const Messages& messages);
bool isReady(const std::vector<ReadinessFinding>& findings);

}  // namespace host
