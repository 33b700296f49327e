#pragma once
// Stages of a few statements. They trap no failures.

#include <string>

namespace gljz {

void JzCashItemDataSource(std::string lastDb, std::string curDb);  // cash-flow item mappings
void JzBmultiGroup();                                              // groups of multi-column ledgers
void ClearSyKm();                                                  // selected profit-and-loss accounts are cleared

}  // namespace gljz
