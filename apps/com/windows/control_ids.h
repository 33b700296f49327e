#pragma once
// Identifiers of the windows' controls, named as the forms name them.

namespace windows {

enum ControlId : int {
  // Those of an array of controls follow each other.
  idLabel1 = 100,
  idLabel2 = 110,
  idLabel3 = 120,
  idLabel4,
  idLblNote,
  idImage1,
  idFrame1,
  idGrid1,
  idLvCond,
  idCommand1,
  idCommand2,
  idCommand3,
  idCmdOk,
  idCmdCancel,
  idCmdSyKmSel,
  idCmdSupTran,
  idCmdCustomerTran,
  idCmdRefresh,
  // the double list
  idLeftTitle,
  idRightTitle,
  idLeftList,
  idRightList,
  idMoveRight,
  idMoveAllRight,
  idMoveLeft,
  idMoveAllLeft,
};

}  // namespace windows
