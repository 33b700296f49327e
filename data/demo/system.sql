-- The system database: account 001, its two databases and its calendar. Runs in TqSystem.
insert into UA_Account(cAcc_Id, cAcc_Name, iYear) values(N'001', N'临江商贸有限公司', 2005)

insert into UA_AccountDatabase(cAcc_Id, iBeginYear, iEndYear, cDatabase) values(N'001', 2005, 2005, N'TqData_001_2005')
insert into UA_AccountDatabase(cAcc_Id, iBeginYear, iEndYear, cDatabase) values(N'001', 2006, 2006, N'TqData_001_2006')
GO

-- Calendar months are periods in both years.
insert into UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd) values(N'001', 2005, 1, '2005-01-01', '2005-01-31')
insert into UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd) values(N'001', 2005, 2, '2005-02-01', '2005-02-28')
insert into UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd) values(N'001', 2005, 3, '2005-03-01', '2005-03-31')
insert into UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd) values(N'001', 2005, 4, '2005-04-01', '2005-04-30')
insert into UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd) values(N'001', 2005, 5, '2005-05-01', '2005-05-31')
insert into UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd) values(N'001', 2005, 6, '2005-06-01', '2005-06-30')
insert into UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd) values(N'001', 2005, 7, '2005-07-01', '2005-07-31')
insert into UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd) values(N'001', 2005, 8, '2005-08-01', '2005-08-31')
insert into UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd) values(N'001', 2005, 9, '2005-09-01', '2005-09-30')
insert into UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd) values(N'001', 2005, 10, '2005-10-01', '2005-10-31')
insert into UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd) values(N'001', 2005, 11, '2005-11-01', '2005-11-30')
insert into UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd) values(N'001', 2005, 12, '2005-12-01', '2005-12-31')
insert into UA_Period(cAcc_Id, iYear, iId, dBegin, dEnd)
 select cAcc_Id, 2006, iId, dateadd(year, 1, dBegin), dateadd(year, 1, dEnd) from UA_Period where cAcc_Id=N'001' and iYear=2005
GO
