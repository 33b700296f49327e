#include "dialogs/report_print.h"

#include <array>
#include <cstdio>

#include "core/mdu_jz.h"
#include "dialogs/report_print_sql.h"
#include "platform/surroundings.h"

namespace gljz {
namespace {

namespace sql = report_print_sql;
using platform::FormatDatabase;
using platform::RunTimeError;

constexpr const char *headTable = "ZPDJ_Head", *tailTable = "ZPDJ_Tail";
constexpr int printed = 0, operatorLeft = 1003;

// "yyyy.mm.dd"
std::string printDate() {
  const platform::DateTime::Parts today = platform::surroundings().today().parts();
  char text[16];
  std::snprintf(text, sizeof text, "%04d.%02d.%02d", today.year % 10000, today.month % 100, today.day % 100);
  return text;
}

void dropIfThere(FormatDatabase& database, const char* statement) {
  try {
    database.Execute(statement);
  } catch (const RunTimeError&) {
    // There is none before the first print.
  }
}

// The single row of a table: the columns P1, P2, ... take the texts.
template <std::size_t Columns>
void addRowIfEmpty(FormatDatabase& database, const char* table, const std::array<std::string, Columns>& texts) {
  auto rows = database.OpenTable(table);
  if (rows->Eof()) {
    rows->AddNew();
    for (std::size_t i = 0; i < Columns; ++i) rows->SetField("P" + std::to_string(i + 1), texts[i]);
    rows->Update();
  }
  rows->Close();
}

std::array<std::string, 6> tail() {
  return {"",
          "",
          "",
          GetResString("Orvo.GL.TqGLJZ.00019", {pubCls().AccountOptions().cCompanyName}),
          GetResString("Orvo.GL.TqGLJZ.00020", {pubCls().OperatorName()}),
          GetResString("Orvo.GL.TqGLJZ.00021", {printDate()})};
}

// A slash separates folders on every operating system.
std::string layoutFolder() {
  return platform::surroundings().forms->ProgramFolder() + "/glrep/" + login().LoginLanguage() + "/";
}

platform::PrintControl& printControl() {
  auto* control = platform::surroundings().print;
  if (control == nullptr) throw RunTimeError(RunTimeError::objectNotSet, "There is no print control");
  return *control;
}

}  // namespace

std::vector<platform::Value> printedYears() {
  const int year = pubCls().CurrentYearInfo();
  return {year - 1, year};
}

void printGrid(const platform::Form& dialog, const Grid& grid, const PrintHead& head) {
  platform::PrintControl& control = printControl();
  platform::PrintControl::Job job;
  job.owner = &dialog;
  const std::string folder = layoutFolder();

  FormatDatabase& database = pubCls().FormatDb();
  dropIfThere(database, sql::dropHead);
  dropIfThere(database, sql::dropTail);
  database.Execute(sql::createHead);
  database.Execute(sql::createTail);
  addRowIfEmpty<7>(database, headTable, {head.P1, "", "", "", head.P5, "", head.P7});
  addRowIfEmpty<6>(database, tailTable, tail());

  job.formatDatabase = database.Name();
  job.headLayout = folder + "dzerru.rep";
  job.headTable = headTable;
  job.footLayout = folder + "dzerrd.rep";
  job.footTable = tailTable;
  job.grid = &grid.rows;
  job.columnWidths = grid.columnWidths;
  for (const Alignment alignment : grid.alignments) job.alignments.push_back(static_cast<int>(alignment));
  const int answer = control.Print(job);
  if (answer != printed && answer != operatorLeft) ShowMsg("Error No:" + std::to_string(answer), msgPlain, "");
}

}  // namespace gljz
