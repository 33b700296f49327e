#include "host/run_report.h"

#include "host/bank_page.h"
#include "host/json_text.h"
#include "host/opening_page.h"

namespace host {
namespace {

void key(std::string& out, std::string_view name) {
  if (out.back() != '{') out += ", ";
  appendJsonString(out, name);
  out += ": ";
}
void text(std::string& out, std::string_view name, std::string_view value) {
  key(out, name);
  appendJsonString(out, value);
}
void flag(std::string& out, std::string_view name, bool value) {
  key(out, name);
  out += value ? "true" : "false";
}

template <class Items, class Write>
void array(std::string& out, const Items& items, const Write& write) {
  out += '[';
  bool first = true;
  for (const auto& item : items) {
    if (!first) out += ", ";
    first = false;
    write(item);
  }
  out += ']';
}
void texts(std::string& out, const std::vector<std::string>& items) {
  array(out, items, [&](const std::string& s) { appendJsonString(out, s); });
}
void grid(std::string& out, const std::vector<std::vector<std::string>>& rows) {
  array(out, rows, [&](const std::vector<std::string>& row) { texts(out, row); });
}

}  // namespace

std::string runReportJson(const RunResult& r) {
  std::string out = "{";
  flag(out, "returned", r.returned);
  flag(out, "success", r.success);
  text(out, "message", r.message);
  text(out, "errMsg", r.errMsg);
  text(out, "parameters", r.parameters);
  key(out, "stop");
  if (r.stop) {
    out += '{';
    text(out, "where", r.stop->where);
    text(out, "why", r.stop->why);
    out += '}';
  } else {
    out += "null";
  }
  flag(out, "conditionsLeft", r.conditionsLeft);
  key(out, "steps");
  array(out, r.steps, [&](const Step& s) {
    out += '{';
    text(out, "text", s.text);
    text(out, "mark", s.mark);
    out += '}';
  });
  key(out, "report");
  if (r.report) {
    out += '{';
    text(out, "right", r.report->right);
    text(out, "wrong", r.report->wrong);
    key(out, "rows");
    grid(out, r.report->rows);
    out += '}';
  } else {
    out += "null";
  }
  key(out, "notCarried");
  grid(out, r.notCarried);
  key(out, "tables");
  out += '{';
  for (const auto& t : r.tables) {
    if (t.written() == 0 && t.deleted == 0) continue;
    key(out, t.name);
    out += std::to_string(t.written());
  }
  out += '}';
  key(out, "balance");
  out += r.balance ? balanceJson(*r.balance) : "null";
  key(out, "bank");
  out += r.bank ? bankJson(*r.bank, Messages(r.language)) : "null";
  key(out, "failures");
  array(out, r.failures, [&](const Journal::Failure& f) {
    out += '{';
    text(out, "stage", f.stage);
    text(out, "statement", f.statement);
    text(out, "description", f.description);
    out += '}';
  });
  key(out, "notes");
  texts(out, r.notes);
  if (r.uncaught) text(out, "uncaught", *r.uncaught);
  key(out, "seconds");
  out += jsonMilli(r.seconds);
  out += "}\n";
  return out;
}

}  // namespace host
