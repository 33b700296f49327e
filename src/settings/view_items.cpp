#include "settings/view_items.h"

#include <memory>
#include <string>

#include "core/mdu_jz.h"
#include "platform/run_time_error.h"
#include "platform/surroundings.h"
#include "settings/view_items_sql.h"

namespace gljz {
namespace {

namespace sql = view_items_sql;
using platform::Connection;
using platform::Recordset;

// Passes a failure over; the next statement runs.
template <class Statement>
void attempt(const Statement& statement) {
  try {
    statement();
  } catch (const platform::RunTimeError&) {
  }
}

// Null when the selection fails: it then counts as one without rows.
template <class Connector>
std::unique_ptr<Recordset> attemptToOpen(Connector connection, const std::string& selection) {
  std::unique_ptr<Recordset> rows;
  attempt([&] { rows = connection().OpenRecordset(selection, 2); });
  return rows;
}

bool isEmpty(const std::unique_ptr<Recordset>& rows) {
  return !rows || rows->Eof();
}

void tell(const char* key) {
  const std::string prompt = GetResString(key);
  ShowMsg(prompt, msgInformation, GetResString("Orvo.GL.TqGLJZ.00094"));
}

void makeSchema(Connection& connection) {
  for (const auto& statement : {sql::addViewItem(), sql::addGCJS(), sql::dropViewItem(), sql::dropXmZcDetail(),
                                sql::createViewItem(), sql::createXmZcDetail(), sql::insertPrintFormat()})
    connection.ExecuteSql(statement);
}

// Intended: no year on either side. In a database of several years each account is visited once a year, and its first
// row takes the values every time.
void carryAccount(const Recordset& account) {
  std::unique_ptr<Recordset> target;
  attempt([&] { target = newConn().OpenRecordset(sql::selectAccount(account.Field("ccode").asText()), 2); });
  if (isEmpty(target)) return;
  attempt([&] { target->SetField("iViewItem", account.Field("iViewItem")); });
  attempt([&] { target->SetField("bGCJS", account.Field("bGCJS")); });
  attempt([&] { target->Update(); });
  target->Close();
}

void carryAccounts() {
  const auto accounts = attemptToOpen(lastConn, sql::selectAccounts());
  if (isEmpty(accounts)) return tell("Orvo.GL.TqGLJZ.00269");
  for (; !accounts->Eof(); accounts->MoveNext()) carryAccount(*accounts);
  accounts->Close();
}

// By position, column by column of the closing year.
void addViewItem(const Recordset& item, Recordset& target) {
  attempt([&] { target.AddNew(); });
  for (std::size_t i = 0; i < item.FieldCount(); ++i) attempt([&] { target.SetField(i, item.Field(i)); });
  attempt([&] { target.Update(); });
}

void carryViewItems() {
  const auto items = attemptToOpen(lastConn, sql::selectViewItems());
  if (isEmpty(items)) return tell("Orvo.GL.TqGLJZ.00273");
  const auto target = attemptToOpen(newConn, sql::selectViewItems());
  if (!isEmpty(target)) return tell("Orvo.GL.TqGLJZ.00271");  // what is there is never merged with
  if (!target) return;                                        // no table: each of the following would be passed over
  for (; !items->Eof(); items->MoveNext()) addViewItem(*items, *target);
  target->Close();
  items->Close();
}

}  // namespace

void ViewItemSchema() {
  attempt([] {
    const auto connection = platform::surroundings().newConnection();
    connection->ConnectionOpen(newConn().ConnectionText());
    makeSchema(*connection);
    connection->ConnectionClose();
  });
}

void JzViewItem() {
  ViewItemSchema();
  // What fails between the statements, a move or a close, ends its half alone: nothing of it reaches the stage
  // sequence.
  attempt(carryAccounts);
  attempt(carryViewItems);
}

}  // namespace gljz
