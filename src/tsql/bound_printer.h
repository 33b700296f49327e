#pragma once
// Bound printer: a bound statement as text for a person to read and for a review to compare.
//
// The tree is written in brackets, (operator operand ...), on one line where it fits and indented where it does not:
//
//   (select
//     (items ccode=s0.ccode:nvarchar(40)!)
//     (from s0=d1.code)
//     (where (= s0.iyear:smallint! ?1:int!)))
//
// s<n> is a source of the statement, ?<n> the value that slot n-1 is given when the statement runs, #<n> a fixed whole
// number of the emitted text. Behind a colon stands the type, and behind it ! where the value is never Null.

#include <string>

#include "tsql/bound.h"

namespace tsql {

// Lines with line feeds, the last one included.
std::string printBound(const BoundStatement& statement);
// One slot without its number: "literal 2: varchar(4) -> nvarchar(40), stored". A text is shown as in the batch.
std::string printSlot(const Slot& slot);

}  // namespace tsql
