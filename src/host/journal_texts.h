#pragma once
// The journal keeps what it says itself in English, for programs. A person reads it in the language of the run; so with
// the stages, which the system names in simplified Chinese whatever the language.

#include <map>
#include <string>
#include <string_view>

#include "host/messages.h"

namespace host {

class JournalTexts {
public:
  explicit JournalTexts(const Messages& language);

  // The text in the language, when it is one of the journal's own; any other text (of a server, of the system) as it
  // is.
  std::string translated(const std::string& text) const;
  // The same for the name of a stage. Of "function--step" the step is what a person wants, with or without a
  // translation.
  std::string stage(std::string_view name) const;

private:
  const Messages& language_;
  Messages english_{"en-US"};
  std::map<std::string, std::string, std::less<>> stages_;  // a stage's text to its key
};

}  // namespace host
