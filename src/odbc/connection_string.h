#pragma once
// Connection strings: keywords with values, apart from the secrets among them.
//
//   ConnectionString s("Driver={FreeTDS};Server=db1;UID=ledger;PWD=x");
//   s.takeSecrets();   // "PWD=x": never again part of s
//   s.text();          // "Driver={FreeTDS};Server=db1;UID=ledger"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace odbc {

class ConnectionString {
public:
  ConnectionString() = default;
  // Parts "keyword=value" with ';' between them; a value in braces may hold ';', and '}}' for '}'. RunTimeError 5 for a
  // part without '=' and for a brace that is not closed; its text names the keyword at the most.
  explicit ConnectionString(std::string_view text);

  // Keywords are compared without regard to case. Of several the first counts, as for the driver manager.
  const std::string* find(std::string_view keyword) const;
  void set(std::string_view keyword, std::string value);  // in place of all that are there, else behind them
  void remove(std::string_view keyword);
  // Puts in what this does not have.
  void complete(const ConnectionString& other);
  // Removes the secrets (passwords, tokens) and returns them.
  ConnectionString takeSecrets();
  bool empty() const { return parts_.empty(); }

  std::string text() const;  // values in braces where they need them

  // The values of the secrets, so that texts of others can be searched for them.
  std::vector<std::string> secretValues() const;

private:
  std::vector<std::pair<std::string, std::string>> parts_;
};

// The text with the value of every secret keyword in it replaced by "***", wherever it stands, and every one of the
// given values too. For texts that come from elsewhere: a driver's message, an address that could not be read.
std::string redacted(std::string_view text, const std::vector<std::string>& secrets = {});

}  // namespace odbc
