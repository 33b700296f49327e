-- Options and state of 2006: the year has been opened, nothing is booked. Runs in TqData_001_2006.
insert into accinformation(cSysID, cName, cCaption, cValue, cDefault) select cSysID, cName, cCaption, cValue, cDefault from TqData_001_2005..accinformation

insert into gl_yearstate(iyear, iinitflag, iIsUnload) values(2006, 0, 0)

insert into gl_mend(iyear, iperiod, bflag, bflag_GLGZ) select 2006, iperiod, 0, 0 from TqData_001_2005..gl_mend where iyear=2005
GO
