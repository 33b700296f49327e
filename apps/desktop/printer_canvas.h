#pragma once
// The reference print's pages on a printer of the window system.

#include <memory>

class QPrinter;

namespace host {
class PageCanvas;
struct CanvasSettings;
}  // namespace host

namespace desktop {

class Texts;

// Sets the printer's paper to the page of the settings. std::runtime_error, in the words of the texts, when it cannot
// be opened, and later when it reports an error.
std::unique_ptr<host::PageCanvas> newPrinterCanvas(std::shared_ptr<QPrinter> printer,
                                                   const host::CanvasSettings& settings, const Texts& texts);

}  // namespace desktop
