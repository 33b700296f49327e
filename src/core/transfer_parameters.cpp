#include "core/transfer_parameters.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

#include "core/run_state.h"
#include "platform/run_time_error.h"
#include "platform/surroundings.h"

namespace gljz {
namespace {

using platform::RunTimeError;

struct PersonMode {
  std::uint8_t mode;  // what a ticked switch sets; an unticked one changes nothing
};
using OneOrTwo = std::uint8_t RunState::*;  // ticked 1, else 2
using Flag = bool RunState::*;

struct Switch {
  std::string_view name;  // behind the subsystem word and "*"
  bool alsoForGF;
  std::variant<PersonMode, OneOrTwo, Flag> target;
};

constexpr Switch switches[] = {
    {"PersonYEJZ", true, PersonMode{1}},
    {"PersonMXJZ", true, PersonMode{2}},
    {"m_bBankTransfer", true, &RunState::m_bBankTransfer},
    {"m_bCoverData", true, &RunState::m_bCoverData},
    {"BalTypeIsNull", true, &RunState::BalTypeIsNull},
    {"DeptIsNull", true, &RunState::DeptIsNull},
    {"CusIsNull", true, &RunState::CusIsNull},
    {"SupIsNull", true, &RunState::SupIsNull},
    {"PersonIsNull", true, &RunState::PersonIsNull},
    {"ItemIsNull", true, &RunState::ItemIsNull},
    {"Clear", true, &RunState::bClear},
    {"CoverBankModalData", true, &RunState::CoverBankModalData},
    {"OpeningInput", true, &RunState::OpeningInput},
    {"PersonNoBal", true, &RunState::PersonNoBal},
    {"CusNoBal", true, &RunState::CusNoBal},
    {"SupNoBal", true, &RunState::SupNoBal},
    {"m_bCoverBankData", false, &RunState::m_bCoverBankData},
    {"m_bCoverChequeData", false, &RunState::m_bCoverChequeData},
    {"m_bAutoWLClear", false, &RunState::m_bAutoWLClear},
};

const Switch* findSwitch(std::string_view id) {
  const bool gf = id.starts_with("GF*");
  if (!gf && !id.starts_with("GL*")) return nullptr;
  const std::string_view name = id.substr(3);
  for (const Switch& s : switches) {
    if (s.name == name) return gf && !s.alsoForGF ? nullptr : &s;
  }
  return nullptr;
}

void setFlag(const Switch& s, const std::optional<std::string>& check) {
  const bool ticked = check == "True";  // any other spelling, small letters included, is not ticked
  if (const auto* person = std::get_if<PersonMode>(&s.target)) {
    if (ticked) run.m_iPersonMode = person->mode;
  } else if (const auto* oneOrTwo = std::get_if<OneOrTwo>(&s.target)) {
    run.*(*oneOrTwo) = ticked ? 1 : 2;
  } else {
    // A comparison with a missing value is no Boolean.
    if (!check) throw RunTimeError(RunTimeError::invalidUseOfNull, "Invalid use of Null");
    run.*std::get<Flag>(s.target) = ticked;
  }
}

void setFlags(const std::string& text) {
  auto document = platform::surroundings().xml->NewDocument();
  document->LoadText(text);  // its own result is ignored: a text that cannot be read leaves no root
  auto root = document->Root();
  if (!root) throw RunTimeError(RunTimeError::objectNotSet, "Object variable or With block variable not set");
  for (const auto& parameter : root->Select("Parameter")) {
    const Switch* s = findSwitch(parameter->Attribute("ID").value_or(""));
    if (s != nullptr) setFlag(*s, parameter->Attribute("Check"));
  }
}

}  // namespace

bool ParseTransferParameters(const std::string& text) {
  run.m_bBankTransfer = 1;
  run.m_bCoverData = 1;
  try {
    setFlags(text);
    return true;
  } catch (const RunTimeError& failure) {
    run.m_strMsg = failure.description();
    return false;
  }
}

}  // namespace gljz
