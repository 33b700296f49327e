#pragma once
// frmTranCond: the conditions of a carry-forward. Its OK button leaves the parameter text in m_strCondXml.

#include <string_view>

#include "dialogs/dialog.h"

namespace gljz {

class FrmTranCond : public Dialog {
public:
  std::string_view Name() const override { return "frmTranCond"; }
};

inline DefaultInstance<FrmTranCond> frmTranCond;

}  // namespace gljz
