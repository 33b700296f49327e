#include "host/demo.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/account.h"
#include "host/connection_text.h"
#include "host/database_desk.h"
#include "host/resources.h"
#include "host/usage_error.h"

namespace host {
namespace {

// demo/system.sql belongs to the system database, demo/<year>_<subject>.sql to the database of that year.
std::string databaseOf(std::string_view script) {
  constexpr std::string_view folder = "demo/";
  script.remove_prefix(folder.size());
  if (script.starts_with("system")) return systemDatabase;
  for (const int year : {demoClosingYear, demoNewYear})
    if (script.starts_with(std::to_string(year))) return databaseName(demoAccount, year);
  throw std::runtime_error("demo script without a database: " + std::string(script));
}

// A script stands on the ones before it: the vouchers need the chart, the totals are derived from the vouchers.
std::vector<Resource> scriptsInOrder() {
  constexpr std::array<std::string_view, 7> subjects = {"chart",      "references", "vouchers", "totals",
                                                        "open_items", "bank",       "settings"};
  const auto rank = [&](const Resource& script) {
    const auto subject = std::find_if(subjects.begin(), subjects.end(), [&](std::string_view s) {
      return script.name.find("_" + std::string(s) + ".") != std::string_view::npos;
    });
    return std::pair(databaseOf(script.name), subject - subjects.begin());
  };
  std::vector<Resource> scripts = resourcesUnder("demo/");
  std::stable_sort(scripts.begin(), scripts.end(),
                   [&](const Resource& a, const Resource& b) { return rank(a) < rank(b); });
  return scripts;
}

}  // namespace

void createDemo(const ServerPtr& server) {
  const auto scripts = scriptsInOrder();
  if (scripts.empty()) throw std::runtime_error("this program was built without the demo account set");
  const std::string years[] = {databaseName(demoAccount, demoClosingYear), databaseName(demoAccount, demoNewYear)};
  for (const std::string& database : {std::string(systemDatabase), years[0], years[1]})
    if (server->hasDatabase(database))
      throw UsageError(server->title() + " has a database " + database +
                       " already; the demo needs a server without one");

  std::vector<std::string> made;
  try {
    ensureSystemDatabase(server);
    made.push_back(systemDatabase);
    for (const std::string& year : years) {
      createAccountDatabase(server, year);
      made.push_back(year);
    }
    for (const Resource& script : scripts) {
      DatabaseDesk desk(server, databaseOf(script.name));
      desk.transaction([&] { desk.runScript(script.text); });
    }
  } catch (...) {
    for (const std::string& database : made) try {
        server->dropDatabase(database);
      } catch (const std::exception&) {
        // The failure that led here is the one to tell.
      }
    throw;
  }
}

}  // namespace host
