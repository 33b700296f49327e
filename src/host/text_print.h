#pragma once
// TextPrint: a print control that writes a page of plain text, whatever the layouts say: head, grid, foot.

#include <string>

#include "platform/forms.h"

namespace host {

class TextPrint final : public platform::PrintControl {
public:
  // Error numbers of Print.
  static constexpr int noFormatDatabase = 1, cannotWrite = 2;

  // Each print replaces the file.
  explicit TextPrint(std::string file) : file_(std::move(file)) {}
  int Print(const Job& job) override;

private:
  std::string file_;
};

}  // namespace host
