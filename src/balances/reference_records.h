#pragma once
// Reference records: what a row of the closing year refers to, read from the closing year for comparison and for the
// names in a report, and whether the new year still has it.
//
// None of these judges or reports. A missing row is no failure: the record stays as it was. A code goes into its
// statement as it stands; one with a quote breaks the statement, which only LoadCode and LoadItem survive. All but
// these two hand every failure to the caller, a Null in a field that is not said to bear one included.

#include <array>
#include <string>
#include <vector>

#include "platform/database.h"
#include "platform/records.h"

namespace gljz {

struct DepartmentRecord {
  std::string cDepCode, cDepName;
  int iDepGrade = 0;
  bool bDepEnd = false;
};

struct PersonRecord {
  std::string cPersonCode, cPersonName;
  std::string cDepCode, cDepName;  // the person's department
  int iDepGrade = 0;
  bool bDepEnd = false;
};

struct CustomerRecord {
  std::string cCusCode, cCusName, cCusAbbName;
  std::string cCCCode, cCCName;  // the customer's class
  int iCCGrade = 0;
  double iCusCreLine = 0;  // credit line
};

struct VendorRecord {
  std::string cVenCode, cVenName, cVenAbbName;
  std::string cVCCode, cvCName;  // the supplier's class
  int ivCGrade = 0;
  double iVenCreLine = 0;  // credit line
};

struct ItemRecord {
  std::int64_t i_id = 0;
  std::string citemcode, citemname;
  bool bclose = false;
  std::string citemccode, cItemCname;  // the item's class
  int iItemCGrade = 0;
};

// An item class.
struct FitemRecord {
  std::int64_t i_id = 0;
  std::string citem_class, cItem_Name, cItem_Text, crule;
  int grades = 0;                // length of crule
  std::vector<int> codeLengths;  // of an item class code, grade by grade: running sums of the digits of crule
  std::string itemTable, itemClassTable;
  std::array<std::string, 4> fieldNames;  // code, class code, name, closed mark, as far as they are defined
};

// The account of the closing year, with up to six selectors of single fields; without any, all fields and the exclusive
// classification. The record is a new one at each call. Never fails: a missing account and one that cannot be read give
// empty fields, which a caller cannot tell from an account without flags.
void LoadCode(platform::Connection& connection, const std::string& code, platform::CodeRecord& record,
              const std::vector<int>& selectors = {});

void LoadDepartment(platform::Connection& connection, const std::string& code, DepartmentRecord& record);
void LoadPerson(platform::Connection& connection, const std::string& code, PersonRecord& record);
void LoadCustomer(platform::Connection& connection, const std::string& code, CustomerRecord& record);
void LoadVendor(platform::Connection& connection, const std::string& code, VendorRecord& record);
void LoadFitem(platform::Connection& connection, const std::string& itemClass, FitemRecord& record);
// Goes on past any failure, so that the record may be filled in part.
void LoadItem(platform::Connection& connection, const std::string& itemClass, const std::string& item,
              ItemRecord& record);

// The new year's code as SqlValue gives it, so never empty, when the new year has it; an empty text otherwise.
std::string CusExists(const std::string& code);
std::string VenExists(const std::string& code);
std::string DepExists(const std::string& code);
std::string PersonExists(const std::string& code);

// All thirteen classification fields are equal, text for text and flag for flag.
bool sameAuxiliaryType(const platform::CodeRecord& a, const platform::CodeRecord& b);

}  // namespace gljz
