#pragma once
// What a person chose in the start window, kept from one start of the program to the next. Passwords are not kept.

#include <string>

#include "host/connection_text.h"

class QSettings;

namespace desktop {

struct StartChoice {
  host::ServerAddress::Kind kind = host::ServerAddress::Kind::embedded;
  std::string folder, odbc, user;  // of either kind of server: the other one's is kept, too
  std::string account, operatorName, language = "zh-CN";
  int closingYear = 0, newYear = 0;

  // With the person's password. UsageError for a text that is no address.
  host::ServerAddress address(const std::string& password) const;
};

StartChoice loadChoice(const QSettings& settings);
void saveChoice(QSettings& settings, const StartChoice& choice);

}  // namespace desktop
