#pragma once
// One row of `code` in memory.

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/database.h"

namespace host::test {

class FakeCodeRow final : public platform::Recordset {
public:
  FakeCodeRow() {
    for (const char* name : {"i_id",
                             "iyear",
                             "ccode",
                             "ccode_name",
                             "ccode_engl",
                             "cclass",
                             "cclass_engl",
                             "cclassany",
                             "cclassany_engl",
                             "igrade",
                             "bproperty",
                             "cbook_type",
                             "cbook_type_engl",
                             "chelp",
                             "Cexch_name",
                             "cmeasure",
                             "bperson",
                             "bcus",
                             "bsup",
                             "bdept",
                             "bitem",
                             "cass_item",
                             "br",
                             "be",
                             "cgather",
                             "bend",
                             "bexchange",
                             "bcash",
                             "bbank",
                             "bused",
                             "bd_c",
                             "dbegin",
                             "dend",
                             "itrans",
                             "cother",
                             "bclose"})
      cells_.emplace_back(name, platform::Value());
    for (int i = 1; i <= 16; ++i) cells_.emplace_back("bcDefine" + std::to_string(i), platform::Value());
  }
  FakeCodeRow(const FakeCodeRow& other) : Recordset(), cells_(other.cells_) {}
  FakeCodeRow& set(std::string_view name, platform::Value value) {
    for (auto& [n, v] : cells_)
      if (platform::equalsIgnoreCase(n, name)) v = std::move(value);
    return *this;
  }
  void remove(std::string_view name) {
    std::erase_if(cells_, [&](const auto& cell) { return platform::equalsIgnoreCase(cell.first, name); });
  }

  bool IsOpen() const override { return true; }
  bool Bof() const override { return false; }
  bool Eof() const override { return false; }
  std::size_t FieldCount() const override { return cells_.size(); }
  const std::string& FieldName(std::size_t index) const override { return cells_.at(index).first; }
  platform::Value Field(std::string_view name) const override {
    for (const auto& [n, v] : cells_)
      if (platform::equalsIgnoreCase(n, name)) return v;
    throw platform::RunTimeError(platform::RunTimeError::noSuchField, "no field " + std::string(name));
  }
  platform::Value Field(std::size_t index) const override { return cells_.at(index).second; }
  void MoveFirst() override {}
  void MoveNext() override {}
  void MovePrevious() override {}
  void AddNew() override {}
  void SetField(std::string_view, const platform::Value&) override {}
  void SetField(std::size_t, const platform::Value&) override {}
  void Update() override {}
  void Close() override {}

private:
  std::vector<std::pair<std::string, platform::Value>> cells_;
};

}  // namespace host::test
