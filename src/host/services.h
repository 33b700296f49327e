#pragma once
// The accounting services, answered from the databases.
//
//   auto services = makeServices(settings);
//   services->SetLogin(login);
//   services->InitServices({}, connectionText("TqData_001_2006", server), "001", 2006, {}, {});
//   services->MatchCode("100201", 2, true);
//
// Every question is about the new year. Accounts and reference records are looked up at each question, never
// remembered: a run changes what stands there. Options and calendars, which no run changes, are read once.

#include <functional>
#include <memory>
#include <string>

#include "host/journal.h"
#include "host/messages.h"
#include "platform/services.h"

namespace host {

struct ServicesSettings {
  std::function<std::shared_ptr<platform::Connection>()> newConnection;  // a closed one, without a journal
  std::shared_ptr<Journal> journal;                                      // may be null
  std::shared_ptr<const Messages> messages;
  std::string language = "zh-CN";
  std::string operatorName;
  std::string formatDatabase = {};  // file of the print service's tables; empty: there is none, printing fails
};

// A services object without login or year, as TransGL makes one for itself. With a journal its connection and its
// operations are observed.
std::shared_ptr<platform::ZwPubCls> makeServices(const ServicesSettings& settings);

}  // namespace host
