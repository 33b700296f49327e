#pragma once
// The login that the reference host makes from its settings.

#include <functional>
#include <memory>
#include <string>

#include "host/connection_text.h"
#include "host/journal.h"
#include "platform/services.h"

namespace host {

struct LoginSettings {
  ServerAddress server;
  std::string account;  // may be empty: TransGL then takes the account that it is given
  std::string year;     // the new year
  std::string language = "zh-CN";
  std::string operatorName;
  bool subsystemGF = false;
  platform::DateTime today;
};

// Connections of the login come from newConnection, closed. The journal takes notes and failures; it may be null.
std::shared_ptr<platform::Login> makeLogin(LoginSettings settings,
                                           std::function<std::shared_ptr<platform::Connection>()> newConnection,
                                           std::shared_ptr<Journal> journal);

}  // namespace host
