#pragma once
// frmTranCond: the conditions of a carry-forward, ticked in a list. Its OK button leaves the parameter text in
// m_strCondXml.
//
//   FrmTranCond& dialog = frmTranCond();            // loads TransferParameter.xml of the program's folder
//   dialog.check(*dialog.indexOf("GL*Clear"), false);
//   dialog.cmdOk_Click();                           // unloads the dialog

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/controls.h"
#include "dialogs/dialog.h"
#include "platform/xml_reader.h"

namespace gljz {

class FrmTranCond : public Dialog {
public:
  // A line of the list.
  struct Item {
    std::string key;
    bool checked = false;
    std::string text;     // in the login's language
    std::string partner;  // key of the switch that excludes this one; empty when there is none
    platform::Colour backColour = platform::rgb(255, 255, 255);
  };

  std::string_view Name() const override { return "frmTranCond"; }
  // Offers the switches of the file that fit the run. A file that cannot be read, or has none, leaves the list empty; a
  // row without one of its attributes, or with a tick that is no Boolean, is a RunTimeError.
  void Load() override;

  // What a click on a check box does: the item changes, then its event runs. std::out_of_range for no such line.
  void check(std::size_t index, bool checked);
  std::optional<std::size_t> indexOf(std::string_view key) const;

  // The selection buttons do what they do whether enabled or not; that is the view's to respect.
  void cmdOk_Click();
  void cmdCancel_Click();
  void cmdSyKmSel_Click();
  void cmdSupTran_Click();
  void cmdCustomerTran_Click();

  std::string Caption;
  std::vector<Item> lvCond;
  static constexpr int checkBoxWidth = 300, textWidth = 13000, partnerWidth = 1;  // twips; partners do not show
  Button cmdOk;
  Button cmdCancel;
  Button cmdSyKmSel{"清零损益科目设置 "};
  Button cmdSupTran{"供应商明细结转科目设置"};
  Button cmdCustomerTran{"客户明细结转科目设置"};

private:
  void setCaptions();
  void addItems(const platform::XmlElement& root);
  void pairItems(const platform::XmlElement& root);
  void lvCond_ItemCheck(Item& item);
  Item* find(std::string_view key);
};

inline DefaultInstance<FrmTranCond> frmTranCond;

}  // namespace gljz
