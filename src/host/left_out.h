#pragma once
// What a row of the grid "left out, with the reason" says: kind, code, name, reason, in the language of the run.
//
// The grid holds two things that the system does not tell apart. Most rows are records that did not arrive; some are
// records that did, without a part of them that the new year lacks. The reason decides, by its message key.

#include <cstddef>
#include <string>
#include <vector>

#include "host/messages.h"

namespace host {

inline constexpr std::size_t leftOutCells = 4;

// Whether the record was carried with a change; false for one that was not carried at all.
bool wasChanged(const std::vector<std::string>& row, const Messages& messages);
// Whether the row is an account whose balance is missing in the new year; its code is row[1].
bool isAccountLeftOut(const std::vector<std::string>& row, const Messages& messages);

}  // namespace host
