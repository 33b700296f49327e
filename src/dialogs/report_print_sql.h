#pragma once
// Statements for the format database of the print service. Its dialect is not that of the ledger's server, so they
// stand outside all_statements().

namespace gljz::report_print_sql {

inline constexpr const char* dropHead = "DROP TABLE ZPDJ_Head";
inline constexpr const char* dropTail = "DROP TABLE ZPDJ_Tail";
inline constexpr const char* createHead =
    "CREATE TABLE ZPDJ_Head (P1 String,P2 String,P3 String,P4 String,P5 String,P6 String,P7 String)";
inline constexpr const char* createTail =
    "CREATE TABLE ZPDJ_Tail (P1 String,P2 String,P3 String,P4 String,P5 String,P6 String)";

}  // namespace gljz::report_print_sql
