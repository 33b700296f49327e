#pragma once

#include "core/sql.h"

namespace gljz::reference_records_sql {

// given connection: an account of the closing year
inline constexpr Sql selectCode{"reference_records.select_code",
                                "select * from code where iyear={lastYear} and  ccode='{code}'", "lastYear", "code"};

// given connection: the code of a currency. A single field is looked up through the chart; the result is the same.
inline constexpr Sql selectCurrency{"reference_records.select_currency",
                                    "select * from foreigncurrency where cexch_name=N'{currency}'", "currency"};
inline constexpr Sql selectCurrencyOfAccounts{
    "reference_records.select_currency_of_accounts",
    "select cexch_code from foreigncurrency,code where foreigncurrency.cexch_name=code.cexch_name and "
    "code.cexch_name=N'{currency}'",
    "currency"};

// given connection: departments and persons
inline constexpr Sql selectDepartment{"reference_records.select_department",
                                      "select * from Department where cdepcode='{code}'", "code"};
inline constexpr Sql selectPerson{"reference_records.select_person", "select * from Person where cPersonCode='{code}'",
                                  "code"};
inline constexpr Sql selectPersonDepartment{"reference_records.select_person_department",
                                            "select * from Department where cDepCode='{dep}'", "dep"};

// given connection: customers and suppliers with their classes
inline constexpr Sql selectCustomer{"reference_records.select_customer",
                                    "select * from Customer where ccuscode='{code}' order by ccuscode", "code"};
inline constexpr Sql selectCustomerClass{"reference_records.select_customer_class",
                                         "select * from customerclass where ccccode='{class}' order by ccccode",
                                         "class"};
inline constexpr Sql selectVendor{"reference_records.select_vendor",
                                  "select * from Vendor where cvencode='{code}' order by cvencode", "code"};
inline constexpr Sql selectVendorClass{"reference_records.select_vendor_class",
                                       "select * from vendorclass where cvccode='{class}' order by cvccode", "class"};

// given connection: an item class
inline constexpr Sql selectItemFields{
    "reference_records.select_item_fields",
    "select cfield_name from fitemstructure where imode in (1,2,4,5) and citem_class = '{class}' order by imode",
    "class"};
inline constexpr Sql selectFitem{"reference_records.select_fitem", "select * from fitem where citem_class='{class}'",
                                 "class"};

// given connection: an item and its class, from the tables of an item class or from the inventory
inline constexpr Sql selectItem{"reference_records.select_item",
                                "select * from {table} where citemcode='{item}' order by citemcode", "table", "item"};
inline constexpr Sql selectItemClass{"reference_records.select_item_class",
                                     "SELECT * FROM {table}class WHERE citemccode='{class}'", "table", "class"};
inline constexpr Sql selectInventory{"reference_records.select_inventory",
                                     "select * from {table} where cInvCode='{item}' order by cInvCode", "table",
                                     "item"};
inline constexpr Sql selectInventoryClass{"reference_records.select_inventory_class",
                                          "SELECT * FROM {table}class WHERE cInvCCode='{class}'", "table", "class"};

// new year: is it still there?
inline constexpr Sql customerExists{"reference_records.customer_exists",
                                    "select cCusCode from Customer where cCusCode=N'{code}'", "code"};
inline constexpr Sql vendorExists{"reference_records.vendor_exists",
                                  "select cVenCode from Vendor where cVenCode=N'{code}'", "code"};
inline constexpr Sql departmentExists{"reference_records.department_exists",
                                      "select cDepCode from Department where cDepCode=N'{code}'", "code"};
inline constexpr Sql personExists{"reference_records.person_exists",
                                  "select cPersonCode from Person where cPersonCode=N'{code}'", "code"};

inline constexpr const SqlText* all[] = {
    &selectCode,     &selectCurrency,         &selectCurrencyOfAccounts, &selectDepartment,
    &selectPerson,   &selectPersonDepartment, &selectCustomer,           &selectCustomerClass,
    &selectVendor,   &selectVendorClass,      &selectItemFields,         &selectFitem,
    &selectItem,     &selectItemClass,        &selectInventory,          &selectInventoryClass,
    &customerExists, &vendorExists,           &departmentExists,         &personExists};

}  // namespace gljz::reference_records_sql
