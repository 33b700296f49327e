#include "host/form_captions.h"

#include <string_view>

#include "dialogs/dialog.h"

namespace host {

void localizeForm(platform::Form& form, const Messages& messages, const std::string& prefix) {
  auto* dialog = dynamic_cast<gljz::Dialog*>(&form);
  if (!dialog) return;
  dialog->visitCaptions([&](std::string_view control, std::string& caption) {
    std::string key = prefix + std::string(form.Name());
    if (!control.empty()) (key += ".") += control;
    const auto text = messages.all().find(key + ".Caption");
    if (text != messages.all().end()) caption = text->second;
  });
}

}  // namespace host
