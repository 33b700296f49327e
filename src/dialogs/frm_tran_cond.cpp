#include "dialogs/frm_tran_cond.h"

#include <algorithm>

#include "core/mdu_jz.h"
#include "dialogs/frm_sy_km_sel.h"
#include "dialogs/frm_ye_mx_sel.h"
#include "platform/surroundings.h"

namespace gljz {
namespace {

using platform::RunTimeError;
using platform::XmlElement;

constexpr std::string_view autoClear = "GL*m_bAutoWLClear", openingInput = "GL*OpeningInput";

// Not offered for a later year of one database: open items and cheques stay where they are.
constexpr std::string_view notInLaterYear[] = {"GL*PersonYEJZ", "GL*PersonMXJZ",        "GL*CusYEJZ",     "GL*CusMXJZ",
                                               "GL*SupYEJZ",    "GL*SupMXJZ",           "GL*PersonNoBal", "GL*CusNoBal",
                                               "GL*SupNoBal",   "GL*m_bCoverChequeData"};

// The attribute with the display text. An unknown language asks for one that no file has.
std::string textAttribute() {
  const std::string language = platform::toUpperAscii(login().LoginLanguage());
  std::string code;
  if (language == "ZH-CN") code = "CN";
  if (language == "ZH-TW") code = "TW";
  if (language == "EN-US") code = "EN";
  return "Text_" + code;
}

std::string attribute(const XmlElement& element, const std::string& name) {
  auto value = element.Attribute(name);
  if (!value) throw RunTimeError(RunTimeError::invalidUseOfNull, "Invalid use of Null");
  return *value;
}

// The new year lies in a database that began before it.
bool isLaterYearOfOneDatabase() {
  return !separateDatabases() && yearNumber(run.m_strCurYear) != pubCls().iStartYear();
}

bool isOffered(std::string_view key, bool sameDbLater) {
  if (!sameDbLater) return key != autoClear;
  return std::find(std::begin(notInLaterYear), std::end(notInLaterYear), key) == std::end(notInLaterYear);
}

}  // namespace

void FrmTranCond::Load() {
  setCaptions();
  auto document = platform::surroundings().xml->NewDocument();
  if (!document->LoadFile(platform::surroundings().forms->ProgramFolder() + "/TransferParameter.xml")) {
    ShowMsg("xml格式不对", msgPlain, "");
    return;
  }
  const auto root = document->Root();
  if (root->Name() != "Transfer" || root->Select("Parameters/Parameter").empty()) {
    ShowMsg("没有属性信息可以获取", msgPlain, "");
    return;
  }
  addItems(*root);
  pairItems(*root);
  if (!lvCond.empty()) lvCond.front().backColour = 0xE8E8E8;
  // Whatever the file ticks.
  cmdCustomerTran.Enabled = false;
  cmdSupTran.Enabled = false;
  cmdSyKmSel.Enabled = true;
}

void FrmTranCond::setCaptions() {
  const auto captionWithTip = [](Button& button, std::string_view key) {
    button.Caption = GetResString(key);
    button.ToolTipText = button.Caption;
  };
  Caption = GetResString("Orvo.CW.GL.ZWSQL.BAS.02846");
  cmdOk.Caption = GetResString("Orvo.CW.GL.ZWSQL.OTHER.frmAbout.cmdOK.Caption");
  cmdCancel.Caption = GetResString("Orvo.CW.GL.ZWSQL.ACCPRINT.frmDlPrn.cmdExit.Caption");
  captionWithTip(cmdSyKmSel, "Orvo.GL.ZWSQL.SETUP.OrvoV100.00011");
  captionWithTip(cmdSupTran, "Orvo.GL.ZWSQL.SETUP.OrvoV100.00012");
  captionWithTip(cmdCustomerTran, "Orvo.GL.ZWSQL.SETUP.OrvoV100.00013");
}

// The file's rows in reverse: its last one stands on top.
void FrmTranCond::addItems(const XmlElement& root) {
  const std::string text = textAttribute();
  const bool sameDbLater = isLaterYearOfOneDatabase();
  const auto rows = root.Select("Parameters/Parameter");
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
    Item item;
    item.key = platform::trim(attribute(**row, "ID"));
    if (!item.key.starts_with("GL") || !isOffered(item.key, sameDbLater)) continue;
    item.text = platform::trim(attribute(**row, text));
    item.checked = item.key != autoClear && platform::Value(attribute(**row, "Check")).asBool();
    lvCond.push_back(std::move(item));
  }
}

// A pair of which only one is on the list leaves it the other's key. Intended: only the first key of a pair is trimmed,
// and only where it is stored.
void FrmTranCond::pairItems(const XmlElement& root) {
  for (const auto& pair : root.Select("RadioParameters/Parameters")) {
    const std::string first = attribute(*pair, "FirstID"), second = attribute(*pair, "SecondID");
    if (Item* item = find(first)) item->partner = second;
    if (Item* item = find(second)) item->partner = platform::trim(first);
  }
}

void FrmTranCond::check(std::size_t index, bool checked) {
  Item& item = lvCond.at(index);
  item.checked = checked;
  lvCond_ItemCheck(item);
  changed();
}

void FrmTranCond::lvCond_ItemCheck(Item& item) {
  if (item.key == openingInput) item.checked = true;  // cannot be cleared
  if (!item.partner.empty()) {
    if (Item* partner = find(item.partner)) partner->checked = !item.checked;
  }
  if (item.key == "GL*CusMXJZ") cmdCustomerTran.Enabled = item.checked;
  if (item.key == "GL*CusYEJZ") cmdCustomerTran.Enabled = !item.checked;
  if (item.key == "GL*SupMXJZ") cmdSupTran.Enabled = item.checked;
  if (item.key == "GL*SupYEJZ") cmdSupTran.Enabled = !item.checked;
  if (item.key == "GL*Clear") cmdSyKmSel.Enabled = item.checked;
}

void FrmTranCond::cmdOk_Click() {
  const auto document = platform::surroundings().xml->NewDocument();
  const auto root = document->CreateRoot("Account");
  for (const Item& item : lvCond) {
    const auto parameter = root->AppendChild("Parameter");
    parameter->SetAttribute("ID", item.key);
    parameter->SetAttribute("Check", item.checked ? "True" : "False");
    parameter->SetAttribute("text", item.text);
  }
  run.m_strCondXml = root->Xml();
  frmTranCond.unload();
}

void FrmTranCond::cmdCancel_Click() {
  frmTranCond.unload();
}

void FrmTranCond::cmdSyKmSel_Click() {
  GetSyKmList();
}

void FrmTranCond::cmdSupTran_Click() {
  run.m_iSupMode = ChooseSelectionMode(FrmYeMxSel::suppliers);
}

void FrmTranCond::cmdCustomerTran_Click() {
  run.m_iCusMode = ChooseSelectionMode(FrmYeMxSel::customers);
}

FrmTranCond::Item* FrmTranCond::find(std::string_view key) {
  const auto found = std::find_if(lvCond.begin(), lvCond.end(), [&](const Item& item) { return item.key == key; });
  return found == lvCond.end() ? nullptr : &*found;
}

std::optional<std::size_t> FrmTranCond::indexOf(std::string_view key) const {
  for (std::size_t i = 0; i < lvCond.size(); ++i) {
    if (lvCond[i].key == key) return i;
  }
  return std::nullopt;
}

}  // namespace gljz
