#pragma once
// The corpus files (*.test) as blocks. The format stands in README.md beside this file.

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace dialect {

enum class BlockKind { statement, query, count, connection, database, script };

struct Block {
  BlockKind kind = BlockKind::statement;
  int line = 0;           // of the block's first line, comments aside, from 1
  bool optional = false;  // "# optional": the batch may fail, but not give another result

  std::string sql;     // statement, query: what is sent, lines joined by line feeds
  std::string error;   // statement: the expected failure as written, "2601|2627" or a word; empty when none is expected
  std::string name;    // connection, database, script: which one
  bool close = false;  // connection: it ends here
  std::int64_t affected = 0;      // count: rows affected
  std::size_t columns = 0;        // query
  bool anyOrder = false;          // query: rowsort
  bool onlyRowCount = false;      // query: rowcount; rows holds the number
  std::vector<std::string> rows;  // query: expected rows, columns separated by tabs
};

// A file that is not in the format: "money.test:12: what".
class CorpusError : public std::runtime_error {
public:
  CorpusError(std::string_view file, int line, const std::string& what);
};

// The blocks of a text. file is used for messages only. Throws CorpusError.
std::vector<Block> parseCorpus(std::string_view text, std::string_view file);

// The batches of a script: what stands between lines that hold nothing but GO. Batches of blanks are left out.
std::vector<std::string> scriptBatches(std::string_view text);

// The whole file. Throws std::runtime_error with its path when it cannot be read.
std::string readFile(const std::filesystem::path& path);

}  // namespace dialect
