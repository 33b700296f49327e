#pragma once
// Reads documents and workbooks back with other programs than those that wrote them. Where the program is built without
// the libraries for them, their tests are skipped:
//
//   void SetUp() override {
//     if (!canMakePdf()) GTEST_SKIP() << test::withoutPdf;
//   }

#include <gtest/gtest.h>

#include "host/print/page_canvas.h"
#include "host/program.h"
#include "host/report_file.h"

namespace host::test {

inline constexpr const char* withoutPdf = "this program was built without PDF";
inline constexpr const char* withoutWorkbooks = "this program was built without workbooks";

// Standard output of a program that has to end well.
inline std::string said(const std::vector<std::string>& words) {
  const Answer a = runProgram(words);
  EXPECT_EQ(a.code, 0) << words[0] << "\n" << a.err;
  return a.out;
}

// The texts of all pages, laid out as on paper; each page ends with a form feed.
inline std::string pdfText(const std::string& file) {
  return said({"pdftotext", "-layout", "-enc", "UTF-8", file, "-"});
}

// A line for each cell: "SHEET!REF TYPE VALUE" with TYPE n for a number and s for a text.
inline std::string workbookCells(const std::string& file) {
  return said({"python3", GLJZ_SOURCE_DIR "/tests/host/read_xlsx.py", file});
}

}  // namespace host::test
