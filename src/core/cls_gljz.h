#pragma once
// clsGLJZ: the one public class, with three ways into a carry-forward. All end in ExecJZ.
//
//   clsGLJZ gljz;
//   gljz.ZwPubCls = services;
//   std::string parameters, message;
//   bool done = gljz.Transfer("001", "2005", "2006", parameters, login, message, nullptr);
//
// All instances share the process-wide run state; one run at a time. Failures that no entry reports are RunTimeError.

#include <memory>
#include <string>

#include "platform/services.h"

namespace gljz {

class clsGLJZ {
public:
  clsGLJZ();  // sets the form colours and clears the services and the login of the run state

  std::shared_ptr<platform::ZwPubCls> ZwPubCls;  // the accounting services object
  std::shared_ptr<platform::Login> m_loginCls;   // the login of StartJz

  // From the ledger's menu. Years, databases and the closing year's connection are those that an earlier entry left in
  // the process; without one the run is a failure. True when the run reached its end.
  bool StartJz();

  // From the account-set tool, by account and years. cParameterInfo: the parameter text; an empty one is asked for and
  // handed back. cErrMsg: what the run reports, in both directions: on success the success text. True means that
  // nothing was reported, which a stop without a word is, too.
  bool Transfer(const std::string& cAccID, const std::string& cLastYear, const std::string& cCurrentYear,
                std::string& cParameterInfo, const std::shared_ptr<platform::Login>& oLogin, std::string& cErrMsg,
                const std::shared_ptr<void>& oView);

  // The same by databases, with services of its own and no progress display. Parameters are always asked for.
  bool TransGL(const std::string& cLastYear, const std::string& cCurrentYear,
               const std::shared_ptr<platform::Login>& oLogin, std::string& cErrMsg, const std::string& sLastyeardb,
               const std::string& sThisyeardb, const std::string& slastAccid = {}, const std::string& scurAccid = {});

  // strMsg takes the run's message; True when the stage sequence reached its end. At any time.
  bool getTransferMsg(std::string& strMsg);
};

}  // namespace gljz
