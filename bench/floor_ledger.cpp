#include "bench/floor_ledger.h"

#include <array>
#include <stdexcept>

#include "platform/value.h"

namespace bench {
namespace {

// What a carried line keeps: its columns but year, period, voucher type's sequence, booking and clearing.
constexpr std::array keptColumns{"csign",
                                 "cexch_name",
                                 "md_f",
                                 "mc_f",
                                 "nfrat",
                                 "nd_s",
                                 "nc_s",
                                 "cDept_ID",
                                 "cPerson_ID",
                                 "ccus_id",
                                 "csup_id",
                                 "cItem_id",
                                 "citem_class",
                                 "cname",
                                 "csettle",
                                 "iNo_id",
                                 "inid",
                                 "dbill_date",
                                 "idoc",
                                 "cbill",
                                 "ccheck",
                                 "cbook",
                                 "ccashier",
                                 "iflag",
                                 "ctext1",
                                 "ctext2",
                                 "cDigest",
                                 "cCode",
                                 "md",
                                 "mc",
                                 "cn_id",
                                 "dt_date",
                                 "ccode_equal",
                                 "iflagbank",
                                 "bDelete",
                                 "coutaccset",
                                 "ioutyear",
                                 "coutsysname",
                                 "coutsysver",
                                 "doutbilldate",
                                 "ioutperiod",
                                 "coutsign",
                                 "doutdate",
                                 "coutbillsign",
                                 "coutid",
                                 "bvouchedit",
                                 "bvouchaddordele",
                                 "bvouchmoneyhold",
                                 "bvalueedit",
                                 "ccodecontrol",
                                 "bpcsedit",
                                 "bdeptedit",
                                 "bitemedit",
                                 "bcussupinput",
                                 "cdefine1",
                                 "cdefine2",
                                 "cdefine3",
                                 "cdefine4",
                                 "cdefine5",
                                 "cdefine6",
                                 "cdefine7",
                                 "cdefine8",
                                 "cdefine9",
                                 "cdefine10",
                                 "cdefine11",
                                 "cdefine12",
                                 "cdefine13",
                                 "cdefine14",
                                 "cdefine15",
                                 "cdefine16"};

std::string insertText() {
  std::string columns, places;
  for (const char* column : keptColumns) {
    columns += std::string(",") + column;
    places += ",?";
  }
  return "INSERT INTO gl_accvouch(iyear,ibook,iflagperson,iperiod,isignseq" + columns + ") VALUES(2006,1,NULL,?,?" +
         places + ")";
}

// The server's collation is not known to a plain file.
std::string withoutCollation(std::string definition) {
  constexpr std::string_view collation = " COLLATE TQ";
  for (std::size_t at; (at = definition.find(collation)) != std::string::npos;) definition.erase(at, collation.size());
  return definition;
}

void copyTables(Floor& floor, const std::string& source, const std::vector<std::string>& tables) {
  floor.run("ATTACH '" + source + "' AS source");
  floor.run("BEGIN");
  for (const std::string& table : tables) {
    std::vector<std::string> definitions;
    FloorStatement schema(
        floor,
        "SELECT sql FROM source.sqlite_master WHERE sql IS NOT NULL AND lower(tbl_name)=lower(?) ORDER BY type DESC");
    bindText(schema.get(), 1, table);
    while (schema.step())
      definitions.push_back(withoutCollation(reinterpret_cast<const char*>(sqlite3_column_text(schema.get(), 0))));
    if (definitions.empty()) throw std::runtime_error("the ledger has no table " + table);
    for (const std::string& definition : definitions) floor.run(definition);
    floor.run("INSERT INTO main." + table + " SELECT * FROM source." + table);
  }
  floor.run("COMMIT");
  floor.run("DETACH source");
}

}  // namespace

FloorLedger::FloorLedger(const Ledger& ledger, const std::string& name, const std::vector<std::string>& tables)
    : closing(ledger.file(name + "-closing")), opening(ledger.file(name + "-opening")) {
  copyTables(closing, ledger.file(ledger.closing + ".db"), tables);
  copyTables(opening, ledger.file(ledger.opening + ".db"), tables);
}

bool FloorStatement::step() {
  const int answer = sqlite3_step(statement_);
  if (answer != SQLITE_ROW && answer != SQLITE_DONE)
    throw std::runtime_error(sqlite3_errmsg(sqlite3_db_handle(statement_)));
  return answer == SQLITE_ROW;
}

int FloorStatement::column(std::string_view name) const {
  for (int i = 0; i < sqlite3_column_count(statement_); ++i)
    if (platform::equalsIgnoreCase(sqlite3_column_name(statement_, i), name)) return i;
  throw std::logic_error("no column " + std::string(name));
}

std::int64_t Lookup::find(sqlite3_value* key) {
  sqlite3_stmt* s = statement_.get();
  sqlite3_bind_value(s, 1, key);
  std::int64_t first = -1;
  if (statement_.step()) {
    first = sqlite3_column_int64(s, 0);
    for (int i = 1; i < sqlite3_column_count(s); ++i) {
      if (sqlite3_column_type(s, i) == SQLITE_TEXT) (void)sqlite3_column_text(s, i);
    }
  }
  statement_.reset();
  return first;
}

VoucherInsert::VoucherInsert(Floor& opening, const FloorStatement& lines)
    : lines_(lines), insert_(opening, insertText()) {
  for (const char* column : keptColumns) sources_.push_back(lines.column(column));
}

void VoucherInsert::write(int period, std::int64_t signSequence) {
  sqlite3_stmt* s = insert_.get();
  sqlite3_bind_int(s, 1, period);
  sqlite3_bind_int64(s, 2, signSequence);
  for (std::size_t i = 0; i < sources_.size(); ++i)
    sqlite3_bind_value(s, static_cast<int>(i) + 3, sqlite3_column_value(lines_.get(), sources_[i]));
  insert_.step();
  insert_.reset();
}

}  // namespace bench
