#pragma once
// The small routines that every stage calls: messages, lookups, text of statement values, the run's objects.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/run_state.h"
#include "platform/database.h"
#include "platform/services.h"
#include "platform/value.h"

namespace gljz {

// The run's objects; RunTimeError 91 when one is not set.
platform::ZwPubCls& pubCls();
platform::Login& login();
platform::Connection& lastConn();  // m_conn: the closing year
platform::Connection& newConn();   // NewYearConn: the new year

// The closing and the new year lie in different databases (the names differ, without regard to case).
bool separateDatabases();

// Text of a message key. While there are no accounting services it is that of the surroundings, without the arguments,
// and where those have none the key itself.
std::string GetResString(std::string_view key, const std::vector<platform::Value>& args = {});

// Styles and answers of a message box.
inline constexpr int msgPlain = 0, msgStop = 16, msgWarning = 48, msgInformation = 64;
inline constexpr int msgYesNoQuestion = 292;  // Yes and No, question mark, No is the default
inline constexpr int answerNo = 7;

// Shows a box and returns the number of the pressed button; 0 at once unless m_bManual and m_bCancelable hold. As
// nothing ever sets m_bCancelable no box appears in any run: that is intended, and callers that ask go on.
int ShowMsg(const std::string& prompt, int style, const std::string& title, const std::string& helpFile = "",
            int context = 0);

bool LocalizeForm(platform::Form& form, const std::string& prefix, const std::string& second, const std::string& third);
inline constexpr const char* resourcePrefix = "Orvo.GL.TsGLJZ.";  // what every dialog passes as prefix

// A value of the settings table; its default when it is Null, empty when there is neither or no such setting.
std::string GetAccinfo(platform::Connection& connection, const std::string& systemId, const std::string& name);

// The database of the newest span that begins no later than the year, for the account of the login; empty when none.
std::string GetDatabaseName(const std::string& year);

// The newest initialised year up to the closing year; "0" when there is none.
std::string GetLastInitYear();

// A value with the comma behind it, for a statement that is assembled as text: "Null," or "N'text',". A quote inside
// the text is not doubled.
std::string SqlValue(const platform::Value& value);

// Values of a row that a stage inserts, without a comma. Text is N'text' with its quotes doubled, so that exactly the
// value arrives; numbers are plain number text; Null is "Null".
std::string textLiteral(const platform::Value& value);
std::string numberLiteral(const platform::Value& value);

// Selections of frmYeMxSel: customers 1, suppliers otherwise; by balance 1, by detail otherwise.
std::string GetYeMxSelCodes(int iCusSupType, int iYeMxType);  // "'101','102'", "''" when nothing is selected
bool IsYeMxSelCode(int iCusSupType, int iYeMxType, const std::string& ccode);  // False on any failure, too

// Number of rows: runs the statement with every "*" replaced by "count(1)" on the raw new connection. A failure counts
// as 0, as does Null, no row, or a number beyond 32 bits.
std::int32_t RecordCount(const std::string& sql);

// Shared by the row loops.
bool hasRow(platform::Connection& connection, const std::string& sql);  // opens, looks, closes
std::int32_t yearNumber(const std::string& year);                       // RunTimeError 13 no number, 6 too large

}  // namespace gljz
