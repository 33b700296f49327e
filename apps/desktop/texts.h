#pragma once
// The program's own words, in the language of the moment, and the way between the models' UTF-8 and the windows' text.

#include <QString>
#include <string>
#include <string_view>
#include <vector>

#include "host/messages.h"

namespace desktop {

inline QString shown(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string utf8(const QString& text) {
  return text.toStdString();
}

class Texts {
public:
  explicit Texts(const std::string& language) : language_(language), messages_(language) {}

  // Text of "Gljz.Host.Desktop.<key>".
  QString operator()(std::string_view key, const std::vector<platform::Value>& arguments = {}) const {
    return shown(messages_.text("Gljz.Host.Desktop." + std::string(key), arguments));
  }
  const host::Messages& messages() const { return messages_; }
  const std::string& language() const { return language_; }

private:
  std::string language_;
  host::Messages messages_;
};

}  // namespace desktop
