#pragma once
// RunTimeError: the one failure type that crosses the platform's interfaces.

#include <optional>
#include <stdexcept>
#include <string>

namespace platform {

// What a database server said about a statement.
struct ServerFailure {
  int number = 0;  // the server's message number: 208, 2627, ...
  int severity = 16;
  int line = 1;           // line of the batch, from 1
  std::string message;    // the server's own text
  std::string statement;  // the batch that was sent
};

class RunTimeError : public std::runtime_error {
public:
  // Numbers of the platform: 5 invalid call, 6 overflow, 13 type mismatch, 91 object not set, 94 invalid use of Null,
  // 429 component cannot be created, 3021 no current record, 3265 no such field, 3704 object is closed,
  // 3709 connection is closed, -2147217900 failure that the server reported.
  static constexpr int invalidCall = 5, overflow = 6, typeMismatch = 13, objectNotSet = 91, invalidUseOfNull = 94,
                       cannotCreate = 429, noCurrentRecord = 3021, noSuchField = 3265, objectClosed = 3704,
                       connectionClosed = 3709, serverError = -2147217900;

  RunTimeError(int number, const std::string& description) : std::runtime_error(description), number_(number) {}
  RunTimeError(ServerFailure failure)
      : std::runtime_error(failure.message), number_(serverError), server_(std::move(failure)) {}

  int number() const { return number_; }
  std::string description() const { return what(); }
  const std::optional<ServerFailure>& server() const { return server_; }

private:
  int number_;
  std::optional<ServerFailure> server_;
};

}  // namespace platform
