#pragma once
// The parameter text of a run from the switches that TransferParameter.xml offers, their initial ticks, and the changes
// that a person asks for.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/xml_reader.h"

namespace host {

struct ConditionChoices {
  std::vector<std::pair<std::string, bool>> checks;  // key and tick, in the order in which they were asked for
};

// What decides which switches are offered.
struct ConditionSituation {
  bool laterYearOfSameDatabase = false;  // the new year lies inside a database span that began before it
  std::string language;
};

// definition: the text of TransferParameter.xml. UsageError for a switch that is not offered in this situation.
std::string conditionsText(platform::XmlReader& xml, std::string_view definition, const ConditionSituation& situation,
                           const ConditionChoices& choices);

}  // namespace host
