#include "host/expected_failures.h"

#include "platform/run_time_error.h"
#include "settings/view_items_sql.h"

namespace host {
namespace {

constexpr int noSuchTable = 208, columnExists = 2705, cannotDropMissing = 3701;

int serverNumber(const std::exception& failure) {
  const auto* error = dynamic_cast<const platform::RunTimeError*>(&failure);
  return error != nullptr && error->server() ? error->server()->number : 0;
}

}  // namespace

std::optional<std::string_view> expectedFailure(Role role, std::string_view statement, const std::exception& failure) {
  namespace sql = gljz::view_items_sql;
  switch (serverNumber(failure)) {
    case cannotDropMissing:  // work tables are dropped before they are made
      return "";
    case columnExists:  // on every run but the first
      if (role != Role::privateConnection || statement != sql::addViewItem.text) break;
      return "view items: the new year has their columns already, so the tables that belong to them were left as they "
             "are";
    case noSuchTable:  // the closing year is older than the edition
      if (role != Role::closingYear || statement != sql::selectViewItems.text) break;
      return "view items: the closing year has no table GL_ViewItem, so there were none to carry";
    default:
      break;
  }
  return std::nullopt;
}

}  // namespace host
