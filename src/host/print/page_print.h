#pragma once
// PagePrint: the reference print control. A print becomes a file: pages of PDF, or of plain text.
//
//   PagePrint control("zh-CN");
//   control.printTo("report.pdf");      // .pdf or .txt, see canPrint
//   const int error = control.Print(job);
//   if (error != 0) complain(control.failure());
//
// The page is what the head's layout says (paper, margins, fonts); the job's own page settings are not looked at.

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/forms.h"
#include "platform/services.h"

namespace host {

class PageCanvas;
struct CanvasSettings;

// Makes the paper of a print that does not become a file: a printer's. The settings' file is empty.
using CanvasMaker = std::function<std::unique_ptr<PageCanvas>(const CanvasSettings&)>;

class PagePrint final : public platform::PrintControl {
public:
  // Error numbers of Print.
  static constexpr int badFormatDatabase = 1, cannotWrite = 2, badLayout = 3, operatorLeft = 1003;

  explicit PagePrint(std::string language) : language_(std::move(language)) {}

  // Whether a print can be written into a file of this name.
  static bool canPrint(const std::string& fileName);
  static std::string_view endings();  // ".pdf, .txt"

  // Where the next prints go, each over the last one. Without a file a print answers that the operator left.
  void printTo(std::string fileName) { file_ = std::move(fileName); }
  // Whose head and foot tables are printed, as long as it lives; null: the job's, opened by its name. A database that
  // is no file of the reference host has to be handed over.
  void readTablesOf(platform::FormatDatabase* database) { tables_ = database; }
  // Prints go onto another canvas; an empty maker ends it.
  void printOn(CanvasMaker maker) { maker_ = std::move(maker); }
  int Print(const Job& job) override;

  std::size_t printed() const { return printed_; }         // prints that were done
  const std::string& failure() const { return failure_; }  // of the last print, empty when it was done
  // Characters of the last print for which no font is installed.
  std::size_t unknownCharacters() const { return unknown_; }

private:
  void write(const Job& job, const std::string& path);

  std::string language_, file_, failure_;
  CanvasMaker maker_;
  platform::FormatDatabase* tables_ = nullptr;
  std::size_t printed_ = 0, unknown_ = 0;
};

}  // namespace host
