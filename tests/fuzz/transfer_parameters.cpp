// The parameter text of a run, given any bytes: True, or False with a description; the same text sets the same flags.

#include "core/transfer_parameters.h"

#include <tuple>

#include "core/run_state.h"
#include "fuzz/fuzz.h"
#include "platform/surroundings.h"
#include "xml/xml_reader.h"

namespace {

auto flags() {
  const gljz::RunState& r = gljz::run;
  return std::make_tuple(r.m_iPersonMode, r.m_bBankTransfer, r.m_bCoverData, r.BalTypeIsNull, r.DeptIsNull, r.CusIsNull,
                         r.SupIsNull, r.PersonIsNull, r.ItemIsNull, r.bClear, r.CoverBankModalData, r.OpeningInput,
                         r.PersonNoBal, r.CusNoBal, r.SupNoBal, r.m_bCoverBankData, r.m_bCoverChequeData,
                         r.m_bAutoWLClear);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto reader = xml::newXmlReader();
  static platform::Surroundings surroundings;
  surroundings.xml = reader.get();
  platform::setSurroundings(&surroundings);

  const std::string text = fuzz::textOf(data, size);
  gljz::run = {};
  const bool understood = gljz::ParseTransferParameters(text);
  if (!understood && gljz::run.m_strMsg.empty()) fuzz::fail("a failure has a description", text);
  const auto first = flags();
  if (understood && (gljz::run.m_bBankTransfer < 1 || gljz::run.m_bBankTransfer > 2 || gljz::run.m_bCoverData < 1 ||
                     gljz::run.m_bCoverData > 2 || gljz::run.m_iPersonMode > 2))
    fuzz::fail("the modes stay in their range", text);
  if (gljz::ParseTransferParameters(text) != understood || flags() != first)
    fuzz::fail("a text that is read again sets the same flags", text);
  platform::setSurroundings(nullptr);
  return 0;
}
