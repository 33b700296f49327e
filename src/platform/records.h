#pragma once
// Records of reference data, as the accounting services and the system hand them to each other.

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/date_time.h"

namespace platform {

// One account of the chart (`code`). A Null column leaves its field empty or false. The thirteen classification
// fields that two accounts are compared by are: bPersonOnly, cPersonItemClass, cCusDeptItemClass, cSupDeptItemClass,
// cCusItemClass, cSupItemClass, cDeptItemClass, bCusDept, bSupDept, bCusOnly, bDeptOnly, bItemOnly, bSupOnly.
struct CodeRecord {
  std::int64_t i_id = 0;
  std::string cClass, cClassAny;
  std::string ccode, cCode_name, ccode_engl;
  int iGrade = 0;
  bool bProperty = false;
  std::string cbook_type, chelp, Cexch_name, cexch_code, cMeasure;
  bool bAss = false, bPersonOnly = false, bCus = false, bSup = false, bDept = false;
  std::string cItemClass, cItemClassCopy, cCusItemClass, cSupItemClass, cDeptItemClass;
  bool bCusDept = false, bSupDept = false, bCusOnly = false, bSupOnly = false, bDeptOnly = false, bItemOnly = false;
  bool br = false, be = false;
  bool bEnd = false;  // a last-level account
  std::string cgather;
  bool bexchange = false, bCashBank = false, bcash = false, bbank = false, bused = false, bd_c = false;
  std::optional<DateTime> dbegin, dend;
  int itrans = 0;
  std::string cOther;
  bool bclose = false;
  std::array<bool, 16> bcDefine{};  // bcDefine1 is at 0
  std::string cPersonItemClass, cCusDeptItemClass, cSupDeptItemClass;

  bool operator==(const CodeRecord&) const = default;
};

// A voucher type of the new year's `dsign`.
struct SignRecord {
  std::string csign, ctext;
  int iSignSeq = 0;
};

// The account set's options.
struct AccountOptions {
  bool bMultiCurrency = false;
  std::string cDefaultCurrency;
  bool bCusAccount = false, bSupAccount = false;
  std::string cCompanyName;  // what a printed page names as its owner
};

}  // namespace platform
