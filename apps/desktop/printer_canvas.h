#pragma once
// The reference print's pages on a printer of the window system.

#include <memory>

class QPrinter;

namespace host {
class PageCanvas;
struct CanvasSettings;
}  // namespace host

namespace desktop {

// Sets the printer's paper to the page of the settings. std::runtime_error when it cannot be opened.
std::unique_ptr<host::PageCanvas> newPrinterCanvas(std::shared_ptr<QPrinter> printer,
                                                   const host::CanvasSettings& settings);

}  // namespace desktop
