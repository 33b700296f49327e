#pragma once
// The way of a batch through the embedded server, as the sections of a golden entry.

#include <filesystem>
#include <memory>
#include <string>

#include "embedded/server.h"

namespace golden {

// A server in a folder of its own: databases d1 (closing year), d2 (new year, the current one), TqSystem, with the
// tables of the corpus and those of setup.sql.
class Pipeline {
public:
  Pipeline();
  ~Pipeline();
  Pipeline(const Pipeline&) = delete;
  Pipeline& operator=(const Pipeline&) = delete;

  // The sections. What defines something (tables, indexes, procedures, work tables by select into) is also run, so that
  // the statements behind it find it; the others are not. A failure is a section of its own.
  std::string sections(const std::string& batch);

private:
  std::string statement(const std::string& text, bool definesSomething);
  std::string run(const std::string& text);  // what it changed in SQLite's schema
  std::string schema();
  void runScript(const std::string& file);

  std::filesystem::path folder_;
  std::shared_ptr<embedded::Server> server_;
  std::unique_ptr<embedded::Session> session_;
};

// Long SQL on several lines: before each clause that stands in no brackets, and behind a comma where a line gets long.
// Without the line feeds and the blanks behind them (one blank in place of them before a clause) it is the text.
std::string folded(const std::string& sql);

}  // namespace golden
