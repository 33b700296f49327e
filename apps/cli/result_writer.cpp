#include "result_writer.h"

#include <cstdio>
#include <optional>
#include <vector>

#include "host/json_text.h"
#include "terminal.h"

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
    if (sets_++ > 0)
      put("\n");
    else if (outputIsFile())
      put("\xEF\xBB\xBF");
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
  explicit TableWriter(const TableLook& look) : look_(look) {}
  void columns(const std::vector<ColumnInfo>& columns) override {
    std::vector<TableColumn> shown;
    for (const ColumnInfo& c : columns)
      shown.push_back({c.name, tsql::isNumeric(c.type.kind), tsql::isText(c.type.kind) || tsql::isBinary(c.type.kind)});
    table_.emplace(std::move(shown));
  }
  void row(const std::vector<Value>& row) override {
    std::vector<TableCell> cells;
    for (const Value& v : row) cells.push_back({plainText(v), v.isNull()});
    table_->row(std::move(cells));
  }
  void endRows(std::int64_t) override { close(); }
  void affected(std::int64_t count) override {
    put("(" + std::to_string(count) + (count == 1 ? " row affected)\n" : " rows affected)\n"));
  }

protected:
  void breakOff() override { close(); }

private:
  void close() {
    if (!table_) return;
    put(table_->text(look_));
    const std::size_t rows = table_->rows();
    put("(" + std::to_string(rows) + (rows == 1 ? " row)\n" : " rows)\n"));
    table_.reset();
  }
  TableLook look_;
  std::optional<TextTable> table_;
};

}  // namespace

void ResultWriter::failure(const tsql::SqlError& error) {
  anyFailure_ = true;
  breakOff();
  std::fflush(stdout);
  const std::string text =
      failureText_ ? failureText_(error) : "Msg " + std::to_string(error.number) + ": " + error.what() + "\n";
  std::fputs(text.c_str(), stderr);
}

void ResultWriter::message(const std::string& text) {
  std::fprintf(stderr, "%s\n", text.c_str());
}

std::unique_ptr<ResultWriter> makeResultWriter(const std::string& format, const TableLook& look) {
  if (format == "json") return std::make_unique<JsonWriter>();
  if (format == "csv") return std::make_unique<CsvWriter>();
  return std::make_unique<TableWriter>(look);
}

}  // namespace cli
