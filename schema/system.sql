-- The system database TqSystem: which account sets exist, where their years lie, and what has been done to them.
-- Runs once in an empty database of that name. Batches are separated by GO.

-- The account sets: one row per account, with the fiscal year in which it was opened.
create table UA_Account (
 cAcc_Id nvarchar(10) not null primary key,
 cAcc_Name nvarchar(80) not null,
 iYear int not null)
GO

-- The databases of an account set: each holds the span of fiscal years from iBeginYear to iEndYear. A year belongs to
-- the span with the largest iBeginYear that is not above it.
create table UA_AccountDatabase (
 cAcc_Id nvarchar(10) not null,
 iBeginYear int not null,
 iEndYear int null,
 cDatabase nvarchar(128) not null,
 primary key (cAcc_Id, iBeginYear))
GO
create index ix_UA_AccountDatabase_name on UA_AccountDatabase(cDatabase)
GO

-- The fiscal calendar: first and last day of each period of a year, iId 1 to 12.
create table UA_Period (
 cAcc_Id nvarchar(10) not null,
 iYear int not null,
 iId int not null,
 dBegin datetime not null,
 dEnd datetime not null,
 primary key (cAcc_Id, iYear, iId))
GO

-- What has been finished: a row each time a task iNumber of subsystem cSysID ends for a year. Rows are only added.
create table UA_Mark (
 cAcc_Id nvarchar(10) not null,
 iNumber int not null,
 cSysID nvarchar(4) not null,
 iYear int not null,
 bDone bit not null,
 dTime datetime not null)
GO
create index ix_UA_Mark on UA_Mark(cAcc_Id, iYear, cSysID, iNumber)
GO
