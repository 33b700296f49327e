// gljz-desktop: the carry-forward with windows.

#include <QApplication>
#include <QCommandLineParser>
#include <QSettings>
#include <cstdio>
#include <exception>

#include "host/demo.h"
#include "host/messages.h"
#include "host/usage_error.h"
#include "screenshots.h"
#include "start_window.h"
#include "style.h"

namespace {

using desktop::shown;
using desktop::utf8;

// A demo account set in the folder, made when there is none; the start window then begins with it.
void prepareDemo(const std::string& folder, desktop::StartChoice& choice) {
  const host::ServerAddress address = host::parseServer("embedded:" + folder);
  const host::ServerPtr server = host::openAnyServer(address, true);
  if (!server->hasDatabase(host::systemDatabase)) host::createDemo(server);
  choice.kind = host::ServerAddress::Kind::embedded;
  choice.folder = folder;
  choice.account = host::demoAccount;
  choice.closingYear = host::demoClosingYear;
  choice.newYear = host::demoNewYear;
}

int runWindows(QApplication& application, const QCommandLineParser& options) {
  QSettings settings;
  desktop::StartChoice choice = desktop::loadChoice(settings);
  if (options.isSet("language")) choice.language = utf8(options.value("language"));
  if (options.isSet("server")) {
    const host::ServerAddress address = host::parseServer(utf8(options.value("server")));
    choice.kind = address.kind;
    if (address.kind == host::ServerAddress::Kind::embedded)
      choice.folder = address.folder;
    else
      choice.odbc = address.text.substr(address.text.find(':') + 1);
  }
  if (options.isSet("demo")) prepareDemo(utf8(options.value("demo")), choice);
  desktop::saveChoice(settings, choice);
  desktop::StartWindow window(settings);
  window.show();
  return application.exec();
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setOrganizationName("gljz");
  QApplication::setApplicationName("gljz-desktop");
  desktop::applyStyle(application);

  QCommandLineParser options;
  options.setApplicationDescription("The general ledger's year-end carry-forward.");
  options.addHelpOption();
  options.addOption({"server", "Begin with this server: embedded:DIR or odbc:CONNECTION STRING.", "server"});
  options.addOption({"demo", "Begin with the demo account set in DIR, which is made when there is none.", "dir"});
  options.addOption({"language", "zh-CN, zh-TW or en-US.", "language"});
  options.addOption({"screenshots", "Write a picture of every window in every language into DIR, and end.", "dir"});
  options.process(application);
  try {
    if (!options.positionalArguments().isEmpty())
      throw host::UsageError("\"" + utf8(options.positionalArguments().front()) + "\" is no option");
    if (options.isSet("screenshots")) {
      desktop::takeScreenshots(utf8(options.value("screenshots")));
      return 0;
    }
    return runWindows(application, options);
  } catch (const host::UsageError& e) {
    std::fprintf(stderr, "gljz-desktop: %s\n", e.what());
    return 2;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "gljz-desktop: %s\n", e.what());
    return 1;
  }
}
