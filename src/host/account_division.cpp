#include "host/account_division.h"

#include <utility>

namespace host {

AccountDivision::AccountDivision(ServerPtr server, std::string database)
    : server_(std::move(server)), database_(std::move(database)), rows_(read()) {}

DatabaseDesk::Rows AccountDivision::read() const {
  return DatabaseDesk(server_, database_).rows("select iid,iCusSupType,ccode,iYeMxType from GL_YeMxSel order by iid");
}

bool AccountDivision::hasChanged() const {
  return read() != rows_;
}

void AccountDivision::putBack() const {
  try {
    insert(true);
  } catch (const platform::RunTimeError&) {
    insert(false);  // numbers take a right of their own on a server
  }
}

void AccountDivision::insert(bool numbered) const {
  DatabaseDesk desk(server_, database_);
  desk.transaction([&] {
    desk.run("delete from GL_YeMxSel");
    if (rows_.empty()) return;
    if (numbered) desk.run("set identity_insert GL_YeMxSel on");
    for (const auto& row : rows_)
      if (numbered)
        desk.run("insert into GL_YeMxSel(iid,iCusSupType,ccode,iYeMxType) values(?,?,?,?)", row);
      else
        desk.run("insert into GL_YeMxSel(iCusSupType,ccode,iYeMxType) values(?,?,?)", {row.begin() + 1, row.end()});
    if (numbered) desk.run("set identity_insert GL_YeMxSel off");
  });
}

}  // namespace host
