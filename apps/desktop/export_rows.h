#pragma once
// Rows as a person sees them, written into a file: CSV, a workbook, a page, PDF.

#include <QString>
#include <string>
#include <vector>

#include "dialogs/controls.h"

class QWidget;

namespace desktop {

class Texts;

struct ExportedRows {
  QString title, fileName;                     // the name without an ending
  std::vector<std::vector<std::string>> rows;  // the header row first
  std::vector<gljz::Alignment> alignments;
};

// Formats by the file's ending (.csv, .html, .pdf, .xlsx). std::runtime_error when it cannot be written: what stood
// there before is then still there.
void exportRows(const std::string& file, const ExportedRows& rows, const Texts& texts);
// "CSV (*.csv);;..." of those that this build can write, for a file dialog.
QString exportFilters();

// Asks for the file first. A failure is told to the person.
void askAndExport(QWidget* parent, const Texts& texts, const ExportedRows& rows);

}  // namespace desktop
