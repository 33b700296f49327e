#pragma once
// Voucher models: GL_ModelMain, GL_modelpreplace, GL_ModelSub1, GL_ModelSub2.

namespace gljz {

// Copies the models of the closing year, by position, between separate databases. A new year that has models keeps
// them, unless the operator or CoverBankModalData says otherwise. Catches its own failures and undoes nothing; False:
// a failure ended the stage. A decision to copy nothing is no failure.
bool JzModel();

}  // namespace gljz
