#pragma once
// The ODBC calls, wherever they come from: unixODBC here, the system's own driver manager on Windows.

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

namespace odbc {

// Texts cross the interface as UTF-16. A driver manager that was built for four-byte characters would read garbage.
static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

inline SQLWCHAR* wide(char16_t* text) {
  return reinterpret_cast<SQLWCHAR*>(text);
}
inline SQLWCHAR* wide(const char16_t* text) {  // the calls take what they only read without const, too
  return reinterpret_cast<SQLWCHAR*>(const_cast<char16_t*>(text));
}

// Attributes that are numbers travel in the pointer's place.
inline SQLPOINTER attribute(SQLULEN value) {
  return reinterpret_cast<SQLPOINTER>(value);
}

}  // namespace odbc
