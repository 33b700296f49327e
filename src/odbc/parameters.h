#pragma once
// Parameters: the values behind the ? of a statement, kept where the driver reads them.

#include <memory>
#include <string>
#include <vector>

#include "odbc/columns.h"
#include "platform/value.h"

namespace odbc {

class Parameters {
public:
  explicit Parameters(Statement& statement) : statement_(statement) {}
  ~Parameters();
  Parameters(const Parameters&) = delete;
  Parameters& operator=(const Parameters&) = delete;

  // The value of the n-th ?, from 0. target: the column that it is for, null when there is none; a value of another
  // kind goes as what it is, and the server converts it. Amounts go as decimal digits, never as floating point.
  void set(std::size_t n, const platform::Value& value, const Column* target = nullptr);
  // A text with the size in characters that the statement declares for it.
  void setText(std::size_t n, const std::string& text, int size);

private:
  struct Parameter {
    SQLSMALLINT cType = 0, sqlType = 0, scale = 0;
    SQLULEN size = 0;
    SQLPOINTER data = nullptr;
    SQLLEN bytes = 0;      // that stand at data
    SQLLEN indicator = 0;  // bytes, or SQL_NULL_DATA
    // Where the value stands, by its kind.
    SQLINTEGER integer = 0;
    SQLBIGINT bigInteger = 0;
    SQLDOUBLE real = 0;
    unsigned char flag = 0;
    SQL_TIMESTAMP_STRUCT time{};
    std::string digits;
    std::u16string text;
    platform::Bytes binary;
  };
  Parameter& at(std::size_t n);
  void fill(Parameter& p, const platform::Value& value, const Column* target);
  void fillText(Parameter& p, const std::string& text, SQLSMALLINT sqlType, SQLULEN size);

  Statement& statement_;
  std::vector<std::unique_ptr<Parameter>> parameters_;  // the driver keeps their addresses
};

}  // namespace odbc
