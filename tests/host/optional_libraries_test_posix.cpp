// Where the libraries of documents and workbooks are to be had, the tests of both have to run.
#include <gtest/gtest.h>

#include "host/print/page_canvas.h"
#include "host/report_file.h"

namespace host {
namespace {

TEST(OptionalLibrariesTest, DocumentsAndWorkbooksAreTestedHere) {
  EXPECT_TRUE(canMakePdf());
  EXPECT_TRUE(canMakeWorkbooks());
}

}  // namespace
}  // namespace host
