#include "shared_account.h"

namespace com::test {
namespace {

constexpr const char* ownDatabase = "TqData_001_2006";

// The rows of the new year, column by column: an identity is given anew.
void moveRows(const ReferenceServer& server, const std::string& table) {
  const Automation connection(
      objectOf(server.host.call(L"Connection", {Argument(platform::Value(ownDatabase))}).get()));
  const Automation names(objectOf(
      connection
          .call(L"OpenRecordset", {Argument(platform::Value("select name from syscolumns where id=object_id(N'" +
                                                            table + "') and name<>'i_id' order by colid")),
                                   Argument(platform::Value(2))})
          .get()));
  std::string columns;
  for (; !names.get(L"EOF").asBool(); names.call(L"MoveNext"))
    columns +=
        (columns.empty() ? "[" : ", [") +
        Automation(objectOf(names.call(L"Fields", {Argument(platform::Value(0))}).get())).get(L"Value").asText() + "]";
  server.execute(sharedDatabase, "insert into " + table + "(" + columns + ") select " + columns + " from " +
                                     ownDatabase + ".." + table + " where iyear=2006");
}

}  // namespace

void putBothYearsIntoOneDatabase(const ReferenceServer& server) {
  for (const char* table : {"code", "gl_yearstate", "gl_mend"}) moveRows(server, table);
  server.execute("TqSystem",
                 "delete from UA_AccountDatabase where cAcc_Id='001' and iBeginYear=2006 "
                 "update UA_AccountDatabase set iEndYear=2006 where cAcc_Id='001'");
}

platform::Money openingCash(const ReferenceServer& server) {
  return server.cell(sharedDatabase, "select mb from gl_accsum where iyear=2006 and ccode='1001' and iperiod=1")
      .asMoney();
}

}  // namespace com::test
