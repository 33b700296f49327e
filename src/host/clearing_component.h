#pragma once
// The clearing of current accounts, "OrvoGLWLClear.clsInterface", as this host does it.
//
// What clearing means is the component's own affair; the carry-forward only calls the three operations. This one marks
// as cleared what cancels exactly, among the open customer or supplier lines of the closing years: two lines of one
// account, currency and partner whose amounts, foreign ones included, add up to zero; department and item of a line do
// not matter. The oldest lines are paired first. They count as cleared on the last day of the closing year, in its
// period 12, so a carry-forward by detail leaves them behind and what the partner owes stays what it is.

#include <memory>

#include "host/journal.h"
#include "platform/services.h"

namespace host {

// Operations, by name without regard to case:
//   InitZwPub(services)          takes the accounting services and hands the same object back
//   SetCusorSup(0 or 1)          0 customers, 1 suppliers
//   AutoClear4Task(task, text)   clears over the closing year's connection of the run, statement by statement; no
//                                pair is ever half marked. text comes back empty
// RunTimeError 438 for any other name, 91 before InitZwPub. What was cleared becomes a note in the journal, if any.
std::shared_ptr<platform::Component> makeClearingComponent(std::shared_ptr<Journal> journal);

}  // namespace host
