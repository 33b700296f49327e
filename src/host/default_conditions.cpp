#include "host/default_conditions.h"

#include <algorithm>
#include <optional>

#include "host/usage_error.h"
#include "platform/value.h"

namespace host {
namespace {

struct Switch {
  std::string key, text, partner;
  bool checked = false;
};

constexpr std::string_view notInLaterYear[] = {"GL*PersonYEJZ", "GL*PersonMXJZ",        "GL*CusYEJZ",     "GL*CusMXJZ",
                                               "GL*SupYEJZ",    "GL*SupMXJZ",           "GL*PersonNoBal", "GL*CusNoBal",
                                               "GL*SupNoBal",   "GL*m_bCoverChequeData"};
constexpr std::string_view automaticClearing = "GL*m_bAutoWLClear", openingInput = "GL*OpeningInput";

bool isOffered(std::string_view key, const ConditionSituation& situation) {
  if (!key.starts_with("GL")) return false;
  if (!situation.laterYearOfSameDatabase) return key != automaticClearing;
  return std::find(std::begin(notInLaterYear), std::end(notInLaterYear), key) == std::end(notInLaterYear);
}

std::string textAttribute(std::string_view language) {
  if (platform::equalsIgnoreCase(language, "zh-CN")) return "Text_CN";
  if (platform::equalsIgnoreCase(language, "zh-TW")) return "Text_TW";
  return "Text_EN";
}

class Switches {
public:
  // The file's rows in reverse, as the dialog lists them.
  Switches(const platform::XmlElement& root, const ConditionSituation& situation) {
    const std::string text = textAttribute(situation.language);
    auto rows = root.Select("Parameters/Parameter");
    std::reverse(rows.begin(), rows.end());
    for (const auto& row : rows) {
      const std::string key = platform::trim(row->Attribute("ID").value_or(""));
      if (!isOffered(key, situation)) continue;
      const bool checked =
          key != automaticClearing && platform::equalsIgnoreCase(row->Attribute("Check").value_or(""), "True");
      all_.push_back({key, platform::trim(row->Attribute(text).value_or("")), "", checked});
    }
    for (const auto& pair : root.Select("RadioParameters/Parameters")) {
      const std::string first = pair->Attribute("FirstID").value_or("");
      const std::string second = pair->Attribute("SecondID").value_or("");
      if (Switch* s = find(first)) s->partner = second;
      if (Switch* s = find(second)) s->partner = platform::trim(first);
    }
  }

  void set(const std::string& key, bool checked) {
    Switch* s = find(key);
    if (!s) throw UsageError("switch " + key + " is not offered for these years; offered: " + keys());
    if (key == openingInput && !checked) throw UsageError("switch " + key + " is always ticked");
    s->checked = checked;
    if (Switch* partner = find(s->partner)) partner->checked = !checked;
  }

  const std::vector<Switch>& all() const { return all_; }

private:
  Switch* find(std::string_view key) {
    const auto found = std::find_if(all_.begin(), all_.end(), [&](const Switch& s) { return s.key == key; });
    return found == all_.end() ? nullptr : &*found;
  }
  std::string keys() const {
    std::string list;
    for (const Switch& s : all_) list += (list.empty() ? "" : ", ") + s.key;
    return list.empty() ? "none" : list;
  }
  std::vector<Switch> all_;
};

}  // namespace

std::string conditionsText(platform::XmlReader& xml, std::string_view definition, const ConditionSituation& situation,
                           const ConditionChoices& choices) {
  const auto source = xml.NewDocument();
  if (!source->LoadText(definition)) throw UsageError("TransferParameter.xml: " + source->ParseError());
  const auto sourceRoot = source->Root();
  Switches switches(*sourceRoot, situation);
  for (const auto& [key, checked] : choices.checks) switches.set(key, checked);

  const auto target = xml.NewDocument();
  const auto root = target->CreateRoot("Account");
  for (const Switch& s : switches.all()) {
    const auto row = root->AppendChild("Parameter");
    row->SetAttribute("ID", s.key);
    row->SetAttribute("Check", s.checked ? "True" : "False");
    row->SetAttribute("text", s.text);
  }
  return root->Xml();
}

}  // namespace host
