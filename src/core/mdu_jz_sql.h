#pragma once

#include "core/sql.h"

namespace gljz::mdu_jz_sql {

// given connection: a setting
inline constexpr Sql selectSetting{
    "mdu_jz.select_setting",
    "select cvalue,cdefault from accinformation where csysid ='{systemId}' and cname = N'{name}'", "systemId", "name"};

// private connection to the new year: the database that holds a year; the system database is reached by its full name
inline constexpr Sql selectDatabase{
    "mdu_jz.select_database",
    " SELECT TOP 1 cDatabase FROM TqSystem.dbo.UA_AccountDatabase Where cAcc_Id = N'{accountId}' AND "
    "iBeginYear<={year} ORDER BY iBeginYear DESC",
    "accountId", "year"};

// private connection to the closing year: the last initialised year
inline constexpr Sql selectLastInitYear{
    "mdu_jz.select_last_init_year",
    " select top 1 iyear from gl_yearstate where iinitflag =1 and iyear <={lastYear} order by iyear desc", "lastYear"};

// new year: the accounts of one selection
inline constexpr Sql selectYeMxSelCodes{
    "mdu_jz.select_yemxsel_codes",
    "Select ccode from GL_YeMxSel where iCusSupType={cusSup} and iYeMxType={yeMx} order by ccode", "cusSup", "yeMx"};

// new year: whether one account is in a selection
inline constexpr Sql selectYeMxSelCode{
    "mdu_jz.select_yemxsel_code",
    "Select ccode from GL_YeMxSel where iCusSupType={cusSup} and iYeMxType={yeMx} and ccode ='{ccode}'", "cusSup",
    "yeMx", "ccode"};

inline constexpr const SqlText* all[] = {&selectSetting, &selectDatabase, &selectLastInitYear, &selectYeMxSelCodes,
                                         &selectYeMxSelCode};

}  // namespace gljz::mdu_jz_sql
