#pragma once
// Runs the blocks of one corpus file and says which of them were answered otherwise than expected.

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "dialect/answer.h"
#include "dialect/corpus.h"

namespace dialect {

// One connection to a server. Its end closes it.
class Session {
public:
  virtual ~Session() = default;
  virtual Answer run(const std::string& batch) = 0;
};

// A new connection that stands in a database. A failure to open is thrown and counts against the block that needed it.
using OpenSession = std::function<std::unique_ptr<Session>(const std::string& database)>;

struct Difference {
  int line = 0;      // of the block in its file
  std::string text;  // what was expected and what came, several lines, the batch at the end
};

struct Outcome {
  int passed = 0;
  int declined = 0;  // optional blocks that the server does not support, and what builds on them
  std::vector<Difference> failed;
};

class Runner {
public:
  // folder holds the scripts that blocks name.
  Runner(OpenSession open, std::filesystem::path folder) : open_(std::move(open)), folder_(std::move(folder)) {}

  // Runs all blocks in order, whatever fails, and closes the connections at the end. Scripts and switches of
  // connection are counted only when they fail.
  Outcome run(const std::vector<Block>& blocks);

private:
  void runBlock(const Block& block);
  void runStatement(const Block& block);
  void runQuery(const Block& block);
  void runScript(const Block& block);
  void checkCount(const Block& block);
  void changeConnection(const Block& block);

  Session& session();
  Answer send(const std::string& batch);
  void pass();
  void decline();
  void fail(const Block& block, const std::string& what);

  OpenSession open_;
  std::filesystem::path folder_;

  Outcome outcome_;
  std::map<std::string, std::unique_ptr<Session>> sessions_;  // by the name of the connection
  std::string connection_;
  std::string database_;
  std::int64_t affected_ = -1;      // by the last batch
  bool lastDeclined_ = false;       // the last batch was an optional one that failed
  bool statementDeclined_ = false;  // an optional statement has failed: optional blocks behind it may differ
};

}  // namespace dialect
