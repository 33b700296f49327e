#include "embedded/collation.h"

#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/unorm2.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "embedded/function_support.h"
#include "tsql/utf8.h"

namespace embedded {
namespace {

constexpr unsigned char firstPrintable = 0x20, lastPrintable = 0x7E;

UCollator* openCollator(const char* locale, UCollationStrength strength) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<UCollator, decltype(&ucol_close)> collator(ucol_open(locale, &status), &ucol_close);
  if (U_FAILURE(status) || (*locale && status == U_USING_DEFAULT_WARNING))
    throw std::runtime_error("no Chinese collation in the ICU data");
  ucol_setStrength(collator.get(), strength);
  ucol_setAttribute(collator.get(), UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE, &status);
  // Chinese puts Han before Latin; the server has them behind.
  const int32_t plainOrder[] = {UCOL_REORDER_CODE_NONE};
  ucol_setReorderCodes(collator.get(), plainOrder, 1, &status);
  if (U_FAILURE(status)) throw std::runtime_error("the collation cannot be set up");
  return collator.release();
}

// The collators, and what the quick way knows of them: the rank of each printable ASCII character, letters of both
// cases alike. 0 is no printable ASCII character. ICU's collators may be used by several threads as long as nobody sets
// anything; these live until the process ends.
//
// Letters and Chinese characters are ordered by the Chinese rules, which however put vowels with tone marks in front of
// the bare vowel. What only accents tell apart is therefore ordered by the rules of no language: the bare letter first.
// Secondary strength counts accents and leaves case and width out.
struct Order {
  UCollator* letters = openCollator("zh@collation=pinyin", UCOL_PRIMARY);
  UCollator* accents = openCollator("", UCOL_SECONDARY);
  std::array<std::uint8_t, 256> rank{};

  Order() {
    std::array<char, lastPrintable - firstPrintable + 1> all{};
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<char>(firstPrintable + i);
    const auto less = [&](char a, char b) { return compare({&a, 1}, {&b, 1}) < 0; };
    std::stable_sort(all.begin(), all.end(), less);
    std::uint8_t next = 1;
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (i > 0 && less(all[i - 1], all[i])) ++next;
      rank[static_cast<unsigned char>(all[i])] = next;
    }
  }

  int compare(std::string_view a, std::string_view b) const {
    const int byLetters = compareBy(letters, a, b);
    return byLetters != 0 ? byLetters : compareBy(accents, a, b);
  }

  static int compareBy(const UCollator* collator, std::string_view a, std::string_view b) {
    UErrorCode status = U_ZERO_ERROR;
    return ucol_strcollUTF8(collator, a.data(), static_cast<int32_t>(a.size()), b.data(),
                            static_cast<int32_t>(b.size()), &status);
  }
};

const Order& order() {
  static const Order instance;
  return instance;
}

std::string_view withoutTrailingBlanks(std::string_view text) {
  std::size_t size = text.size();
  while (size > 0 && text[size - 1] == ' ') --size;
  return text.substr(0, size);
}

// Bytes at the beginning that are equal, in whole words of eight.
std::size_t equalWords(std::string_view a, std::string_view b, std::size_t common) {
  std::size_t i = 0;
  for (; i + 8 <= common; i += 8) {
    std::uint64_t x = 0, y = 0;
    std::memcpy(&x, a.data() + i, 8);
    std::memcpy(&y, b.data() + i, 8);
    if (x != y) break;
  }
  return i;
}

// Whether the character behind position i can change what the one at i means: only one beyond ASCII can.
bool standsAlone(std::string_view text, std::size_t i) {
  return i + 1 >= text.size() || static_cast<unsigned char>(text[i + 1]) < 0x80;
}

int collationCallback(void*, int sizeA, const void* a, int sizeB, const void* b) {
  // Keys of an index are most often the same bytes.
  if (sizeA == sizeB && std::memcmp(a, b, static_cast<std::size_t>(sizeA)) == 0) return 0;
  return compareText({static_cast<const char*>(a), static_cast<std::size_t>(sizeA)},
                     {static_cast<const char*>(b), static_cast<std::size_t>(sizeB)});
}

}  // namespace

int collate(std::string_view a, std::string_view b) {
  return order().compare(a, b);
}

int compareText(std::string_view left, std::string_view right) {
  const std::string_view a = withoutTrailingBlanks(left), b = withoutTrailingBlanks(right);
  const Order& known = order();
  const std::size_t common = std::min(a.size(), b.size());
  std::size_t i = equalWords(a, b, common);
  for (; i < common; ++i) {
    if (a[i] == b[i]) continue;  // beyond ASCII too: equal bytes weigh the same
    const auto rankA = known.rank[static_cast<unsigned char>(a[i])],
               rankB = known.rank[static_cast<unsigned char>(b[i])];
    if (rankA == 0 || rankB == 0) return known.compare(a, b);
    if (rankA == rankB) continue;
    if (!standsAlone(a, i) || !standsAlone(b, i)) return known.compare(a, b);
    return rankA < rankB ? -1 : 1;
  }
  if (a.size() == b.size()) return 0;
  // One text begins with the other. A printable character more makes it the greater one; others may weigh nothing.
  const std::string_view longer = a.size() > b.size() ? a : b;
  if (known.rank[static_cast<unsigned char>(longer[common])] == 0) return known.compare(a, b);
  return a.size() < b.size() ? -1 : 1;
}

int compareCharacters(char32_t a, char32_t b) {
  if (a == b) return 0;
  const Order& known = order();
  if (a < 0x80 && b < 0x80 && known.rank[a] != 0 && known.rank[b] != 0)
    return static_cast<int>(known.rank[a]) - static_cast<int>(known.rank[b]);
  std::string textA, textB;
  tsql::appendCodePoint(textA, a);
  tsql::appendCodePoint(textB, b);
  return known.compare(textA, textB);
}

namespace {

// Compatibility forms that the collator tells from the character they stand for.
bool hasOwnWeight(char32_t c) {
  return c == 0x017F || c == 0x0345 || c == 0x1D4C || c == 0x1E9B || c == 0x2D6F;
}

}  // namespace

char32_t foldCharacter(char32_t c) {
  if (c < 0x80) return c >= U'A' && c <= U'Z' ? c + 0x20 : c;
  if ((c >= 0x4E00 && c <= 0x9FFF) || hasOwnWeight(c)) return c;  // Han first: most of what comes here
  UErrorCode status = U_ZERO_ERROR;
  UChar buffer[8];
  // Width and presentation forms stand in the compatibility decompositions. Those of several characters are none: a
  // character folds to one character.
  const UNormalizer2* compatibility = unorm2_getNFKCInstance(&status);
  const int32_t size = unorm2_getDecomposition(compatibility, static_cast<UChar32>(c), buffer, 8, &status);
  if (U_SUCCESS(status) && size == 1) c = buffer[0];
  c = static_cast<char32_t>(u_foldCase(static_cast<UChar32>(c), U_FOLD_CASE_DEFAULT));
  return c >= 0x3041 && c <= 0x3096 ? c + 0x60 : c;  // hiragana becomes katakana
}

void registerCollation(sqlite3* db) {
  order();  // so that a missing collation fails here and not inside a statement
  if (sqlite3_create_collation_v2(db, textCollation, SQLITE_UTF8, nullptr, collationCallback, nullptr) != SQLITE_OK)
    throw std::runtime_error("cannot register the collation");
}

}  // namespace embedded
