#include "odbc/connection_string.h"

#include <algorithm>

#include "platform/run_time_error.h"
#include "platform/value.h"

namespace odbc {
namespace {

using platform::RunTimeError;

// A keyword that ends in one of these has a value that nobody may read: PWD, NewPassword, KeyStoreSecret, AccessToken,
// SSLKeyPassword, ClientKey, and what a driver has beside them.
constexpr std::string_view secretEndings[] = {"pwd", "password", "passphrase", "secret", "token", "clientkey"};
constexpr std::string_view hidden = "***";
// A shorter value is not searched for in other texts: it would be found inside their ordinary words, and what is
// blotted out there would tell it.
constexpr std::size_t shortestSearched = 4;

bool isSecret(std::string_view keyword) {
  const std::string word = platform::toLowerAscii(keyword);
  return std::any_of(std::begin(secretEndings), std::end(secretEndings),
                     [&](std::string_view ending) { return word.ends_with(ending); });
}

// Only where the value could not be read otherwise: not every driver takes braces everywhere.
bool needsBraces(std::string_view value) {
  return value.find_first_of(";{}") != std::string_view::npos || value != platform::trim(value);
}

std::string braced(const std::string& value) {
  std::string out = "{";
  for (const char c : value) {
    out += c;
    if (c == '}') out += c;
  }
  return out + "}";
}

// The value that begins at `at`, which moves to the ';' behind it or to the end.
std::string readValue(std::string_view text, std::size_t& at, std::string_view keyword) {
  while (at < text.size() && text[at] == ' ') ++at;
  if (at >= text.size() || text[at] != '{') {
    const std::size_t end = std::min(text.find(';', at), text.size());
    const std::string value = platform::trim(std::string(text.substr(at, end - at)));
    at = end;
    return value;
  }
  std::string value;
  for (++at; at < text.size(); ++at) {
    if (text[at] == '}') {
      if (at + 1 >= text.size() || text[at + 1] != '}') {
        at = std::min(text.find(';', at), text.size());
        return value;
      }
      ++at;
    }
    value += text[at];
  }
  throw RunTimeError(RunTimeError::invalidCall,
                     "connection string: the brace that opens the value of " + std::string(keyword) + " is not closed");
}

void replaceEach(std::string& text, const std::string& what) {
  for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + hidden.size()))
    text.replace(at, what.size(), hidden);
}

}  // namespace

ConnectionString::ConnectionString(std::string_view text) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::size_t end = std::min(text.find(';', at), text.size());
    if (platform::trim(text.substr(at, end - at)).empty()) {
      at = end;
      continue;
    }
    const std::size_t equals = text.find('=', at);
    if (equals == std::string_view::npos || equals > end)
      throw RunTimeError(RunTimeError::invalidCall, "connection string: a part of it is not of the form keyword=value");
    std::string keyword = platform::trim(text.substr(at, equals - at));
    if (keyword.empty())
      throw RunTimeError(RunTimeError::invalidCall, "connection string: a value stands without a keyword");
    at = equals + 1;
    std::string value = readValue(text, at, keyword);
    parts_.emplace_back(std::move(keyword), std::move(value));
  }
}

const std::string* ConnectionString::find(std::string_view keyword) const {
  const auto found = std::find_if(parts_.begin(), parts_.end(),
                                  [&](const auto& part) { return platform::equalsIgnoreCase(part.first, keyword); });
  return found == parts_.end() ? nullptr : &found->second;
}

void ConnectionString::remove(std::string_view keyword) {
  std::erase_if(parts_, [&](const auto& part) { return platform::equalsIgnoreCase(part.first, keyword); });
}

void ConnectionString::set(std::string_view keyword, std::string value) {
  remove(keyword);
  parts_.emplace_back(keyword, std::move(value));
}

void ConnectionString::complete(const ConnectionString& other) {
  for (const auto& part : other.parts_)
    if (!find(part.first)) parts_.push_back(part);
}

ConnectionString ConnectionString::takeSecrets() {
  ConnectionString secrets;
  for (const auto& part : parts_)
    if (isSecret(part.first)) secrets.parts_.push_back(part);
  std::erase_if(parts_, [](const auto& part) { return isSecret(part.first); });
  return secrets;
}

std::string ConnectionString::text() const {
  std::string out;
  for (const auto& [keyword, value] : parts_)
    out += (out.empty() ? "" : ";") + keyword + "=" + (needsBraces(value) ? braced(value) : value);
  return out;
}

std::vector<std::string> ConnectionString::secretValues() const {
  std::vector<std::string> values;
  for (const auto& [keyword, value] : parts_)
    if (isSecret(keyword) && !value.empty()) values.push_back(value);
  return values;
}

std::string redacted(std::string_view text, const std::vector<std::string>& secrets) {
  std::string out(text);
  for (const std::string& secret : secrets)
    if (secret.size() >= shortestSearched) {
      replaceEach(out, braced(secret));
      replaceEach(out, secret);
    }
  const std::string lower = platform::toLowerAscii(out);
  std::string result;
  std::size_t done = 0;
  for (std::size_t at = 0; at < out.size(); ++at) {
    for (const std::string_view word : secretEndings) {
      if (lower.compare(at, word.size(), word) != 0) continue;
      std::size_t equals = lower.find_first_not_of(' ', at + word.size());
      if (equals == std::string::npos || lower[equals] != '=') continue;
      result += out.substr(done, equals + 1 - done);
      result += hidden;
      std::size_t end = out.find_first_not_of(' ', equals + 1);
      if (end != std::string::npos && out[end] == '{') {
        // Doubled braces belong to the value; one that is not closed hides all that follows.
        do end = out.find('}', end + 1);
        while (end != std::string::npos && end + 1 < out.size() && out[end + 1] == '}' && ++end);
        if (end != std::string::npos) ++end;
      } else if (end != std::string::npos) {
        end = out.find(';', end);
      }
      done = std::min(end, out.size());
      at = done;
      break;
    }
  }
  if (done < out.size()) result += out.substr(done);
  return result;
}

}  // namespace odbc
