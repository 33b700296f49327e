#pragma once
// The switches that a carry-forward of the chosen years would offer, and the parameter text that confirming them as
// they stand would give: for reading, and to be kept for a script.

#include <QDialog>

#include "grid_model.h"
#include "host/carry_forward.h"

namespace desktop {

class Texts;

class ParametersWindow final : public QDialog {
public:
  ParametersWindow(QWidget* parent, host::ConditionPreview preview, const Texts& texts);

private:
  void save();

  host::ConditionPreview preview_;
  const Texts& texts_;
  GridModel::Rows rows_;
};

}  // namespace desktop
