#include "result_writer.h"

#include <cstdio>
#include <vector>

#include "host/display_width.h"
#include "host/json_text.h"

namespace cli {
namespace {

using embedded::ColumnInfo;
using platform::Value;
using Kind = Value::Kind;

void put(const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
}

// Money and numbers with all their digits, flags as 0 and 1, dates as their default text, bytes in hexadecimal.
std::string plainText(const Value& v) {
  switch (v.kind()) {
    case Kind::null:
      return "NULL";
    case Kind::boolean:
      return v.asBool() ? "1" : "0";
    case Kind::bytes: {
      constexpr char digits[] = "0123456789ABCDEF";
      std::string out = "0x";
      for (const auto b : v.asBytes()) {
        out += digits[b >> 4];
        out += digits[b & 15];
      }
      return out;
    }
    default:
      return v.asText();
  }
}

// A decimal that fits no number kind comes as its text; it is a number all the same.
bool isNumber(const Value& v, const ColumnInfo& column) {
  switch (v.kind()) {
    case Kind::boolean:
    case Kind::integer:
    case Kind::money:
    case Kind::real:
      return true;
    case Kind::text:
      return tsql::isNumeric(column.type.kind);
    default:
      return false;
  }
}

class JsonWriter final : public ResultWriter {
public:
  void columns(const std::vector<ColumnInfo>& columns) override {
    columns_ = columns;
    names_.clear();
    for (const ColumnInfo& c : columns) names_.push_back(host::jsonString(c.name) + ": ");
    put("[");
    rows_ = 0;
    open_ = true;
  }
  void row(const std::vector<Value>& row) override {
    line_ = rows_++ == 0 ? "\n {" : ",\n {";
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (i > 0) line_ += ", ";
      line_ += names_[i];
      if (row[i].isNull())
        line_ += "null";
      else if (isNumber(row[i], columns_[i]))
        line_ += plainText(row[i]);
      else
        host::appendJsonString(line_, plainText(row[i]));
    }
    line_ += '}';
    put(line_);
  }
  void endRows(std::int64_t) override { close(); }

protected:
  void breakOff() override { close(); }

private:
  void close() {
    if (open_) put(rows_ == 0 ? "]\n" : "\n]\n");
    open_ = false;
  }
  std::vector<ColumnInfo> columns_;
  std::vector<std::string> names_;
  std::string line_;
  std::int64_t rows_ = 0;
  bool open_ = false;
};

class CsvWriter final : public ResultWriter {
public:
  void columns(const std::vector<ColumnInfo>& columns) override {
    if (sets_++ > 0) put("\n");
    std::string line;
    for (const ColumnInfo& c : columns) cell(line, c.name, false);
    end(line);
  }
  // Null is nothing at all, an empty text is a pair of quotes.
  void row(const std::vector<Value>& row) override {
    std::string line;
    for (const Value& v : row) cell(line, v.isNull() ? "" : plainText(v), v.kind() == Kind::text);
    end(line);
  }
  void endRows(std::int64_t) override {}

private:
  void cell(std::string& line, const std::string& text, bool quoteEmpty) {
    if (!first_) line += ',';
    first_ = false;
    if (text.find_first_of(",\"\r\n") == std::string::npos && !(text.empty() && quoteEmpty)) {
      line += text;
      return;
    }
    line += '"';
    for (const char c : text) {
      if (c == '"') line += c;
      line += c;
    }
    line += '"';
  }
  void end(std::string& line) {
    put(line + "\n");
    first_ = true;
  }
  bool first_ = true;
  int sets_ = 0;
};

// Holds a result set until its end: the widths depend on all rows.
class TableWriter final : public ResultWriter {
public:
  void columns(const std::vector<ColumnInfo>& columns) override {
    cells_.clear();
    right_.assign(columns.size(), true);
    std::vector<std::string> names;
    for (const ColumnInfo& c : columns) names.push_back(c.name);
    for (std::size_t i = 0; i < columns.size(); ++i) right_[i] = tsql::isNumeric(columns[i].type.kind);
    cells_.push_back(std::move(names));
    open_ = true;
  }
  void row(const std::vector<Value>& row) override {
    std::vector<std::string> line;
    for (const Value& v : row) line.push_back(oneLine(plainText(v)));
    cells_.push_back(std::move(line));
  }
  void endRows(std::int64_t) override { close(); }
  void affected(std::int64_t count) override {
    put("(" + std::to_string(count) + (count == 1 ? " row affected)\n" : " rows affected)\n"));
  }

protected:
  void breakOff() override { close(); }

private:
  static std::string oneLine(std::string text) {
    for (char& c : text)
      if (c == '\n' || c == '\r' || c == '\t') c = ' ';
    return text;
  }
  void close() {
    if (!open_) return;
    open_ = false;
    std::vector<std::size_t> widths(right_.size(), 1);
    for (const auto& line : cells_)
      for (std::size_t i = 0; i < line.size(); ++i) widths[i] = std::max(widths[i], host::displayWidth(line[i]));
    for (std::size_t n = 0; n < cells_.size(); ++n) {
      std::string text;
      for (std::size_t i = 0; i < cells_[n].size(); ++i)
        text += (i > 0 ? "  " : "") + host::paddedToWidth(cells_[n][i], widths[i], right_[i]);
      text.erase(text.find_last_not_of(' ') + 1);
      put(text + "\n");
      if (n == 0) rule(widths);
    }
    const std::size_t rows = cells_.size() - 1;
    put("(" + std::to_string(rows) + (rows == 1 ? " row)\n" : " rows)\n"));
  }
  static void rule(const std::vector<std::size_t>& widths) {
    std::string text;
    for (std::size_t i = 0; i < widths.size(); ++i) text += (i > 0 ? "  " : "") + std::string(widths[i], '-');
    put(text + "\n");
  }
  std::vector<std::vector<std::string>> cells_;
  std::vector<bool> right_;
  bool open_ = false;
};

}  // namespace

void ResultWriter::failure(const tsql::SqlError& error) {
  anyFailure_ = true;
  breakOff();
  std::fflush(stdout);
  std::fprintf(stderr, "Msg %d: %s\n", error.number, error.what());
}

void ResultWriter::message(const std::string& text) {
  std::fprintf(stderr, "%s\n", text.c_str());
}

std::unique_ptr<ResultWriter> makeResultWriter(const std::string& format) {
  if (format == "json") return std::make_unique<JsonWriter>();
  if (format == "csv") return std::make_unique<CsvWriter>();
  return std::make_unique<TableWriter>();
}

}  // namespace cli
