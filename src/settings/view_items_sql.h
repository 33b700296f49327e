#pragma once

#include "core/sql.h"

namespace gljz::view_items_sql {

// The schema of the edition, in a database that does not have it. The first statement fails where the column stands,
// and nothing behind it runs then: that guards the contents of the two tables on every run but the first.
inline constexpr Sql addViewItem{"view_items.add_view_item",
                                 "Alter TABLE [dbo].[code] Add [iViewItem] [int] NOT NULL DEFAULT 0"};

inline constexpr Sql addGCJS{"view_items.add_gcjs", "Alter TABLE [dbo].[code] Add [bGCJS] [Bit] NOT NULL DEFAULT 0"};

inline constexpr Sql dropViewItem{"view_items.drop_view_item",
                                  "if exists (select * from sysobjects where id = object_id(N'[dbo].[GL_ViewItem]') "
                                  "and OBJECTPROPERTY(id, N'IsUserTable') = 1) drop table [dbo].[GL_ViewItem]"};

inline constexpr Sql dropXmZcDetail{
    "view_items.drop_xm_zc_detail",
    "if exists (select * from sysobjects where id = object_id(N'[dbo].[GL_XmZcDetail]') "
    "and OBJECTPROPERTY(id, N'IsUserTable') = 1) drop table [dbo].[GL_XmZcDetail]"};

inline constexpr Sql createViewItem{
    "view_items.create_view_item",
    "CREATE TABLE [dbo].[GL_ViewItem] ([iID] [int] NOT NULL ,[cTitleName] [varchar] (30) NOT NULL ,[cQcQmName] "
    "[varchar] (20) NOT NULL ,[cTJFS] [varchar] (4) NOT NULL ,[cCode1] [varchar] (80) NULL ,[cCode2] [varchar] (80) "
    "NULL ,[cCode3] [varchar] (80) NULL ,[cCode4] [varchar] (80) NULL ,[cCode5] [varchar] (80) NULL) ON [PRIMARY]"};

inline constexpr Sql createXmZcDetail{
    "view_items.create_xm_zc_detail",
    "CREATE TABLE [dbo].[GL_XmZcDetail] ([iID] [int] NOT NULL ,[iPeriod] [tinyint] NOT NULL ,[cSign] [varchar] (8) "
    "NOT NULL ,[iNo_id] [smallint] NOT NULL ,[inid] [smallint] NOT NULL ,[dbill_date] [datetime] NULL ,[isignseq] "
    "[int] NULL ,[cCode] [varchar] (80) NOT NULL ,[cPerson_id] [varchar] (8) NULL ,[cDept_id] [varchar] (12) NULL ,"
    "[cCus_id] [varchar] (12) NULL ,[cSup_id] [varchar] (12) NULL ,[cItem_id] [varchar] (20) NULL ,[cItem_class] "
    "[varchar] (2) NULL ,[cStructure] [varchar] (30) NULL ,[cArea] [varchar] (10) NULL ,[curBuildCost] [money] NULL ,"
    "[cName] [varchar] (50) NULL ,[cType] [varchar] (10) NULL ,[cUnit] [varchar] (5) NULL ,[iNumber] [float] NULL ,"
    "[curInstall] [money] NULL ,[curEquipment] [money] NULL ,[bIfInstall] [Bit] NOT NULL ) ON [PRIMARY]"};

// the edition's print format
inline constexpr Sql insertPrintFormat{
    "view_items.insert_print_format",
    "Insert PrintEx Values('GL',null,143,'青石专版','GLQsZb','9',0,2,'GLQsZbU','GLQsZbD',0,0,0,0,0,0)"};

// closing year: all accounts of all years; new year: an account, of whatever year
inline constexpr Sql selectAccounts{"view_items.select_accounts", "Select * from code Order by ccode"};

inline constexpr Sql selectAccount{"view_items.select_account", "Select * from code Where ccode='{ccode}'", "ccode"};

// both years
inline constexpr Sql selectViewItems{"view_items.select_view_items", "Select * from GL_viewitem"};

inline constexpr const SqlText* all[] = {&addViewItem,    &addGCJS,          &dropViewItem,      &dropXmZcDetail,
                                         &createViewItem, &createXmZcDetail, &insertPrintFormat, &selectAccounts,
                                         &selectAccount,  &selectViewItems};

}  // namespace gljz::view_items_sql
