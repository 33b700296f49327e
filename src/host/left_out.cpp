#include "host/left_out.h"

#include <algorithm>
#include <iterator>

namespace host {
namespace {

// In order: person, customer and supplier items without their settlement style, bank lines without a record.
constexpr const char* changedKeys[] = {"Orvo.GL.TqGLJZ.00139", "Orvo.GL.TqGLJZ.00155", "Orvo.GL.TqGLJZ.00171",
                                       "Orvo.GL.TqGLJZ.00192"};
// The account totals: no such account, no last-level account.
constexpr const char* accountKeys[] = {"Orvo.GL.TqGLJZ.00109", "Orvo.GL.TqGLJZ.00106"};

template <class Keys>
bool hasReason(const std::vector<std::string>& row, const Messages& messages, const Keys& keys) {
  return row.size() >= leftOutCells && std::any_of(std::begin(keys), std::end(keys), [&](const char* key) {
           return row[leftOutCells - 1] == messages.text(key);
         });
}

}  // namespace

bool wasChanged(const std::vector<std::string>& row, const Messages& messages) {
  return hasReason(row, messages, changedKeys);
}

bool isAccountLeftOut(const std::vector<std::string>& row, const Messages& messages) {
  return hasReason(row, messages, accountKeys);
}

}  // namespace host
