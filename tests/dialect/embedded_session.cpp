#include "dialect/embedded_session.h"

#include <random>
#include <stdexcept>
#include <system_error>

#include "embedded/recordset.h"
#include "tsql/parser.h"

namespace dialect {

namespace {

// Gathers what comes from a batch.
class AnswerSink : public embedded::ResultSink {
public:
  void columns(const std::vector<embedded::ColumnInfo>& columns) override {
    columns_ = columns;
    answer.columns = columns.size();
  }

  void row(const std::vector<platform::Value>& row) override {
    std::string text;
    for (std::size_t i = 0; i < row.size(); ++i) {
      std::string cell = cellText(row[i]);
      // A decimal may come as text, with all the digits of its scale.
      if (i < columns_.size() && columns_[i].type.kind == tsql::TypeKind::decimal && !row[i].isNull()) {
        cell = plainNumber(std::move(cell));
      }
      text += (i == 0 ? "" : "\t") + cell;
    }
    answer.rows.push_back(std::move(text));
  }

  void endRows(std::int64_t) override {}
  void affected(std::int64_t count) override { answer.affected = count; }
  void failure(const tsql::SqlError& error) override { answer.failures.push_back({error.number, error.what()}); }

  Answer answer;

private:
  std::vector<embedded::ColumnInfo> columns_;
};

bool isOneSelection(const std::string& batch) {
  try {
    const auto tokens = tsql::lex(batch);
    const auto tree = tsql::parse(tokens);
    return tree.statements.size() == 1 && tree.parameters == 0 &&
           tree.statements[0]->kind == tsql::ast::StatementKind::select &&
           !static_cast<const tsql::ast::SelectStatement&>(*tree.statements[0]).select->into;
  } catch (const tsql::SqlError&) {
    return false;
  }
}

class EmbeddedSession : public Session {
public:
  EmbeddedSession(const std::shared_ptr<embedded::Server>& server, const std::string& database, const Setting& setting)
      : session_(std::make_shared<embedded::Session>(server, database)), read_(setting.read) {
    session_->setStatementCache(setting.statementCache);
    if (setting.fetchBlock > 0) session_->setFetchBlock(setting.fetchBlock);
  }

  Answer run(const std::string& batch) override {
    if (read_ != Setting::Read::session && isOneSelection(batch)) return readThroughCursor(batch);
    AnswerSink sink;
    session_->execute(batch, sink);
    return std::move(sink.answer);
  }

private:
  Answer readThroughCursor(const std::string& batch) {
    Answer answer;
    try {
      const auto rows = embedded::openRecordset(
          session_, batch,
          read_ == Setting::Read::serverCursor ? platform::CursorLocation::server : platform::CursorLocation::client);
      answer.columns = rows->FieldCount();
      for (; !rows->Eof(); rows->MoveNext()) {
        std::string text;
        for (std::size_t i = 0; i < answer.columns; ++i) text += (i == 0 ? "" : "\t") + cellText(rows->Field(i));
        answer.rows.push_back(std::move(text));
      }
      rows->Close();
    } catch (const platform::RunTimeError& e) {
      answer.failures.push_back({e.server() ? e.server()->number : e.number(), e.description()});
    }
    return answer;
  }

  std::shared_ptr<embedded::Session> session_;
  Setting::Read read_;
};

std::filesystem::path newFolder() {
  std::random_device random;
  for (int tries = 0; tries < 100; ++tries) {
    const auto folder = std::filesystem::temp_directory_path() / ("gljz-dialect-" + std::to_string(random()));
    if (std::filesystem::create_directory(folder)) return folder;
  }
  throw std::runtime_error("no folder could be made in " + std::filesystem::temp_directory_path().string());
}

}  // namespace

TemporaryServer::TemporaryServer() : folder_(newFolder()), server_(embedded::Server::open(folder_.string())) {
  const auto session = open("", {"set-up"});
  for (const char* database : {"d1", "d2"}) {
    const Answer answer = session->run(std::string("create database ") + database);
    if (!answer.failures.empty()) throw std::runtime_error("create database: " + answer.failures.front().message);
  }
}

TemporaryServer::~TemporaryServer() {
  server_.reset();
  std::error_code ignored;  // what is left over lies in the folder for temporary files
  std::filesystem::remove_all(folder_, ignored);
}

std::unique_ptr<Session> TemporaryServer::open(const std::string& database, const Setting& setting) {
  return std::make_unique<EmbeddedSession>(server_, database, setting);
}

}  // namespace dialect
