#pragma once
// Surroundings: what a process brings for the system, set once by the host before the first entry is called.

#include <functional>
#include <memory>
#include <string>

#include "platform/database.h"
#include "platform/forms.h"
#include "platform/services.h"
#include "platform/xml_reader.h"

namespace platform {

struct Surroundings {
  std::function<std::shared_ptr<Connection>()> newConnection;  // a closed connection
  std::function<std::shared_ptr<ZwPubCls>()> newServices;      // a services object without login or year
  XmlReader* xml = nullptr;
  FormHost* forms = nullptr;
  PrintControl* print = nullptr;
  ComponentFactory* components = nullptr;
  DebugOutput* debug = nullptr;
  std::function<DateTime()> today;  // the host's clock, a date without a time of day
  // The words of a message key that needs no arguments, while there are no services to ask for them. Empty: the key
  // stands for itself.
  std::function<std::string(const std::string& key)> text;
};

// The process's surroundings. RunTimeError 91 while none are set.
Surroundings& surroundings();
void setSurroundings(Surroundings* s);

}  // namespace platform
