#include "host/flat_json.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>

namespace host {
namespace {

class Reader {
public:
  explicit Reader(std::string_view text) : text_(text) {}

  std::map<std::string, std::string, std::less<>> object() {
    std::map<std::string, std::string, std::less<>> pairs;
    expect('{');
    if (!accept('}')) {
      do {
        std::string key = string();
        expect(':');
        if (!pairs.emplace(std::move(key), string()).second) fail("a key stands twice");
      } while (accept(','));
      expect('}');
    }
    blanks();
    if (at_ != text_.size()) fail("text behind the object");
    return pairs;
  }

private:
  [[noreturn]] void fail(const std::string& what) const {
    const auto line = 1 + std::count(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(at_), '\n');
    throw std::runtime_error("line " + std::to_string(line) + ": " + what);
  }
  void blanks() {
    while (at_ < text_.size() && std::string_view(" \t\r\n").find(text_[at_]) != std::string_view::npos) ++at_;
  }
  bool accept(char c) {
    blanks();
    if (at_ >= text_.size() || text_[at_] != c) return false;
    ++at_;
    return true;
  }
  void expect(char c) {
    if (!accept(c)) fail(std::string("'") + c + "' expected");
  }
  char next() {
    if (at_ >= text_.size()) fail("the text ends inside a string");
    return text_[at_++];
  }

  std::string string() {
    expect('"');
    std::string out;
    for (char c = next(); c != '"'; c = next()) {
      if (c != '\\') {
        out += c;
        continue;
      }
      switch (c = next()) {
        case 'n':
          out += '\n';
          break;
        case 't':
          out += '\t';
          break;
        case 'r':
          out += '\r';
          break;
        case 'b':
          out += '\b';
          break;
        case 'f':
          out += '\f';
          break;
        case 'u':
          appendUtf8(out, codePoint());
          break;
        case '"':
        case '\\':
        case '/':
          out += c;
          break;
        default:
          fail("unknown escape");
      }
    }
    return out;
  }

  std::uint32_t fourHex() {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) {
      const char c = next();
      std::uint32_t digit = 0;
      if (c >= '0' && c <= '9')
        digit = static_cast<std::uint32_t>(c - '0');
      else if (c >= 'a' && c <= 'f')
        digit = static_cast<std::uint32_t>(c - 'a' + 10);
      else if (c >= 'A' && c <= 'F')
        digit = static_cast<std::uint32_t>(c - 'A' + 10);
      else
        fail("four hexadecimal digits expected");
      value = value << 4 | digit;
    }
    return value;
  }
  std::uint32_t codePoint() {
    const std::uint32_t first = fourHex();
    if (first < 0xD800 || first > 0xDFFF) return first;
    if (first > 0xDBFF || next() != '\\' || next() != 'u') fail("half of a surrogate pair");
    const std::uint32_t second = fourHex();
    if (second < 0xDC00 || second > 0xDFFF) fail("half of a surrogate pair");
    return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
  }
  static void appendUtf8(std::string& out, std::uint32_t c) {
    const auto byte = [&out](std::uint32_t b) { out += static_cast<char>(b); };
    if (c < 0x80) {
      byte(c);
    } else if (c < 0x800) {
      byte(0xC0 | c >> 6), byte(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      byte(0xE0 | c >> 12), byte(0x80 | (c >> 6 & 0x3F)), byte(0x80 | (c & 0x3F));
    } else {
      byte(0xF0 | c >> 18), byte(0x80 | (c >> 12 & 0x3F)), byte(0x80 | (c >> 6 & 0x3F)), byte(0x80 | (c & 0x3F));
    }
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace

std::map<std::string, std::string, std::less<>> parseFlatJson(std::string_view text) {
  return Reader(text).object();
}

}  // namespace host
