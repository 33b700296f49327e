#pragma once
// What a run did: the report of the host, page by page.

#include <QColor>
#include <QDialog>
#include <vector>

#include "grid_model.h"
#include "host/report_model.h"

class QVBoxLayout;

namespace desktop {

class Texts;

// Of a run's outcome.
QColor gradeColour(host::Grade grade);

class ResultWindow final : public QDialog {
public:
  ResultWindow(QWidget* parent, const host::RunResult& result, const Texts& texts);

private:
  void addOutcome(QVBoxLayout* column);
  void addFigures(QVBoxLayout* column);
  void addTables(QVBoxLayout* column);
  void save();

  const host::RunResult& result_;
  const Texts& texts_;
  host::ReportModel model_;
  std::vector<GridModel::Rows> rows_;  // of the tables, their titles first
};

}  // namespace desktop
