#pragma once
// AccountDivision: the stored division of customer and supplier accounts (GL_YeMxSel of the new year), as it stood.
//
//   const AccountDivision before(server, "TqData_001_2006");
//   ... the program is interrupted at the conditions ...
//   before.putBack();
//
// The selection dialogs of the conditions store a division at once when it is confirmed, before anybody has confirmed
// the conditions themselves.

#include <string>

#include "host/database_desk.h"

namespace host {

class AccountDivision {
public:
  // Reads the rows. Failures of the server go to the caller, here and below.
  AccountDivision(ServerPtr server, std::string database);
  bool hasChanged() const;
  // The rows are again what they were; their numbers too where the login may give them. All of it or none.
  void putBack() const;

private:
  DatabaseDesk::Rows read() const;
  void insert(bool numbered) const;

  ServerPtr server_;
  std::string database_;
  DatabaseDesk::Rows rows_;
};

}  // namespace host
