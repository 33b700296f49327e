#pragma once

#include "core/sql.h"

namespace gljz::precondition_checks_sql {

// closing year: its table structure is of the required level
inline constexpr Sql selectYearStateTable{
    "precondition_checks.select_year_state_table",
    " select * from sysobjects where id=object_id(N'gl_yearstate') AND TYPE=N'U'"};

// closing year: period 12 is closed
inline constexpr Sql selectClosed{"precondition_checks.select_closed",
                                  "select bflag from gl_mend where iperiod=12 and iyear={lastYear}", "lastYear"};

// closing year: adjustment periods are in use; the first row of any system counts
inline constexpr Sql selectAdjust{"precondition_checks.select_adjust",
                                  " select cvalue from AccInformation where cName='bAdjust' "};

// closing year: period 12 has had its second closing
inline constexpr Sql selectSecondClosing{"precondition_checks.select_second_closing",
                                         "select bflag_GLGZ from gl_mend where iperiod=12 and iyear={lastYear}",
                                         "lastYear"};

// new year: it has a chart of accounts and voucher categories
inline constexpr Sql selectChart{"precondition_checks.select_chart", "select top 1 * from code where iyear={curYear}",
                                 "curYear"};
inline constexpr Sql selectVoucherCategories{"precondition_checks.select_voucher_categories",
                                             "select top 1 * from dsign "};

// new year: accounts that need a reference table, each followed by that table
inline constexpr Sql selectBankAccounts{"precondition_checks.select_bank_accounts",
                                        "select * from code where be=1 AND iyear={curYear}", "curYear"};
inline constexpr Sql selectSettleStyles{"precondition_checks.select_settle_styles", "select top 1 * from settlestyle"};

// The unbracketed "or" is intended: department accounts of every year count.
inline constexpr Sql selectDepartmentAccounts{"precondition_checks.select_department_accounts",
                                              "select * from code where bdept=1 or bperson=1 AND iyear={curYear}",
                                              "curYear"};
inline constexpr Sql selectDepartments{"precondition_checks.select_departments", "select top 1 * from Department"};

inline constexpr Sql selectCustomerAccounts{"precondition_checks.select_customer_accounts",
                                            "select * from code where bcus=1 and iyear={curYear}", "curYear"};
inline constexpr Sql selectCustomers{"precondition_checks.select_customers", "select top 1 * from Customer"};

inline constexpr Sql selectSupplierAccounts{"precondition_checks.select_supplier_accounts",
                                            "select * from code where bsup=1 and iyear={curYear}", "curYear"};
inline constexpr Sql selectSuppliers{"precondition_checks.select_suppliers", "select top 1 * from Vendor"};

inline constexpr Sql selectPersonAccounts{"precondition_checks.select_person_accounts",
                                          "select * from code where bperson=1 and iyear={curYear}", "curYear"};
inline constexpr Sql selectPersons{"precondition_checks.select_persons", "select top 1 * from Person"};

inline constexpr Sql selectItemAccounts{"precondition_checks.select_item_accounts",
                                        "select * from code where bitem=1 and iyear={curYear}", "curYear"};
inline constexpr Sql selectItemClasses{"precondition_checks.select_item_classes", "select * from fitem"};

// new year: a posted voucher in a working period
inline constexpr Sql selectPostedVoucher{
    "precondition_checks.select_posted_voucher",
    "select top 1 * from gl_accvouch where ibook=1 and iperiod<13 and iperiod>0 and iyear={curYear}", "curYear"};

// closing year: vouchers of persons, customers and suppliers
inline constexpr Sql selectPersonVoucher{
    "precondition_checks.select_person_voucher",
    "select  top 1 * from gl_accvouch where not cperson_id is null   and iyear >={initYear} and  iyear<={lastYear}   ",
    "initYear", "lastYear"};
inline constexpr Sql selectCustomerVoucher{
    "precondition_checks.select_customer_voucher",
    "select  top 1 * from gl_accvouch where not ccus_id is null   and iyear >={initYear} and  iyear<={lastYear}   ",
    "initYear", "lastYear"};
inline constexpr Sql selectSupplierVoucher{
    "precondition_checks.select_supplier_voucher",
    "select  top 1 * from gl_accvouch where not csup_id is null   and iyear >={initYear} and  iyear<={lastYear}   ",
    "initYear", "lastYear"};

// What m_strLastSql names where no such statement runs. The second one is a label and no valid statement.
inline constexpr const char* labelPostedVoucher =
    "select top 1 * from gl_accvouch where ibook=1 and iperiod<13 and iperiod>0 ";
inline constexpr const char* labelOpeningBalances =
    "select  top 1 * from gl_accsum(\\gl_accass\\gl_accvouch) where iperiod=1 and (mb<>0 or mb_f<>0 or nb_s<>0)";
inline constexpr const char* labelPersonVoucher = "select  top 1 * from gl_accvouch where not cperson_id is null";

inline constexpr const SqlText* all[] = {
    &selectYearStateTable,
    &selectClosed,
    &selectAdjust,
    &selectSecondClosing,
    &selectChart,
    &selectVoucherCategories,
    &selectBankAccounts,
    &selectSettleStyles,
    &selectDepartmentAccounts,
    &selectDepartments,
    &selectCustomerAccounts,
    &selectCustomers,
    &selectSupplierAccounts,
    &selectSuppliers,
    &selectPersonAccounts,
    &selectPersons,
    &selectItemAccounts,
    &selectItemClasses,
    &selectPostedVoucher,
    &selectPersonVoucher,
    &selectCustomerVoucher,
    &selectSupplierVoucher,
};

}  // namespace gljz::precondition_checks_sql
