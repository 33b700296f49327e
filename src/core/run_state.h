#pragma once
// The state of a carry-forward. There is no run object: one run is the process's state, shared by all instances of
// clsGLJZ, and nothing is cleared between runs unless a comment says so. A test starts a fresh process with `run = {}`.

#include <cstdint>
#include <memory>
#include <string>

#include "platform/forms.h"
#include "platform/services.h"

namespace gljz {

struct RunState {
  // Set by the entries.
  std::shared_ptr<platform::ZwPubCls> m_pubCls;  // null after class creation
  std::shared_ptr<platform::Login> m_login;      // null after class creation
  // The closing year's connection; the very connection of NewYearConn when Transfer finds both years in one database.
  // Null after a run between two databases.
  std::shared_ptr<platform::Connection> m_conn;
  std::string m_strLastDB, m_strCurDB;        // databases of the closing and the new year
  std::string m_strLastYear, m_strCurYear;    // decimal digits
  std::string m_strLastAccId, m_strCurAccId;  // stored, read by nothing
  bool m_bManual = false;                     // progress captions and reports may be used
  bool m_bSuccess = false;                    // the stage sequence reached its end
  std::string m_strMsg;                       // what the run reports; replaced, never appended to, by every writer

  // Set by ExecJZ.
  std::string m_strInitYear;   // last initialised year: lower bound of every iyear filter over gl_accvouch
  bool m_bCancelable = false;  // gate of ShowMsg; nothing ever sets it

  // What a failure text names. Some steps store a descriptive form of a statement that never ran.
  std::string m_strFuncName, m_strFuncDesc, m_strLastSql;

  std::string m_strCondXml;  // parameter text that the OK button of frmTranCond left

  // Option flags, set from the parameter text. Only the first two are reset at each parse; the others keep what the
  // process's previous run had.
  std::uint8_t m_bBankTransfer = 0;  // 1 or 2; 2 changes the statements of the bank stage
  std::uint8_t m_bCoverData = 0;     // 1 overwrites settings tables that hold data in the new year, 2 keeps them
  bool BalTypeIsNull = false, DeptIsNull = false, CusIsNull = false, SupIsNull = false;  // go on with an empty
  bool PersonIsNull = false, ItemIsNull = false;                                         // reference table
  bool bClear = false;                                           // clear the selected profit-and-loss accounts
  bool CoverBankModalData = false;                               // voucher models of the new year may be replaced
  bool OpeningInput = false;                                     // stored, read by nothing
  bool PersonNoBal = false, CusNoBal = false, SupNoBal = false;  // go on although cleared items do not balance
  bool m_bCoverBankData = false;                                 // replace bank statements of the new year
  bool m_bCoverChequeData = false;                               // replace the cheque register of the new year
  bool m_bAutoWLClear = false;                                   // clear current accounts before the stages

  // How open items are carried: 0 none, 1 balance, 2 detail, 3 by account as GL_YeMxSel says (not for persons).
  std::uint8_t m_iPersonMode = 0, m_iCusMode = 0, m_iSupMode = 0;
  // Customer and supplier current accounts are in use.
  bool m_bCusPresent = false, m_bSupPresent = false;

  // Form colours, set by class creation.
  platform::Colour m_lWhite = 0;
  platform::Colour m_lGridHead = 0;   // 205,208,215
  platform::Colour m_lGridShade = 0;  // 247,237,236
  platform::Colour m_lReportRow = 0;  // 238,238,214: rows of the report grids
};

extern RunState run;

}  // namespace gljz
