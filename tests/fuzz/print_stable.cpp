// What the parser understands can be said again: print(parse(x)) parses, and printing that gives the same text.

#include <optional>

#include "fuzz/fuzz.h"
#include "tsql/parser.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto printed = [](const std::string& text) {
    const tsql::TokenStream tokens = tsql::lex(text);
    return tsql::print(tsql::parse(tokens), tokens);
  };
  std::optional<std::string> once;
  const std::string text = fuzz::textOf(data, size);
  try {
    once = printed(text);
  } catch (const tsql::SqlError&) {
    return 0;  // not understood, so there is nothing to say
  }
  try {
    const std::string twice = printed(*once);
    if (twice != *once) fuzz::fail("parse, print, parse is stable", text + "\nonce:  " + *once + "\ntwice: " + twice);
  } catch (const tsql::SqlError& e) {
    constexpr int tooDeep = 191;  // brackets that the printer adds may go beyond the parser's bounds
    if (e.number == tooDeep) return 0;
    fuzz::fail("what is printed can be parsed", text + "\nprinted: " + *once + "\nfails: " + e.what());
  }
  return 0;
}
