// Stands in for pdf_canvas.cpp where the libraries that make PDF are not there.

#include <stdexcept>

#include "host/print/page_canvas.h"

namespace host {

bool canMakePdf() {
  return false;
}

std::unique_ptr<PageCanvas> newPdfCanvas(const CanvasSettings&) {
  throw std::runtime_error("this program was built without PDF");
}

}  // namespace host
