#include "embedded/batch_template.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "embedded/session_impl.h"
#include "tsql/literal.h"

namespace embedded {

using tsql::TokenKind;

namespace {

bool isNamePart(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '#' || c == '@' || c == '$' ||
         static_cast<unsigned char>(c) >= 0x80;
}

constexpr int digitsThatFit = 9;  // of a number that is read without the lexer

bool isAt(std::string_view text, std::size_t at, std::string_view piece) {
  return text.size() - at >= piece.size() && std::memcmp(text.data() + at, piece.data(), piece.size()) == 0;
}

}  // namespace

BatchTemplate::BatchTemplate(tsql::TokenStream tokens, std::shared_ptr<ParsedBatch> batch)
    : tokens_(std::move(tokens)), batch_(std::move(batch)) {
  std::size_t from = 0;
  const std::string_view source = tokens_.source;
  for (const auto& t : tokens_.tokens) {
    if (!t.isLiteral()) continue;
    const bool fixed =
        std::any_of(batch_->fixed.begin(), batch_->fixed.end(), [&](const auto& f) { return f.first == t.literal; });
    if (fixed) continue;                                              // it stays part of the fixed text
    if (t.raw.find('\n') != std::string_view::npos) usable_ = false;  // what follows would stand on other lines
    if (t.kind != TokenKind::integer && t.kind != TokenKind::decimal && t.kind != TokenKind::string &&
        t.kind != TokenKind::nstring)
      usable_ = false;
    const auto& type = tokens_.literals[static_cast<std::size_t>(t.literal)].type;
    // A long number has a wider type than the short ones that are read in its place.
    const bool isLong = t.kind == TokenKind::integer   ? type.kind != tsql::TypeKind::integer
                        : t.kind == TokenKind::decimal ? type.precision - type.scale > digitsThatFit
                                                       : false;
    if (isLong) usable_ = false;
    // A name that a number runs into (1x is 1 as x) would with other digits run on (0x is a number).
    const std::size_t next = t.pos.offset + t.length;
    if (next < source.size() && isNamePart(source[next])) usable_ = false;
    holes_.push_back({std::string(source.substr(from, t.pos.offset - from)), t.kind, t.literal, type.scale});
    from = t.pos.offset + t.length;
  }
  after_ = source.substr(from);
  found_ = tokens_.literals;
}

bool BatchTemplate::match(std::string_view text) {
  if (inUse_) return false;
  std::size_t at = 0;
  for (const Hole& hole : holes_) {
    if (!isAt(text, at, hole.before)) return false;
    at += hole.before.size();
    if (!read(hole, text, at)) return false;
  }
  if (text.size() - at != after_.size() || !isAt(text, at, after_)) return false;
  tokens_.literals.swap(found_);
  return true;
}

bool BatchTemplate::read(const Hole& hole, std::string_view text, std::size_t& at) {
  auto& value = found_[static_cast<std::size_t>(hole.ordinal)];
  if (hole.kind == TokenKind::string || hole.kind == TokenKind::nstring) {
    if (hole.kind == TokenKind::nstring) {
      if (at >= text.size() || (text[at] != 'N' && text[at] != 'n')) return false;
      ++at;
    }
    if (at >= text.size() || text[at] != '\'') return false;
    unsigned char bits = 0;
    bool newLine = false;
    std::size_t end = at + 1;
    for (; end < text.size() && text[end] != '\''; ++end) {
      bits |= static_cast<unsigned char>(text[end]);
      newLine |= text[end] == '\n';
    }
    if (newLine || end == text.size() || (end + 1 < text.size() && text[end + 1] == '\'')) return false;
    const auto content = text.substr(at + 1, end - at - 1);
    const bool ascii = bits < 0x80;
    auto* known = std::get_if<std::string>(&value.value);
    if (ascii && known && content.size() < 4000) {  // characters and bytes are one: no counting, and the memory is kept
      known->assign(content);
      value.type = tsql::typeOf(hole.kind == TokenKind::nstring ? tsql::TypeKind::nvarchar : tsql::TypeKind::varchar,
                                std::max(1, static_cast<int>(content.size())));
    } else {
      value = tsql::textLiteral(std::string(content), hole.kind == TokenKind::nstring);
    }
    at = end + 1;
    return true;
  }
  const std::size_t begin = at;
  std::int64_t number = 0;
  int digits = 0;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9' && digits <= digitsThatFit; ++at, ++digits)
    number = number * 10 + (text[at] - '0');
  if (digits == 0 || digits > digitsThatFit) return false;
  if (hole.kind == TokenKind::integer) {
    value.type = tsql::typeOf(tsql::TypeKind::integer);
    value.value = number;
    return at >= text.size() || text[at] != '.';
  }
  if (at >= text.size() || text[at] != '.') return false;
  int scale = 0;
  for (++at; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at, ++scale)
    if (scale < digitsThatFit) number = number * 10 + (text[at] - '0');
  if (scale != hole.scale) return false;
  if (scale < digitsThatFit && text[begin] != '0') {  // every digit counts, and 64 bits hold them
    value.type = tsql::decimalType(digits + scale, scale);
    value.value = number;
  } else {
    value = tsql::decimalLiteral(text.substr(begin, at - begin), {});
  }
  return true;
}

}  // namespace embedded
