#pragma once
// The limits of text types.

#include <string>
#include <string_view>

#include "tsql/datum.h"

namespace tsql {

// Whether the text is a value of the type as it stands: short enough, nothing to pad, no character that the type's code
// page may lack. Quick; a false says only that fitText has to look closer.
bool fitsAsIs(std::string_view text, const SqlType& type);

// The text as a value of a text type: characters that the code page lacks become '?', what is too long is cut between
// two characters (cast) or 8152 (store; blanks at the end are cut without a word), char and nchar are padded.
std::string fitText(std::string text, const SqlType& type, ConvertMode mode);

}  // namespace tsql
