#include "settings/other_tables.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <vector>

#include "core/mdu_jz.h"
#include "driver/progress.h"
#include "platform/run_time_error.h"
#include "platform/surroundings.h"
#include "settings/other_tables_sql.h"
#include "settings/transfer_definitions.h"

namespace gljz {
namespace {

namespace sql = other_tables_sql;
using platform::Component;
using platform::Recordset;
using platform::RunTimeError;

// --- The copy of one table.

// Columns that are never written: the server or the other year numbers them.
struct LeftOut {
  const char *table, *column;
};
constexpr LeftOut leftOut[] = {
    {"gl_bmulti", "i_id"},  {"gl_btext", "id"},     {"GL_YeMxSel", "iid"},  // never copied here; known all the same
    {"GL_DzDwSet", "i_id"}, {"GL_myoutput", "iid"}, {"GL_cvprintinfset", "autoid"},
};
constexpr std::string_view rowGuid = "tqguid";  // of every table, in exactly these letters: TQGUID is copied

bool isLeftOut(const std::string& table, const std::string& column) {
  if (column == rowGuid) return true;
  return std::any_of(std::begin(leftOut), std::end(leftOut), [&](const LeftOut& known) {
    return platform::equalsIgnoreCase(table, known.table) && platform::equalsIgnoreCase(column, known.column);
  });
}

void copyRow(const std::string& table, const Recordset& source, Recordset& target) {
  target.AddNew();
  for (std::size_t i = 0; i < target.FieldCount(); ++i) {
    const std::string& column = target.FieldName(i);
    if (isLeftOut(table, column)) continue;
    // Intended: by position and then by name, letter for letter.
    if (column == source.FieldName(i)) target.SetField(i, source.Field(i));
  }
  target.Update();
}

// --- Tables that are guarded by what the new year has in them.

struct GuardedTable {
  const char *table, *key;  // key: says that the new year has rows
};
constexpr std::size_t definitions = 0;  // carried by JzBautotran, not by the copy
constexpr std::array<GuardedTable, 4> guardedTables{{
    {"GL_bautotran", "Orvo.GL.TqGLJZ.00022"},
    {"GL_bmulti", "Orvo.GL.TqGLJZ.00023"},
    {"GL_btext", "Orvo.GL.TqGLJZ.00024"},
    {"GL_cvprintinfset", "Orvo.GL.TqGLJZ.00025"},
}};

class Guard {
public:
  Guard() {
    std::string note;  // shown to nobody; whether it says anything decides
    for (std::size_t i = 0; i < guardedTables.size(); ++i) {
      guarded_[i] = hasRow(newConn(), sql::selectAll(guardedTables[i].table));
      if (guarded_[i]) note += GetResString(guardedTables[i].key);
    }
    if (!note.empty()) overwrite_ = run.m_bCoverData == 1;
  }
  bool lets(std::size_t table) const { return !guarded_[table] || overwrite_; }

private:
  std::array<bool, guardedTables.size()> guarded_{};
  bool overwrite_ = true;
};

constexpr const char* alwaysReplaced[] = {
    "GL_mcodeauth",     "GL_mcodeused",       "GL_mitemused",      "GL_mybooktype",      "GL_myoutput",  "GL_DzDwSet",
    "GL_MRReport_Main", "GL_MRShowItem_Main", "GL_MRReportOption", "GL_MRColumnDic_Set", "GL_PRN_Format"};

void carryTables() {
  const Guard guard;
  if (guard.lets(definitions)) JzBautotran();

  showProgress("Orvo.GL.TqGLJZ.00027");
  DoEvents();
  for (std::size_t i = definitions + 1; i < guardedTables.size(); ++i) {
    if (guard.lets(i)) CopySettingTable(guardedTables[i].table);
  }
  for (const char* table : alwaysReplaced) CopySettingTable(table);
}

// --- The sibling module.

std::shared_ptr<Component> createSibling() {
  constexpr const char* programId = "TsGFJZ.clsGFJZ";
  auto* factory = platform::surroundings().components;
  if (factory == nullptr)
    throw RunTimeError(RunTimeError::cannotCreate, std::string("Component cannot be created: ") + programId);
  return factory->Create(programId);
}

// The two objects go by reference: the component may hand others back, and the run goes on with those.
void runSibling() {
  const auto sibling = createSibling();
  std::vector<Component::Argument> arguments{{{}, run.m_conn}, {{}, run.m_pubCls}, {"", nullptr}};
  const platform::Value done = sibling->Call("JZ", arguments);
  run.m_conn = std::static_pointer_cast<platform::Connection>(arguments[0].object);
  run.m_pubCls = std::static_pointer_cast<platform::ZwPubCls>(arguments[1].object);
  if (!done.asBool()) ShowMsg(arguments[2].value.displayText(), msgPlain, "");
}

}  // namespace

void CopySettingTable(const std::string& table) {
  newConn().ExecuteSql(sql::deleteAll(table));
  const std::string selection = sql::selectAll(table);
  auto source = lastConn().OpenRecordset(selection, 2);
  auto target = newConn().OpenRecordset(selection, 2);
  if (target->Eof()) {
    for (; !source->Eof(); source->MoveNext()) copyRow(table, *source, *target);
  }
  target->Close();
  source->Close();
}

void JzOtherTables() {
  try {
    carryTables();
    runSibling();
  } catch (const RunTimeError& failure) {
    ShowMsg(failure.description(), msgPlain, "");
  }
}

}  // namespace gljz
