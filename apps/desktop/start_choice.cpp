#include "start_choice.h"

#include <QLocale>
#include <QSettings>
#include <algorithm>

#include "host/messages.h"
#include "texts.h"

namespace desktop {
namespace {

constexpr const char *kindKey = "server/kind", *folderKey = "server/folder", *odbcKey = "server/odbc",
                     *userKey = "server/user", *accountKey = "account", *operatorKey = "operator",
                     *languageKey = "language", *closingKey = "year/closing", *newKey = "year/new";
constexpr const char *odbcWord = "odbc", *embeddedWord = "embedded";

// Of the system, where there are texts for it.
std::string systemLanguage() {
  const QLocale locale;
  if (locale.language() != QLocale::Chinese) return "en-US";
  return locale.script() == QLocale::TraditionalHanScript ? "zh-TW" : "zh-CN";
}

}  // namespace

host::ServerAddress StartChoice::address(const std::string& password) const {
  if (kind == host::ServerAddress::Kind::embedded) return host::parseServer("embedded:" + folder);
  host::ServerAddress address = host::parseServer("odbc:" + odbc);
  if (!user.empty()) address.credentials.set("UID", user);
  if (!password.empty()) address.credentials.set("PWD", password);
  return address;
}

StartChoice loadChoice(const QSettings& settings) {
  const auto text = [&](const char* key) { return utf8(settings.value(key).toString()); };
  StartChoice choice;
  choice.kind = text(kindKey) == odbcWord ? host::ServerAddress::Kind::odbc : host::ServerAddress::Kind::embedded;
  choice.folder = text(folderKey);
  choice.odbc = text(odbcKey);
  choice.user = text(userKey);
  choice.account = text(accountKey);
  choice.operatorName = text(operatorKey);
  choice.closingYear = settings.value(closingKey).toInt();
  choice.newYear = settings.value(newKey).toInt();
  choice.language = text(languageKey);
  const auto languages = host::Messages::languages();
  if (std::find(languages.begin(), languages.end(), choice.language) == languages.end())
    choice.language = systemLanguage();
  return choice;
}

void saveChoice(QSettings& settings, const StartChoice& choice) {
  settings.setValue(kindKey, choice.kind == host::ServerAddress::Kind::odbc ? odbcWord : embeddedWord);
  settings.setValue(folderKey, shown(choice.folder));
  // A password that a person wrote into the connection text is not kept with it.
  odbc::ConnectionString text;
  try {
    text = odbc::ConnectionString(choice.odbc);
    text.takeSecrets();
    settings.setValue(odbcKey, shown(text.text()));
  } catch (const std::exception&) {
    settings.remove(odbcKey);  // what cannot be read cannot be told from a password
  }
  settings.setValue(userKey, shown(choice.user));
  settings.setValue(accountKey, shown(choice.account));
  settings.setValue(operatorKey, shown(choice.operatorName));
  settings.setValue(languageKey, shown(choice.language));
  settings.setValue(closingKey, choice.closingYear);
  settings.setValue(newKey, choice.newYear);
}

}  // namespace desktop
