#pragma once
// What an operator sees of a run. Everything but the imbalance grid does nothing unless m_bManual holds; the progress
// form is then not even created. The grid is gated by its callers.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/value.h"

namespace gljz {

// Steps of the progress form, by line.
enum class Step : std::size_t {
  checks = 0,
  accountTotals = 1,
  auxiliaryTotals = 2,
  details = 3,
  bankLedger = 4,
  bankStatements = 5,
  cheques = 6,
  otherTables = 7,  // never turns red; that is intended
};

void startStep(Step step);    // the line turns red
void finishStep(Step step);   // the line turns black and is marked
void advanceFrom(Step step);  // finishes the line and starts the next one
void showHourglass();

// The moving caption takes the text of a message key.
void showProgress(std::string_view key, const std::vector<platform::Value>& args = {});

// Lets pending window events run, in any run.
void DoEvents();

// The grid of frmNBalance; both create the form when it does not exist, neither shows it.
void SetupImbalanceGrid(int kind);            // 4, 6 or 7 columns; any other kind does nothing
void AddImbalanceRow(std::string_view text);  // cells separated by tabs

// Cells joined by tabs, for AddImbalanceRow.
std::string reportRow(const std::vector<std::string>& cells);

}  // namespace gljz
