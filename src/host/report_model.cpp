#include "host/report_model.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>

#include "host/amount_text.h"
#include "host/bank_page.h"
#include "host/journal_texts.h"
#include "host/left_out.h"
#include "host/messages.h"
#include "host/opening_page.h"

namespace host {
namespace {

using Row = std::vector<std::string>;

class Builder {
public:
  explicit Builder(const RunResult& result)
      : result_(result), messages_(result.language), journalTexts_(messages_), code_(exitCode(result)) {
    // The grid has four columns for records, six or seven for partners and persons whose items do not balance.
    const auto& rows = result.notCarried;
    outOfBalance_ = !rows.empty() && (rows.front().size() == partnerCells || rows.front().size() == personCells);
    if (outOfBalance_) return;
    for (const Row& row : rows)
      (wasChanged(row, messages_) ? changed_ : leftOut_).push_back(resized(row, leftOutCells));
  }

  ReportModel model() {
    model_.language = result_.language;
    model_.title = messages_.text("Orvo.GL.TqGLJZ.00013", {result_.closingYear, result_.newYear});
    outcome();
    facts();
    figures();
    if (result_.balance) add(sidesTable(*result_.balance, result_.closingYear, result_.newYear, messages_));
    add(data());
    if (outOfBalance_)
      add(imbalances());
    else
      add(records("leftOut", "LeftOut", leftOut_));
    add(records("changed", "Changed", changed_));
    add(failures());
    add(notes());
    if (result_.report) add(accountsTable(*result_.report, messages_));
    if (result_.bank) add(bankTable(*result_.bank, messages_));
    add(stages());
    return std::move(model_);
  }

private:
  std::string own(const char* key, const std::vector<platform::Value>& arguments = {}) const {
    return messages_.text(std::string("Gljz.Host.") + key, arguments);
  }
  ReportColumn column(const char* key, CellKind kind = CellKind::text) const { return {own(key), kind}; }
  ReportColumn gridColumn(const char* key, CellKind kind = CellKind::text) const { return {messages_.text(key), kind}; }
  void add(ReportTable table) {
    if (!table.columns.empty()) model_.tables.push_back(std::move(table));
  }

  std::size_t wrong() const {
    if (!result_.report) return 0;
    return static_cast<std::size_t>(std::strtoull(result_.report->wrong.c_str(), nullptr, 10));
  }

  void outcome() {
    struct Words {
      Grade grade;
      const char* headline;
    };
    // The exit code is the system's word; that the new year does not balance is the host's.
    const bool unbalanced = result_.balance && !result_.balance->opensInBalance();
    const auto words = [&]() -> Words {
      if (result_.conditionsLeft) return {Grade::stopped, "Headline.Left"};
      switch (code_) {
        case 0:
          if (unbalanced) return {Grade::attention, "Headline.NotWholly"};
          return {Grade::good, "Headline.Carried"};
        case 1:
          return {Grade::stopped, "Headline.NotCarried"};
        case 3:
          return {Grade::stopped, "Headline.StoppedAtCheck"};
        case 4:
          return {Grade::attention, "Headline.NotWholly"};
        default:
          return {Grade::failed, "Headline.Failed"};
      }
    }();
    model_.grade = words.grade;
    model_.headline = own(words.headline);

    const RunResult& r = result_;
    auto& say = model_.sentences;
    // What the system makes of it is the failure to read a parameter text that nobody gave.
    if (r.conditionsLeft) return;
    if (code_ == 3) say.push_back(own("Explain.ReturnedTrue"));
    if (r.uncaught) say.push_back(own("Outcome.Failure", {*r.uncaught}));
    if (r.uncaught && r.transactionBegun) say.push_back(own("Outcome.Undone"));
    if (r.stop) {
      say.push_back(own("Outcome.StopWhere", {journalTexts_.stage(r.stop->where)}));
      say.push_back(own("Outcome.StopWhy", {r.stop->why}));
    }
    if (r.balance)
      for (std::string& sentence : sidesSentences(*r.balance, r.closingYear, r.newYear, messages_))
        say.push_back(std::move(sentence));
    if (wrong() > 0) say.push_back(own("Explain.Wrong", {r.report->wrong}));
    if (outOfBalance_) say.push_back(own("Explain.OutOfBalance", {std::to_string(r.notCarried.size())}));
    if (!leftOut_.empty()) say.push_back(own("Explain.LeftOut", {std::to_string(leftOut_.size())}));
    if (!changed_.empty()) say.push_back(own("Explain.Changed", {std::to_string(changed_.size())}));
    if (!r.failures.empty()) say.push_back(own("Explain.Failures", {std::to_string(r.failures.size())}));
    const bool told = r.stop && (r.stop->why == r.errMsg || r.stop->why == r.message);
    if (!r.errMsg.empty() && !told) say.push_back(own("Outcome.Message", {r.errMsg}));
    if (!r.message.empty() && r.message != r.errMsg && !told) say.push_back(own("Outcome.Message", {r.message}));
  }

  void facts() {
    const RunResult& r = result_;
    const auto fact = [this](const char* label, const std::string& value) {
      if (!value.empty()) model_.facts.push_back({own(label), value});
    };
    fact("Fact.Account", r.company.empty() || r.account.empty() ? r.account + r.company : r.account + " " + r.company);
    if (r.newYear != 0) fact("Fact.Years", std::to_string(r.closingYear) + " → " + std::to_string(r.newYear));
    fact("Fact.Operator", r.operatorName);
    fact("Fact.Day", r.day);
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%.2f", r.seconds);
    fact("Fact.Duration", own("Fact.Seconds", {std::string(seconds), std::to_string(r.statements)}));
  }

  void figures() {
    const auto figure = [this](const char* id, const char* label, const std::string& value, bool attention = false) {
      model_.figures.push_back({id, own(label), value, attention});
    };
    std::int64_t rows = 0;
    for (const auto& t : result_.tables) rows += t.written();
    figure("rows", "Figure.Rows", std::to_string(rows));
    if (result_.report) {
      figure("right", "Figure.Right", result_.report->right);
      figure("wrong", "Figure.Wrong", result_.report->wrong, wrong() > 0);
    }
    if (outOfBalance_)
      figure("leftOut", "Figure.OutOfBalance", std::to_string(result_.notCarried.size()), true);
    else
      figure("leftOut", "Figure.LeftOut", std::to_string(leftOut_.size()), !leftOut_.empty());
    if (!changed_.empty()) figure("changed", "Figure.Changed", std::to_string(changed_.size()), true);
    figure("failures", "Figure.Failures", std::to_string(result_.failures.size()), !result_.failures.empty());
  }

  ReportTable data() const {
    ReportTable table{"data", own("Heading.Data"), own("Tab.Data"), {}, {}, {3, 4, 5}, {}};
    bool unread = false;
    for (const auto& t : result_.tables) {
      if (t.written() == 0 && t.deleted == 0) continue;
      unread = unread || t.read == 0;
      table.rows.push_back({t.name, tableName(t.name), t.read == 0 ? "-" : std::to_string(t.read),
                            std::to_string(t.inserted), std::to_string(t.updated), std::to_string(t.deleted)});
    }
    if (table.rows.empty()) return {};
    table.columns = {column("Column.Table"),
                     column("Column.TableName"),
                     column("Column.RowsRead", CellKind::count),
                     column("Column.RowsNew", CellKind::count),
                     column("Column.RowsChanged", CellKind::count),
                     column("Column.RowsRemoved", CellKind::count)};
    if (unread) table.remarks.push_back(own("Data.InsideServer"));
    return table;
  }

  // Empty for a table without a name of its own.
  std::string tableName(const std::string& table) const {
    const std::string key = "Gljz.Host.Table." + platform::toLowerAscii(table);
    const std::string name = messages_.text(key);
    return name == key ? std::string() : name;
  }

  // A table with a title and a tab of its own.
  ReportTable newTable(const char* id, const std::string& name, std::size_t rows) const {
    ReportTable table;
    table.id = id;
    table.title = own(("Heading." + name).c_str(), {std::to_string(rows)});
    table.tab = own(("Tab." + name).c_str());
    return table;
  }

  // Partners or persons whose cleared items are not as much debit as credit.
  ReportTable imbalances() const {
    const auto& rows = result_.notCarried;
    const std::size_t cells = rows.front().size();
    ReportTable table = newTable("leftOut", "OutOfBalance", rows.size());
    table.columns = {gridColumn("Orvo.GL.TqGLJZ.00062", CellKind::code), gridColumn("Orvo.GL.TqGLJZ.00063")};
    if (cells == partnerCells) table.columns.push_back(gridColumn("Orvo.GL.TqGLJZ.00075"));
    if (cells == personCells) table.columns.push_back(gridColumn("Orvo.GL.TqGLJZ.00064"));
    if (cells == personCells) table.columns.push_back(gridColumn("Orvo.GL.TqGLJZ.00065"));
    table.columns.push_back(gridColumn("Orvo.GL.TqGLJZ.00066"));
    table.columns.push_back(gridColumn("Orvo.GL.TqGLJZ.00067", CellKind::amount));
    table.columns.push_back(gridColumn("Orvo.GL.TqGLJZ.00068", CellKind::amount));
    for (const Row& row : rows) table.rows.push_back(resized(row, cells));
    return table;
  }

  // Records with their reasons. One that the grid has several times stands once, with the number of its rows; an
  // account whose balance is missing has it beside it, where it was read.
  ReportTable records(const char* id, const char* name, const std::vector<Row>& rows) const {
    if (rows.empty()) return {};
    ReportTable table = newTable(id, name, rows.size());
    table.columns = {gridColumn("Orvo.GL.TqGLJZ.00095"), gridColumn("Orvo.GL.TqGLJZ.00096", CellKind::code),
                     gridColumn("Orvo.GL.TqGLJZ.00097"), gridColumn("Orvo.GL.TqGLJZ.00098"),
                     column("Column.Times", CellKind::count)};
    constexpr std::size_t code = 1, reason = 3;
    table.headings = reason;
    const auto balanceOf = [&](const Row& record) -> std::string {
      if (!result_.balance || !isAccountLeftOut(record, messages_)) return {};
      const auto found = result_.balance->leftOut.find(record[code]);
      return found == result_.balance->leftOut.end() ? std::string() : amountText(found->second);
    };
    const bool amounts = std::any_of(rows.begin(), rows.end(), [&](const Row& r) { return !balanceOf(r).empty(); });
    if (amounts) table.columns.push_back(column("Column.LostBalance", CellKind::amount));
    std::map<Row, std::size_t> times;
    std::vector<Row> order;
    for (const Row& row : rows)
      if (++times[row] == 1) order.push_back(row);
    // Reasons in the order in which they first came up, so that a reason's records stand together.
    std::map<std::string, std::size_t> rank;
    for (const Row& record : order) rank.emplace(record[reason], rank.size());
    std::stable_sort(order.begin(), order.end(),
                     [&](const Row& a, const Row& b) { return rank[a[reason]] < rank[b[reason]]; });
    for (Row& record : order) {
      const std::string count = std::to_string(times[record]), balance = balanceOf(record);
      table.rows.push_back(std::move(record));
      table.rows.back().push_back(count);
      if (amounts) table.rows.back().push_back(balance);
    }
    return table;
  }
  static Row resized(Row row, std::size_t cells) {
    row.resize(cells);
    for (std::string& cell : row) cell = platform::trim(cell);
    return row;
  }

  ReportTable failures() const {
    if (result_.failures.empty()) return {};
    ReportTable table{"failures",
                      own("Heading.Failures", {std::to_string(result_.failures.size())}),
                      own("Tab.Failures"),
                      {column("Column.Stage"), column("Column.Failure"), column("Column.Statement")},
                      {},
                      {},
                      {}};
    for (const auto& f : result_.failures)
      table.rows.push_back({journalTexts_.stage(f.stage), journalTexts_.translated(f.description), f.statement});
    return table;
  }

  ReportTable notes() const {
    if (result_.notes.empty()) return {};
    ReportTable table{"notes", own("Heading.Notes"), own("Tab.Notes"), {column("Heading.Notes")}, {}, {}, {}};
    for (const auto& n : result_.notes) table.rows.push_back({journalTexts_.translated(n)});
    return table;
  }

  ReportTable stages() const {
    if (result_.stages.empty()) return {};
    ReportTable table{"stages",
                      own("Heading.Stages"),
                      own("Tab.Stages"),
                      {column("Column.Stage"), column("Column.Statements", CellKind::count),
                       column("Column.RowsRead", CellKind::count), column("Column.RowsWritten", CellKind::count),
                       column("Column.Milliseconds", CellKind::milliseconds)},
                      {},
                      {4},
                      {}};
    for (const auto& s : result_.stages)
      table.rows.push_back({journalTexts_.stage(s.name), std::to_string(s.statements), std::to_string(s.rowsRead),
                            std::to_string(s.rowsWritten),
                            std::to_string(static_cast<std::int64_t>(s.milliseconds + 0.5))});
    return table;
  }

  const RunResult& result_;
  Messages messages_;
  JournalTexts journalTexts_;
  int code_;
  static constexpr std::size_t partnerCells = 6, personCells = 7;
  bool outOfBalance_ = false;
  std::vector<Row> leftOut_, changed_;  // rows of the grid
  ReportModel model_;
};

}  // namespace

bool isNumber(CellKind kind) {
  return kind == CellKind::count || kind == CellKind::amount || kind == CellKind::quantity ||
         kind == CellKind::milliseconds;
}

std::size_t ReportTable::index(CellKind kind) const {
  const auto found =
      std::find_if(columns.begin(), columns.end(), [kind](const ReportColumn& c) { return c.kind == kind; });
  return static_cast<std::size_t>(found - columns.begin());
}

const ReportTable* ReportModel::table(std::string_view id) const {
  const auto found = std::find_if(tables.begin(), tables.end(), [id](const ReportTable& t) { return t.id == id; });
  return found == tables.end() ? nullptr : &*found;
}

ReportModel reportModel(const RunResult& result) {
  return Builder(result).model();
}

}  // namespace host
