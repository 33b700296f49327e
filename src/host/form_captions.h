#pragma once
// Captions of the dialogs in the languages of the message texts.

#include <string>

#include "host/messages.h"
#include "platform/forms.h"

namespace host {

// Puts the texts of the keys "<prefix><form>.<control>.Caption" ("<prefix><form>.Caption" for the form's own) in place
// of the captions that the form is designed with. A caption without a text stays.
void localizeForm(platform::Form& form, const Messages& messages, const std::string& prefix);

}  // namespace host
