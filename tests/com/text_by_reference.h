#pragma once

#include <oleauto.h>

#include <string>
#include <string_view>

#include "variant.h"

namespace com::test {

// A text by reference, as an entry by slot takes it.
class Text {
public:
  explicit Text(std::string_view text = {}) : text_(newText(text)) {}
  ~Text() { SysFreeString(text_); }
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;
  BSTR* operator&() { return &text_; }
  std::string value() const { return textOf(text_); }

private:
  BSTR text_;
};

}  // namespace com::test
