#pragma once
// Result sets over ODBC.

#include <memory>
#include <string>
#include <vector>

#include "odbc/link.h"
#include "platform/database.h"

namespace odbc {

// All rows in memory; the statement is done when this returns.
std::unique_ptr<platform::Recordset> openClientRows(const std::shared_ptr<Link>& link, const std::string& sql);
// The same for a statement with ? for its arguments. timeoutSeconds: how long the server may take, 0 for no limit.
std::unique_ptr<platform::Recordset> openCommand(const std::shared_ptr<Link>& link, const std::string& sql,
                                                 const std::vector<platform::TextParameter>& parameters,
                                                 int timeoutSeconds);
// Rows are fetched in blocks as they are walked, and other statements may run meanwhile (settings.h says how).
// RunTimeError 5 when the driver can do it in no way.
std::unique_ptr<platform::Recordset> openServerRows(const std::shared_ptr<Link>& link, const std::string& sql);

}  // namespace odbc
