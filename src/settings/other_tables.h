#pragma once
// The settings tables, table by table, between separate databases; then the sibling module's own carry-forward.

#include <string>

namespace gljz {

// Transfer definitions and three more tables are kept when the new year has rows in any of them and m_bCoverData is not
// 1; the other eleven are always replaced. The sibling component TsGFJZ.clsGFJZ may replace m_conn and m_pubCls.
// Catches its own failures, a sibling component that is not installed among them, and returns normally: what was
// copied stays, the tables behind the failing one stay as they were.
void JzOtherTables();

// Replaces the new year's rows of one table, row by row through cursors, with those of the closing year. A column is
// copied when it stands at the same position under exactly the same name in both years; others keep their defaults
// without a word. Identity and row-guid columns that are known as such are left out. Failures go to the caller and may
// leave the table filled in part.
void CopySettingTable(const std::string& table);

}  // namespace gljz
