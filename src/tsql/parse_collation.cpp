// Collations. All text compares by the server's own one, Chinese_PRC_CI_AS: its name is read over wherever it stands,
// another one, which would change results, is refused.

#include "tsql/ascii.h"
#include "tsql/parser_impl.h"

namespace tsql {

namespace {

// What a collation's name begins with: the languages that the server knows.
constexpr std::string_view languages[] = {"albanian",       "arabic",
                                          "azeri",          "chinese_",
                                          "croatian",       "cyrillic_",
                                          "czech",          "danish_",
                                          "divehi",         "estonian",
                                          "finnish_",       "french",
                                          "georgian_",      "german_",
                                          "greek",          "hebrew",
                                          "hindi",          "hungarian",
                                          "icelandic",      "indic_",
                                          "japanese",       "kazakh",
                                          "korean",         "latin1_",
                                          "latvian",        "lithuanian",
                                          "macedonian",     "mexican_",
                                          "modern_spanish", "polish",
                                          "romanian",       "slovak",
                                          "slovenian",      "sql_",
                                          "syriac",         "tatar",
                                          "thai",           "traditional_spanish",
                                          "turkish",        "ukrainian",
                                          "urdu",           "uzbek",
                                          "vietnamese"};

// What it ends with: what the collation tells apart.
constexpr std::string_view sensitivities[] = {
    "_bin",      "_bin2",     "_ci_ai",       "_ci_as",       "_cs_ai",       "_cs_as",
    "_ci_ai_ks", "_ci_as_ks", "_cs_ai_ks",    "_cs_as_ks",    "_ci_ai_ws",    "_ci_as_ws",
    "_cs_ai_ws", "_cs_as_ws", "_ci_ai_ks_ws", "_ci_as_ks_ws", "_cs_ai_ks_ws", "_cs_as_ks_ws"};

bool isCollation(std::string_view lower) {
  const auto begins = [&](std::string_view s) { return lower.starts_with(s); };
  const auto ends = [&](std::string_view s) { return lower.ends_with(s); };
  return std::any_of(std::begin(languages), std::end(languages), begins) &&
         std::any_of(std::begin(sensitivities), std::end(sensitivities), ends);
}

// The server's own, and its later version, which orders more characters.
bool isServersOwn(std::string_view lower) {
  return lower == "database_default" || lower == "chinese_prc_ci_as" || lower == "chinese_prc_90_ci_as";
}

}  // namespace

void Parser::skipCollation() {
  while (acceptWord("collate")) collationName();
}

void Parser::collationName() {
  if (!isNamePart()) fail();
  const std::string lower = lowerCase(peek().text);
  if (!isServersOwn(lower)) {
    if (!isCollation(lower)) throw SqlError(448, "Invalid collation '" + peek().text + "'.", peek().pos);
    unsupported("the collation " + peek().text);
  }
  take();
}

}  // namespace tsql
