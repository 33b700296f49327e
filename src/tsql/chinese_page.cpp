#include "tsql/chinese_page.h"

#include <unicode/ucnv.h>
#include <unicode/uset.h>

#include <bitset>
#include <memory>
#include <stdexcept>

#include "tsql/utf8.h"

namespace tsql {
namespace {

using Converter = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

// A converter carries state, so each call has its own; only texts beyond ASCII come here.
Converter openConverter(const char* name) {
  UErrorCode status = U_ZERO_ERROR;
  Converter converter(ucnv_open(name, &status), &ucnv_close);
  if (U_FAILURE(status)) throw std::runtime_error(std::string("no converter for ") + name);
  return converter;
}

// The characters beyond ASCII that have a code in the page and come back from it as they were.
struct Page {
  std::bitset<0x10000> known, narrow;

  Page() {
    const Converter converter = openConverter("windows-936");
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<USet, decltype(&uset_close)> set(uset_openEmpty(), &uset_close);
    ucnv_getUnicodeSet(converter.get(), set.get(), UCNV_ROUNDTRIP_SET, &status);
    if (U_FAILURE(status)) throw std::runtime_error("the Chinese code page cannot be listed");
    for (int32_t item = 0; item < uset_getItemCount(set.get()); ++item) {
      UChar32 first = 0, last = 0;
      status = U_ZERO_ERROR;
      if (uset_getItem(set.get(), item, &first, &last, nullptr, 0, &status) != 0) continue;
      for (UChar32 c = first; c <= last && c < 0x10000; ++c) known.set(static_cast<std::size_t>(c));
    }
    for (UChar c = 0x80; c < 0x100; ++c) markNarrow(converter.get(), c);
    markNarrow(converter.get(), 0x20AC);  // the euro has the single byte 0x80
  }

  void markNarrow(UConverter* converter, UChar c) {
    char bytes[8];
    UErrorCode status = U_ZERO_ERROR;
    if (known.test(c) && ucnv_fromUChars(converter, bytes, sizeof bytes, &c, 1, &status) == 1) narrow.set(c);
  }
};

const Page& page() {
  static const Page instance;
  return instance;
}

std::string convertBytes(const char* from, const char* to, std::string_view text) {
  const Converter source = openConverter(from), target = openConverter(to);
  UErrorCode status = U_ZERO_ERROR;
  if (std::string_view(to) != "UTF-8") ucnv_setSubstChars(target.get(), "?", 1, &status);
  std::string result(text.size() * 3 + 8, '\0');
  char* out = result.data();
  const char* in = text.data();
  status = U_ZERO_ERROR;
  ucnv_convertEx(target.get(), source.get(), &out, result.data() + result.size(), &in, in + text.size(), nullptr,
                 nullptr, nullptr, nullptr, true, true, &status);
  result.resize(static_cast<std::size_t>(out - result.data()));
  return result;
}

}  // namespace

bool inPage(char32_t c) {
  return c < 0x80 || (c < 0x10000 && page().known.test(c));
}

int pageWidth(char32_t c) {
  return c < 0x80 || !inPage(c) || page().narrow.test(c) ? 1 : 2;
}

std::size_t pageLength(std::string_view utf8) {
  if (isAscii(utf8)) return utf8.size();
  std::size_t length = 0;
  for (std::size_t at = 0; at < utf8.size();) length += static_cast<std::size_t>(pageWidth(nextCodePoint(utf8, at)));
  return length;
}

std::string throughPage(std::string_view utf8) {
  std::string result;
  result.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    const std::size_t start = at;
    if (inPage(nextCodePoint(utf8, at))) {
      result.append(utf8.substr(start, at - start));
    } else {
      result += '?';
    }
  }
  return result;
}

std::string toPage(std::string_view utf8) {
  return isAscii(utf8) ? std::string(utf8) : convertBytes("UTF-8", "windows-936", throughPage(utf8));
}

std::string fromPage(std::string_view bytes) {
  return isAscii(bytes) ? std::string(bytes) : convertBytes("windows-936", "UTF-8", bytes);
}

}  // namespace tsql
