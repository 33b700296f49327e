#pragma once
// The pages of a print on a printer.

#include <memory>

#include "host/print/page_canvas.h"

namespace windows {

class Printer;

// std::runtime_error when the printer does not begin, here and later when it reports an error. A print that is not
// finished is withdrawn.
std::unique_ptr<host::PageCanvas> newPrinterCanvas(std::shared_ptr<Printer> printer,
                                                   const host::CanvasSettings& settings);

}  // namespace windows
