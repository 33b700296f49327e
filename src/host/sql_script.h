#pragma once
// Scripts: batches with GO on a line of its own between them.

#include <string>
#include <string_view>
#include <vector>

namespace host {

// Batches without blank ones. GO is found in any case, with blanks around it.
std::vector<std::string> splitBatches(std::string_view script);

}  // namespace host
