#pragma once
// The journal keeps what it says itself in English, for programs. A person reads it in the language of the run.

#include <string>
#include <string_view>

#include "host/messages.h"

namespace host {

class JournalTexts {
public:
  explicit JournalTexts(const Messages& language) : language_(language) {}

  // The text in the language, when it is one of the journal's own; any other text (of a server, of the system) as it
  // is.
  std::string translated(const std::string& text) const;

private:
  const Messages& language_;
  Messages english_{"en-US"};
};

}  // namespace host
