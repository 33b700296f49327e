#pragma once
// A connection that remembers what was asked of it and can be told to fail.

#include <memory>
#include <string>
#include <vector>

#include "platform/database.h"

namespace gljz::test {

struct SpiedStatement {
  std::string database;
  std::string text;  // "begin", "commit", "rollback", "open", "close" for what is no statement
  bool raw = false;  // over the underlying database connection
};

struct Spy {
  std::vector<SpiedStatement> statements;
  std::string failAt;  // the next statement that holds this text fails, once; empty: none
};

// database is read off the connection text when it is opened.
std::shared_ptr<platform::Connection> spyConnection(std::shared_ptr<Spy> spy,
                                                    std::shared_ptr<platform::Connection> inner);

}  // namespace gljz::test
