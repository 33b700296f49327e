#include "embedded/batch_template.h"

#include <algorithm>

#include "embedded/session_impl.h"
#include "tsql/literal.h"

namespace embedded {

using tsql::TokenKind;

BatchTemplate::BatchTemplate(tsql::TokenStream tokens, std::shared_ptr<ParsedBatch> batch)
    : tokens_(std::move(tokens)), batch_(std::move(batch)) {
  std::size_t from = 0;
  const std::string_view source = tokens_.source;
  for (const auto& t : tokens_.tokens) {
    if (!t.isLiteral()) continue;
    const bool fixed =
        std::any_of(batch_->fixed.begin(), batch_->fixed.end(), [&](const auto& f) { return f.first == t.literal; });
    if (fixed) continue;  // it stays part of the fixed text
    if (t.kind != TokenKind::integer && t.kind != TokenKind::decimal && t.kind != TokenKind::string &&
        t.kind != TokenKind::nstring)
      usable_ = false;
    const auto& type = tokens_.literals[static_cast<std::size_t>(t.literal)].type;
    holes_.push_back({std::string(source.substr(from, t.pos.offset - from)), t.kind, t.literal, type.scale});
    from = t.pos.offset + t.length;
  }
  after_ = source.substr(from);
  found_.resize(holes_.size());
}

bool BatchTemplate::match(std::string_view text) {
  if (inUse_) return false;
  std::size_t at = 0;
  for (std::size_t i = 0; i < holes_.size(); ++i) {
    const auto& before = holes_[i].before;
    if (text.compare(at, before.size(), before) != 0) return false;
    at += before.size();
    if (!read(holes_[i], text, at)) return false;
  }
  if (text.size() - at != after_.size() || text.compare(at, after_.size(), after_) != 0) return false;
  for (std::size_t i = 0; i < holes_.size(); ++i)
    std::swap(tokens_.literals[static_cast<std::size_t>(holes_[i].ordinal)], found_[i]);
  return true;
}

bool BatchTemplate::read(const Hole& hole, std::string_view text, std::size_t& at) {
  auto& value = found_[static_cast<std::size_t>(&hole - holes_.data())];
  if (hole.kind == TokenKind::string || hole.kind == TokenKind::nstring) {
    if (hole.kind == TokenKind::nstring) {
      if (at >= text.size() || (text[at] != 'N' && text[at] != 'n')) return false;
      ++at;
    }
    if (at >= text.size() || text[at] != '\'') return false;
    const auto end = text.find('\'', at + 1);
    if (end == std::string_view::npos || (end + 1 < text.size() && text[end + 1] == '\'')) return false;
    const auto content = text.substr(at + 1, end - at - 1);
    const bool ascii =
        std::all_of(content.begin(), content.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
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
  constexpr int digitsThatFit = 9;
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
  for (++at; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at, ++scale) {
  }
  if (scale != hole.scale) return false;
  value = tsql::decimalLiteral(text.substr(begin, at - begin), {});
  return true;
}

}  // namespace embedded
