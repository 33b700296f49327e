#pragma once
// The settings tables of both years as short texts, for tests of what is kept and what is replaced.

#include <algorithm>
#include <string>
#include <vector>

#include "system/ledger_fixture.h"

namespace gljz::test {

struct SettingsTable {
  const char *name, *text;  // text: the column that tells rows apart
  const char* rest;         // further columns that want a value, and the value
  const char* restValue;
};

// In the order in which they are carried; the first four are guarded by what the new year has in them.
inline constexpr SettingsTable settingsTables[] = {
    {"GL_bautotran", "ctran_id", ", itype, inid, ccode", ", 1, 1, '9999'"},
    {"GL_bmulti", "cname", "", ""},
    {"GL_btext", "ctext", "", ""},
    {"GL_cvprintinfset", "cname", ", bprint", ", 1"},
    {"GL_mcodeauth", "cid", ", ctext, tqguid", ", '说明', 'guid'"},
    {"GL_mcodeused", "cid", ", ctext, tqguid", ", '说明', 'guid'"},
    {"GL_mitemused", "cid", ", ctext, tqguid", ", '说明', 'guid'"},
    {"GL_mybooktype", "cid", ", ctext, tqguid", ", '说明', 'guid'"},
    {"GL_myoutput", "cid", ", ctext, tqguid", ", '说明', 'guid'"},
    {"GL_DzDwSet", "cid", ", ctext, tqguid", ", '说明', 'guid'"},
    {"GL_MRReport_Main", "cid", ", ctext, tqguid", ", '说明', 'guid'"},
    {"GL_MRShowItem_Main", "cid", ", ctext, tqguid", ", '说明', 'guid'"},
    {"GL_MRReportOption", "cid", ", ctext, tqguid", ", '说明', 'guid'"},
    {"GL_MRColumnDic_Set", "cid", ", ctext, tqguid", ", '说明', 'guid'"},
    {"GL_PRN_Format", "cid", ", ctext, tqguid", ", '说明', 'guid'"},
};

class SettingsTables : public LedgerTest {
protected:
  using LedgerTest::LedgerTest;

  void put(const Side& side, const SettingsTable& table, const std::string& text) {
    sql(side, std::string("insert into ") + table.name + "(" + table.text + table.rest + ") values(N'" + text + "'" +
                  table.restValue + ")");
  }
  void put(const Side& side, const std::string& table, const std::string& text) { put(side, named(table), text); }
  void putEverywhere(const Side& side, const std::string& text) {
    for (const auto& table : settingsTables) put(side, table, text);
  }

  // "后加,上年" for a table with these two rows, in the order of their texts.
  std::string contents(const Side& side, const SettingsTable& table) {
    std::string all;
    for (const auto& row : rows(side, std::string("select ") + table.text + " from " + table.name + " order by 1"))
      all += all.empty() ? row : "," + row;
    return all;
  }
  std::string contents(const std::string& table) { return contents(opening, named(table)); }

  // All fifteen tables of the new year hold this, but for the exceptions.
  struct Exception {
    std::string table, contents;
  };
  void expectEverywhere(const std::string& text, const std::vector<Exception>& exceptions = {}) {
    for (const auto& table : settingsTables) {
      const auto found =
          std::find_if(exceptions.begin(), exceptions.end(), [&](const Exception& e) { return e.table == table.name; });
      EXPECT_EQ(contents(opening, table), found == exceptions.end() ? text : found->contents) << table.name;
    }
  }

private:
  static const SettingsTable& named(const std::string& name) {
    const auto* found = std::find_if(std::begin(settingsTables), std::end(settingsTables),
                                     [&](const SettingsTable& table) { return name == table.name; });
    if (found == std::end(settingsTables)) throw std::invalid_argument("no settings table " + name);
    return *found;
  }
};

}  // namespace gljz::test
