#pragma once
// ReportModel: what a run did, in the words that a person reads and before any format. Every report file is made from
// it, so that all of them say the same.
//
//   const ReportModel model = reportModel(carryForward(options));
//   writeFile("run.html", reportHtml(model));
//
// A further page is a further table of the model; no format has to know of it.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/carry_forward.h"

namespace host {

// What a column's cells are; their text is the same in every format, its type, side and colour are not.
enum class CellKind {
  text,
  code,          // digits that are no number: an account, a customer
  count,         // a whole number
  amount,        // money in two decimals, no grouping; may name a currency or a unit behind the number
  quantity,      // a number
  milliseconds,  // a whole number
  verdict,       // "Y" right, "X" wrong, empty neither
};
bool isNumber(CellKind kind);

struct ReportColumn {
  std::string title;
  CellKind kind = CellKind::text;
};

struct ReportTable {
  std::string id;     // "data", "leftOut", ...: the same in every language; a section of CSV, an anchor of HTML
  std::string title;  // heading
  std::string tab;    // the same in a word or two: no longer than a sheet's tab, 31 characters
  std::vector<ReportColumn> columns;
  std::vector<std::vector<std::string>> rows;  // as many cells as columns; a number may be an empty text or "-"
  std::vector<std::size_t> bars;               // columns whose counts are parts of one bar, in the order of the parts
  std::vector<std::string> remarks;            // sentences below the table
  // A list of lines reads better in plain text by this column's texts, each a heading of its rows; columns.size() and
  // above for a table of its own.
  std::size_t headings = static_cast<std::size_t>(-1);

  std::size_t index(CellKind kind) const;  // first column of the kind; columns.size() when there is none
};

// One number that stands for a part of the run.
struct ReportFigure {
  std::string id;  // "rows", "right", "wrong", "leftOut", "changed", "failures"
  std::string label, value;
  bool attention = false;  // somebody has to look at it
};

struct ReportFact {
  std::string label, value;
};

enum class Grade { good, attention, stopped, failed };

struct ReportModel {
  std::string language;  // zh-CN, zh-TW, en-US
  std::string title;     // "上年余额结转报告（2005年结转至2006年）"
  Grade grade = Grade::good;
  std::string headline;                // the outcome in a sentence
  std::vector<std::string> sentences;  // what there is to add: messages, where and why it stopped, what was undone
  std::vector<ReportFact> facts;       // account, company, years, operator, day, duration; none that is empty
  std::vector<ReportFigure> figures;
  std::vector<ReportTable> tables;  // those that have rows, the most important first

  const ReportTable* table(std::string_view id) const;  // null when the run has none
};

ReportModel reportModel(const RunResult& result);

}  // namespace host
