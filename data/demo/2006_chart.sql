-- The chart of accounts of 2006: that of 2005 with a few changes. Runs in TqData_001_2006.
-- Each change but the first two is a fault that the carry-forward has to report.
insert into code(iyear, ccode, ccode_name, ccode_engl, cclass, cclass_engl, cclassany, cclassany_engl, igrade, bproperty, cbook_type, cbook_type_engl, chelp, cexch_name, cmeasure,
 bperson, bcus, bsup, bdept, bitem, cass_item, br, be, cgather, bend, bexchange, bcash, bbank, bd_c, itrans, cother,
 bcDefine1, bcDefine2, bcDefine3, bcDefine4, bcDefine5, bcDefine6, bcDefine7, bcDefine8, bcDefine9, bcDefine10, bcDefine11, bcDefine12, bcDefine13, bcDefine14, bcDefine15, bcDefine16)
 select 2006, ccode, ccode_name, ccode_engl, cclass, cclass_engl, cclassany, cclassany_engl, igrade, bproperty, cbook_type, cbook_type_engl, chelp, cexch_name, cmeasure,
 bperson, bcus, bsup, bdept, bitem, cass_item, br, be, cgather, bend, bexchange, bcash, bbank, bd_c, itrans, cother,
 bcDefine1, bcDefine2, bcDefine3, bcDefine4, bcDefine5, bcDefine6, bcDefine7, bcDefine8, bcDefine9, bcDefine10, bcDefine11, bcDefine12, bcDefine13, bcDefine14, bcDefine15, bcDefine16
 from TqData_001_2005..code where iyear=2005
GO

-- A new account: what is owed by the shops on the platform.
insert into code(iyear, ccode, ccode_name, cclass, cclass_engl, igrade, bend, bproperty, bd_c, cbook_type, cbook_type_engl) values(2006, N'113303', N'应收平台款', N'资产', N'Assets', 2, 1, 1, 1, N'金额式', N'Amount')
GO

-- Prepaid rent has a new code, and the table of renumbered accounts says so: its balance arrives.
update code set ccode=N'130105' where iyear=2006 and ccode=N'130102'
insert into GL_CodeMatch(iyear, cOldCode, cNewCode) values(2006, N'130102', N'130105')
GO

-- The long-term deferred expenses are gone, although they have a balance.
delete from code where iyear=2006 and ccode=N'1901'
GO

-- Advance payments now name a department besides the supplier: the old balances do not fit.
update code set bdept=1 where iyear=2006 and ccode=N'1151'
GO
