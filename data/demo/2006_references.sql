-- Reference records of 2006: those of 2005, with two left out by mistake. Runs in TqData_001_2006.
insert into dsign(csign, isignseq, ctext) select csign, isignseq, ctext from TqData_001_2005..dsign
insert into foreigncurrency(cexch_name, cexch_code) select cexch_name, cexch_code from TqData_001_2005..foreigncurrency
GO

-- Bank drafts (4) were forgotten; an open item still names them.
insert into settlestyle(csscode, cssname, bssflag, bssend) select csscode, cssname, bssflag, bssend from TqData_001_2005..settlestyle where csscode<>N'4'
GO

insert into Department(cDepCode, cDepName, iDepGrade, bDepEnd) select cDepCode, cDepName, iDepGrade, bDepEnd from TqData_001_2005..Department
insert into Person(cPersonCode, cPersonName, cDepCode) select cPersonCode, cPersonName, cDepCode from TqData_001_2005..Person
insert into vendorclass(cVCCode, cVCName, iVCGrade) select cVCCode, cVCName, iVCGrade from TqData_001_2005..vendorclass
insert into Vendor(cVenCode, cVenName, cVenAbbName, cVCCode, iVenCreLine) select cVenCode, cVenName, cVenAbbName, cVCCode, iVenCreLine from TqData_001_2005..Vendor
insert into customerclass(cCCCode, cCCName, iCCGrade) select cCCCode, cCCName, iCCGrade from TqData_001_2005..customerclass
GO

-- Customer C006 was forgotten, although it owes money.
insert into Customer(cCusCode, cCusName, cCusAbbName, cCCCode, iCusCreLine) select cCusCode, cCusName, cCusAbbName, cCCCode, iCusCreLine from TqData_001_2005..Customer where cCusCode<>N'C006'
GO

-- Item classes and items
insert into fitem(citem_class, cItem_Name, cItem_Text, crule) select citem_class, cItem_Name, cItem_Text, crule from TqData_001_2005..fitem
insert into fitemstructure(citem_class, cfield_name, imode) select citem_class, cfield_name, imode from TqData_001_2005..fitemstructure
insert into fitemss98class(citemccode, cItemCname, iItemCGrade) select citemccode, cItemCname, iItemCGrade from TqData_001_2005..fitemss98class
insert into fitemss98(citemcode, citemname, bclose, citemccode) select citemcode, citemname, bclose, citemccode from TqData_001_2005..fitemss98
insert into fitemssZFclass(citemccode, cItemCname, iItemCGrade) select citemccode, cItemCname, iItemCGrade from TqData_001_2005..fitemssZFclass
insert into fitemssZF(citemcode, citemname, bclose, citemccode) select citemcode, citemname, bclose, citemccode from TqData_001_2005..fitemssZF
insert into inventoryclass(cInvCCode, cInvCName, iInvCGrade) select cInvCCode, cInvCName, iInvCGrade from TqData_001_2005..inventoryclass
insert into inventory(cInvCode, cInvName, cInvCCode) select cInvCode, cInvName, cInvCCode from TqData_001_2005..inventory
GO

-- Projects: item class 01 has its own two tables.
create table fitemss01class (
 i_id int identity(1,1) not null primary key,
 citemccode nvarchar(22) not null,
 cItemCname nvarchar(20) null,
 iItemCGrade tinyint null)
GO
create table fitemss01 (
 i_id int identity(1,1) not null primary key,
 citemcode nvarchar(20) not null,
 citemname nvarchar(60) null,
 bclose bit not null default 0,
 citemccode nvarchar(22) null,
 cmanager nvarchar(20) null)
GO
insert into fitemss01class(citemccode, cItemCname, iItemCGrade) select citemccode, cItemCname, iItemCGrade from TqData_001_2005..fitemss01class
insert into fitemss01(citemcode, citemname, bclose, citemccode, cmanager) select citemcode, citemname, bclose, citemccode, cmanager from TqData_001_2005..fitemss01
GO
