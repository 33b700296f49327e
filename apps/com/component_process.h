#pragma once
// What the component is once per process: the surroundings of the system, and the server of the reference host.

#include <memory>
#include <optional>
#include <string>

#include "host/connection_text.h"
#include "host/database_server.h"
#include "platform/date_time.h"

namespace com {

// Sets the surroundings of the system up; the first call does, later ones do nothing. RunTimeError when the temporary
// folder with the program's own data files cannot be made.
void prepareProcess();

// Whether dialogs are shown as windows, or answered as their models stand. At first they are shown where there is a
// desktop. RunTimeError 5 while a run is on its way, and for windows where no desktop is.
bool showsWindows();
void showWindows(bool show);

// Lives as long as an entry of clsGLJZ runs. An entry that fails leaves no progress form behind.
class RunUnderWay {
public:
  RunUnderWay();
  ~RunUnderWay();
  RunUnderWay(const RunUnderWay&) = delete;
  RunUnderWay& operator=(const RunUnderWay&) = delete;

private:
  int failures_;
};

// The run state lives until the process ends, and with it the component's code: true from the first clsGLJZ on.
void beginRunState();
bool runStateBegan();
// The process ends: what is held is left where it is, since the objects' own code may be gone.
void abandonRun();

// Servers that a reference host has opened. A connection text that names one is opened on it, with its credentials.
// UsageError for an address that cannot be opened.
struct OpenServer {
  host::ServerAddress address;
  host::ServerPtr server;
};
std::shared_ptr<const OpenServer> openServer(const std::string& address, bool create);

// A closed connection that finds out what it connects to from the text that it is opened with: a server of the
// reference host ("Database=...;Server=embedded:...;"), or the database client's own text.
std::shared_ptr<platform::Connection> newConnection();

// The clock of the surroundings: a date without a time of day. Nothing: the machine's date.
void setToday(std::optional<platform::DateTime> today);
platform::DateTime today();

}  // namespace com
