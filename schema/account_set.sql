-- An account-set database: the ledger of one account for a span of fiscal years. Runs once in an empty database.
-- Batches are separated by GO.
--
-- Types: amounts are money, quantities and exchange rates float, codes and names nvarchar, flags bit, dates datetime.
-- Amounts, quantities and flags of the ledger tables are never Null; a missing one is 0. Texts and keys that do not
-- apply are Null. Column order is part of the contract: some tables are copied with select * or by position.
-- Indexes are not unique unless said otherwise: a carry-forward may leave rows with equal keys and merges them later.


----------------------------------------------------------------------------------------------------------------------
-- Settings and state of the years
----------------------------------------------------------------------------------------------------------------------

-- Options of the subsystems ('GL' ledger, 'GF' its sibling, 'AA' the account set); cDefault counts where cValue is Null.
create table accinformation (
 cSysID nvarchar(4) not null,
 cName nvarchar(40) not null,
 cCaption nvarchar(60) null,
 cValue nvarchar(200) null,
 cDefault nvarchar(200) null)
GO
create index ix_accinformation on accinformation(cSysID, cName)
GO

-- One row per fiscal year: iinitflag 1 marks a year whose opening balances were keyed in, iIsUnload 1 one that has
-- received its openings by a carry-forward.
create table gl_yearstate (
 iyear int not null,
 iinitflag bit not null default 0,
 iIsUnload int null)
GO

-- Month-end state: bflag a closed period, bflag_GLGZ one that has been closed for the adjustment entries as well.
create table gl_mend (
 iyear int not null,
 iperiod tinyint not null,
 bflag bit null,
 bflag_GLGZ bit null)
GO
create index ix_gl_mend on gl_mend(iyear, iperiod)
GO

-- Imports of the sibling subsystem: the day up to which each has succeeded.
create table GF_ImportSet (
 iid int identity(1,1) not null,
 dSuccessEndDate datetime null)
GO

-- How current accounts are carried when it is chosen per account: iCusSupType 1 customer, 2 supplier;
-- iYeMxType 1 as a balance, 2 item by item.
create table GL_YeMxSel (
 iid int identity(1,1) not null,
 iCusSupType tinyint not null,
 ccode nvarchar(40) not null,
 iYeMxType tinyint not null)
GO
create index ix_GL_YeMxSel on GL_YeMxSel(iCusSupType, iYeMxType, ccode)
GO


----------------------------------------------------------------------------------------------------------------------
-- Chart of accounts
----------------------------------------------------------------------------------------------------------------------

-- One row per account and year. A parent's children are the accounts whose code begins with its own.
create table code (
 i_id int identity(1,1) not null primary key,
 iyear int not null,
 ccode nvarchar(40) not null,
 ccode_name nvarchar(60) not null,
 ccode_engl nvarchar(60) null,
 -- class and nature of the account
 cclass nvarchar(14) null, cclass_engl nvarchar(30) null,
 cclassany nvarchar(14) null, cclassany_engl nvarchar(30) null,
 igrade tinyint not null default 1,
 bproperty bit not null default 1,
 cbook_type nvarchar(10) null, cbook_type_engl nvarchar(30) null,
 chelp nvarchar(20) null,
 cexch_name nvarchar(8) null,  -- currency, Null for the main one
 cmeasure nvarchar(6) null,    -- measure unit; only such an account keeps quantities
 -- auxiliaries that a line on the account has to name
 bperson bit not null default 0,
 bcus bit not null default 0,
 bsup bit not null default 0,
 bdept bit not null default 0,
 bitem bit not null default 0,
 cass_item nvarchar(4) null,   -- item class when bitem
 -- use
 br bit not null default 0,    -- day book
 be bit not null default 0,    -- bank account, reconciled with statements
 cgather nvarchar(40) null,
 bend bit not null default 1,  -- last level
 bexchange bit not null default 0,
 bcash bit not null default 0,
 bbank bit not null default 0,
 bused bit not null default 0,
 bd_c bit null,                -- normal balance: 1 debit, 0 credit
 dbegin datetime null, dend datetime null,  -- span of the bank reconciliation
 itrans tinyint null,
 cother nvarchar(60) null,
 bclose bit not null default 0,
 -- user-defined columns that a line on the account fills
 bcDefine1 bit not null default 0, bcDefine2 bit not null default 0,
 bcDefine3 bit not null default 0, bcDefine4 bit not null default 0,
 bcDefine5 bit not null default 0, bcDefine6 bit not null default 0,
 bcDefine7 bit not null default 0, bcDefine8 bit not null default 0,
 bcDefine9 bit not null default 0, bcDefine10 bit not null default 0,
 bcDefine11 bit not null default 0, bcDefine12 bit not null default 0,
 bcDefine13 bit not null default 0, bcDefine14 bit not null default 0,
 bcDefine15 bit not null default 0, bcDefine16 bit not null default 0)
GO
create unique index ix_code on code(iyear, ccode)
GO
create index ix_code_account on code(ccode)
GO

-- Accounts that were renumbered: the code of the years before and the code from iyear on.
create table GL_CodeMatch (
 iyear int not null,
 cOldCode nvarchar(40) not null,
 cNewCode nvarchar(40) not null,
 primary key (iyear, cOldCode))
GO


----------------------------------------------------------------------------------------------------------------------
-- Reference records
----------------------------------------------------------------------------------------------------------------------

-- Voucher types.
create table dsign (
 csign nvarchar(8) not null,
 isignseq tinyint not null,
 ctext nvarchar(20) null)
GO
create index ix_dsign on dsign(csign)
GO

-- Settlement styles; only a last-level one (bssend) can be used.
create table settlestyle (
 csscode nvarchar(3) not null,
 cssname nvarchar(12) not null,
 bssflag bit not null default 0,
 bssend bit not null default 1)
GO
create index ix_settlestyle on settlestyle(csscode)
GO

create table Department (
 cDepCode nvarchar(12) not null primary key,
 cDepName nvarchar(255) not null,
 iDepGrade tinyint not null default 1,
 bDepEnd bit not null default 1)
GO
create table Person (
 cPersonCode nvarchar(8) not null primary key,
 cPersonName nvarchar(20) null,
 cDepCode nvarchar(12) null)
GO

create table customerclass (
 cCCCode nvarchar(12) not null primary key,
 cCCName nvarchar(20) null,
 iCCGrade tinyint null)
GO
create table Customer (
 cCusCode nvarchar(12) not null primary key,
 cCusName nvarchar(98) null,
 cCusAbbName nvarchar(60) null,
 cCCCode nvarchar(12) null,
 iCusCreLine float null)  -- credit line
GO
create table vendorclass (
 cVCCode nvarchar(12) not null primary key,
 cVCName nvarchar(20) null,
 iVCGrade tinyint null)
GO
create table Vendor (
 cVenCode nvarchar(12) not null primary key,
 cVenName nvarchar(98) null,
 cVenAbbName nvarchar(60) null,
 cVCCode nvarchar(12) null,
 iVenCreLine float null)  -- credit line
GO

-- Item classes. The digits of crule are the lengths of the grades of an item class code. Class NN keeps its items in
-- the tables fitemssNN and fitemssNNclass, which are made when the class is defined; class ch is the inventory.
create table fitem (
 i_id int identity(1,1) not null primary key,
 citem_class nvarchar(4) not null,
 cItem_Name nvarchar(20) null,
 cItem_Text nvarchar(30) null,
 crule nvarchar(20) null)
GO
create index ix_fitem on fitem(citem_class)
GO
-- The fields of an item class: imode 1 its code, 2 its class code, 4 its name, 5 whether it is closed, 3 any other.
create table fitemstructure (
 citem_class nvarchar(4) not null,
 cfield_name nvarchar(20) not null,
 imode tinyint not null)
GO
create index ix_fitemstructure on fitemstructure(citem_class, imode)
GO

-- Cash-flow items (class 98) and the items of the cash-flow supplement (class ZF).
create table fitemss98 (
 i_id int identity(1,1) not null primary key,
 citemcode nvarchar(20) not null,
 citemname nvarchar(60) null,
 bclose bit not null default 0,
 citemccode nvarchar(22) null)
GO
create index ix_fitemss98 on fitemss98(citemcode)
GO
create table fitemss98class (
 i_id int identity(1,1) not null primary key,
 citemccode nvarchar(22) not null,
 cItemCname nvarchar(20) null,
 iItemCGrade tinyint null)
GO
create table fitemssZF (
 i_id int identity(1,1) not null primary key,
 citemcode nvarchar(20) not null,
 citemname nvarchar(60) null,
 bclose bit not null default 0,
 citemccode nvarchar(22) null)
GO
create index ix_fitemssZF on fitemssZF(citemcode)
GO
create table fitemssZFclass (
 i_id int identity(1,1) not null primary key,
 citemccode nvarchar(22) not null,
 cItemCname nvarchar(20) null,
 iItemCGrade tinyint null)
GO

create table inventory (
 cInvCode nvarchar(20) not null primary key,
 cInvName nvarchar(60) null,
 cInvCCode nvarchar(12) null)
GO
create table inventoryclass (
 cInvCCode nvarchar(12) not null primary key,
 cInvCName nvarchar(20) null,
 iInvCGrade tinyint null)
GO

create table foreigncurrency (
 cexch_name nvarchar(8) not null primary key,
 cexch_code nvarchar(4) null)
GO


----------------------------------------------------------------------------------------------------------------------
-- Balances per account and period
----------------------------------------------------------------------------------------------------------------------
-- b opening, d debit, c credit, e closing; m* amounts, m*_f foreign amounts, n*_s quantities.

-- Account totals, parents included: amounts are magnitudes, the direction words say on which side they stand.
create table gl_accsum (
 i_id int identity(1,1) not null primary key,
 iyear int not null,
 ccode nvarchar(40) not null,
 cexch_name nvarchar(8) null,
 iperiod tinyint not null,
 cbegind_c nvarchar(12) null, cbegind_c_engl nvarchar(12) null,
 nb_s float not null default 0, mb_f money not null default 0, mb money not null default 0,
 nd_s float not null default 0, md_f money not null default 0, md money not null default 0,
 nc_s float not null default 0, mc_f money not null default 0, mc money not null default 0,
 cendd_c nvarchar(12) null, cendd_c_engl nvarchar(12) null,
 ne_s float not null default 0, me_f money not null default 0, me money not null default 0)
GO
create index ix_gl_accsum on gl_accsum(iyear, ccode, iperiod)
GO

-- Auxiliary totals: last-level accounts per department, person, customer, supplier and item; signs as in gl_accsum.
create table gl_accass (
 i_id int identity(1,1) not null primary key,
 iyear int not null,
 ccode nvarchar(40) not null,
 cexch_name nvarchar(8) null,
 cdept_id nvarchar(12) null, cperson_id nvarchar(8) null,
 ccus_id nvarchar(12) null, csup_id nvarchar(12) null,
 citem_id nvarchar(20) null, citem_class nvarchar(4) null,
 iperiod tinyint not null,
 cbegind_c nvarchar(12) null, cbegind_c_engl nvarchar(12) null,
 cendd_c nvarchar(12) null, cendd_c_engl nvarchar(12) null,
 mb money not null default 0, md money not null default 0, mc money not null default 0, me money not null default 0,
 mb_f money not null default 0, md_f money not null default 0, mc_f money not null default 0, me_f money not null default 0,
 nb_s float not null default 0, nd_s float not null default 0, nc_s float not null default 0, ne_s float not null default 0)
GO
create index ix_gl_accass on gl_accass(iyear, ccode, iperiod)
GO

-- Multi-auxiliary totals: also per free name and user-defined column. No direction words: openings and closings are
-- signed, debit positive.
create table gl_accMultiass (
 i_id int identity(1,1) not null primary key,
 iyear int not null,
 ccode nvarchar(40) not null,
 cexch_name nvarchar(8) null,
 cdept_id nvarchar(12) null, cperson_id nvarchar(8) null,
 ccus_id nvarchar(12) null, csup_id nvarchar(12) null,
 citem_id nvarchar(20) null, citem_class nvarchar(4) null,
 cname nvarchar(40) null,
 cDefine1 nvarchar(60) null, cDefine2 nvarchar(60) null, cDefine3 nvarchar(60) null, cDefine4 datetime null,
 cDefine5 nvarchar(60) null, cDefine6 datetime null, cDefine7 nvarchar(60) null, cDefine8 nvarchar(60) null,
 cDefine9 nvarchar(60) null, cDefine10 nvarchar(60) null, cDefine11 nvarchar(60) null, cDefine12 nvarchar(60) null,
 cDefine13 nvarchar(60) null, cDefine14 nvarchar(60) null, cDefine15 nvarchar(60) null, cDefine16 nvarchar(60) null,
 iperiod tinyint not null,
 mb money not null default 0, md money not null default 0, mc money not null default 0, me money not null default 0,
 mb_f money not null default 0, md_f money not null default 0, mc_f money not null default 0, me_f money not null default 0,
 nb_s float not null default 0, nd_s float not null default 0, nc_s float not null default 0, ne_s float not null default 0,
 -- accumulated movements that are kept beside those of the period
 addmd money null default 0, addmd_f money null default 0, addnd_s float null default 0,
 addmc money null default 0, addmc_f money null default 0, addnc_s float null default 0)
GO
create index ix_gl_accMultiass on gl_accMultiass(iyear, ccode, iperiod)
GO

-- Opening balances of a year by user-defined column: magnitudes, cDirec says on which side.
create table GL_QcUserDef (
 i_id int identity(1,1) not null primary key,
 iyear int not null,
 ccode nvarchar(40) not null,
 cdept_id nvarchar(12) null, cperson_id nvarchar(8) null,
 ccus_id nvarchar(12) null, csup_id nvarchar(12) null,
 citem_id nvarchar(20) null, citem_class nvarchar(4) null,
 cdefine1 nvarchar(60) null, cdefine2 nvarchar(60) null, cdefine3 nvarchar(60) null, cdefine4 datetime null,
 cdefine5 nvarchar(60) null, cdefine6 datetime null, cdefine7 nvarchar(60) null, cdefine8 nvarchar(60) null,
 cdefine9 nvarchar(60) null, cdefine10 nvarchar(60) null, cdefine11 nvarchar(60) null, cdefine12 nvarchar(60) null,
 cdefine13 nvarchar(60) null, cdefine14 nvarchar(60) null, cdefine15 nvarchar(60) null, cdefine16 nvarchar(60) null,
 cDirec nvarchar(4) null,
 mb money null, mb_f money null, nb_s float null)
GO
create index ix_GL_QcUserDef on GL_QcUserDef(iyear, ccode)
GO


----------------------------------------------------------------------------------------------------------------------
-- Vouchers
----------------------------------------------------------------------------------------------------------------------

-- One row per voucher line. iperiod 1 to 12 are the ledger's periods, 0 an opening detail, 20 the reconciled balance of
-- a bank account, 21 a bank line that still has to be reconciled.
create table gl_accvouch (
 i_id int identity(1,1) not null primary key,
 -- the voucher
 iperiod tinyint not null,
 csign nvarchar(8) null, isignseq tinyint null,
 ino_id smallint null, inid smallint not null,
 dbill_date datetime not null,
 idoc smallint null,
 cbill nvarchar(20) null, ccheck nvarchar(20) null, cbook nvarchar(20) null,
 ibook tinyint not null default 0,  -- 1 posted
 ccashier nvarchar(20) null,
 iflag tinyint null,                -- Null on a live voucher
 ctext1 nvarchar(10) null, ctext2 nvarchar(10) null,
 -- the line
 cdigest nvarchar(120) null,
 ccode nvarchar(40) not null,
 cexch_name nvarchar(8) null,
 md money not null default 0, mc money not null default 0,
 md_f money not null default 0, mc_f money not null default 0, nfrat float not null default 0,
 nd_s float not null default 0, nc_s float not null default 0,
 csettle nvarchar(3) null, cn_id nvarchar(30) null, dt_date datetime null,
 -- its auxiliaries
 cdept_id nvarchar(12) null, cperson_id nvarchar(8) null,
 ccus_id nvarchar(12) null, csup_id nvarchar(12) null,
 citem_id nvarchar(20) null, citem_class nvarchar(4) null,
 cname nvarchar(40) null,
 ccode_equal nvarchar(50) null,
 iflagbank tinyint null,            -- bank reconciliation mark: Null or 0 is open
 iflagPerson tinyint null,          -- clearing mark of a current-account item: Null or 0 is open
 bdelete bit not null default 0,
 -- where a voucher of another subsystem comes from
 coutaccset nvarchar(3) null, ioutyear smallint null,
 coutsysname nvarchar(10) null, coutsysver nvarchar(10) null,
 doutbilldate datetime null, ioutperiod tinyint null,
 coutsign nvarchar(80) null, coutno_id nvarchar(50) null,
 doutdate datetime null, coutbillsign nvarchar(80) null, coutid nvarchar(50) null,
 -- what may still be changed in it
 bvouchedit bit not null default 1, bvouchAddordele bit not null default 0, bvouchmoneyhold bit not null default 0,
 bvalueedit bit not null default 1, bcodeedit bit not null default 1, ccodecontrol nvarchar(50) null,
 bPCSedit bit not null default 1, bDeptedit bit not null default 1, bItemedit bit not null default 1,
 bCusSupInput bit not null default 0,
 -- user-defined columns
 cDefine1 nvarchar(60) null, cDefine2 nvarchar(60) null, cDefine3 nvarchar(60) null, cDefine4 datetime null,
 cDefine5 nvarchar(60) null, cDefine6 datetime null, cDefine7 nvarchar(60) null, cDefine8 nvarchar(60) null,
 cDefine9 nvarchar(60) null, cDefine10 nvarchar(60) null, cDefine11 nvarchar(60) null, cDefine12 nvarchar(60) null,
 cDefine13 nvarchar(60) null, cDefine14 nvarchar(60) null, cDefine15 nvarchar(60) null, cDefine16 nvarchar(60) null,
 -- columns of the neighbouring subsystems: collection, clearing, budget, audit
 dReceive datetime null,
 cWLDZFlag nvarchar(20) null, dWLDZTime datetime null,
 bFlagOut bit not null default 0,
 iBG_OverFlag int null, cBG_Auditor nvarchar(20) null, dBG_AuditTime datetime null, cBG_AuditOpinion nvarchar(60) null,
 bWH_BgFlag bit null,
 ssxznum int null, CErrReason nvarchar(60) null,
 BG_AuditRemark nvarchar(60) null, cBudgetBuffer nvarchar(60) null, iBG_ControlResult int null,
 NCVouchID nvarchar(60) null, daudit_date datetime null, RowGuid uniqueidentifier null,
 cBankReconNo nvarchar(30) null,
 -- year, and when a current-account item was cleared: date, and year times 100 plus period
 iyear int null, iYPeriod int null,
 wllqDate datetime null, wllqPeriod int null)
GO
create index ix_accvouch_code on gl_accvouch(ccode, iyear, iperiod)
GO
create index ix_accvouch_voucher on gl_accvouch(iyear, iperiod, csign, ino_id, inid)
GO


----------------------------------------------------------------------------------------------------------------------
-- Bank
----------------------------------------------------------------------------------------------------------------------

-- Bank statement lines. ibegin 0 is the opening row of an account and year, 2 a row that a carry-forward keeps.
-- bd_c 1 is money that came in; iflag Null is a line that has not been reconciled.
create table rp_bankrecp (
 i_id int identity(1,1) not null primary key,
 iyear int not null,
 ibegin tinyint not null,
 ddate datetime null,
 mmoney money not null default 0,
 mbalance money not null default 0,
 ccode nvarchar(40) null,
 csettle nvarchar(3) null,
 cn_id nvarchar(30) null,
 bd_c bit not null default 0,
 iflag tinyint null,
 bdelete bit not null default 0,
 cBankReconNo nvarchar(30) null,
 cexch_name nvarchar(8) null,
 cdigest nvarchar(120) null)
GO
create index ix_rp_bankrecp on rp_bankrecp(iyear, ccode, ibegin)
GO

-- Cheques. One register a database, without a year; dout Null is a cheque that has not been used up.
create table rp_cheque (
 cCode nvarchar(40) null,
 cexch_name nvarchar(8) null,
 ccheque_id nvarchar(30) not null,
 dbill_date datetime null,
 cdept nvarchar(12) null,
 cname nvarchar(40) null,
 mmoney money null,
 ctext nvarchar(60) null,
 dout datetime null,
 cdesp nvarchar(60) null,
 cget nvarchar(20) null,
 ccode_equal nvarchar(50) null,
 cbankname nvarchar(60) null,
 cbankid nvarchar(30) null,
 dsetdate datetime null,
 mmoneyfact money null,
 cpassword nvarchar(20) null)
GO
create index ix_rp_cheque on rp_cheque(ccheque_id)
GO
create index ix_rp_cheque_account on rp_cheque(cCode)
GO


----------------------------------------------------------------------------------------------------------------------
-- Automatic transfers
----------------------------------------------------------------------------------------------------------------------

-- Transfer definitions: the rows of one (itype, ctran_id) are a voucher template, inid numbers them from 1.
create table gl_bautotran (
 itype tinyint not null,
 ctran_id nvarchar(10) not null,
 inid smallint not null,
 csign nvarchar(8) null,
 ctext nvarchar(60) null,
 idoc smallint null,
 ccode nvarchar(40) null,
 cexch_name nvarchar(8) null,
 cdigest nvarchar(120) null,
 ccus_id nvarchar(12) null, csup_id nvarchar(12) null,
 cperson_id nvarchar(8) null, cdept_id nvarchar(12) null,
 citem_class nvarchar(4) null, citem_id nvarchar(20) null,
 bd_c bit null,
 cformula nvarchar(200) null, cformula_s nvarchar(200) null, cformula_f nvarchar(200) null,
 cDefine1 nvarchar(60) null, cDefine2 nvarchar(60) null, cDefine3 nvarchar(60) null, cDefine4 datetime null,
 cDefine5 nvarchar(60) null, cDefine6 datetime null, cDefine7 nvarchar(60) null, cDefine8 nvarchar(60) null,
 cDefine9 nvarchar(60) null, cDefine10 nvarchar(60) null, cDefine11 nvarchar(60) null, cDefine12 nvarchar(60) null,
 cDefine13 nvarchar(60) null, cDefine14 nvarchar(60) null, cDefine15 nvarchar(60) null, cDefine16 nvarchar(60) null,
 -- the voucher that an amortisation or accrual (itype 80, 81) starts from; no year means the year of the definition
 RefVouchYear int null, RefVouchPeriod tinyint null, RefVouchSign nvarchar(8) null, RefVouchNo smallint null,
 cplan nvarchar(20) null,
 RefJe money null, RefJe_f money null, RefSL float null,
 iCount int null, Je money null, Rate float null,
 operater nvarchar(20) null,
 bAuto bit not null default 0)
GO
create index ix_gl_bautotran on gl_bautotran(itype, ctran_id, inid)
GO
create index ix_gl_bautotran_account on gl_bautotran(ccode)
GO

-- Run log of the definitions of type 80 and 81: which voucher each run made.
create table GL_TranReport (
 itype tinyint not null,
 ctran_id nvarchar(10) not null,
 vouchYear int null, vouchPeriod tinyint null, vouchSign nvarchar(8) null, vouchNo smallint null,
 dbill_date datetime null,
 sumJe money null, sumJe_f money null, sumSL float null,
 cbill nvarchar(20) null,
 bAuto bit null,
 iFlag tinyint null)
GO
create index ix_GL_TranReport on GL_TranReport(itype, ctran_id)
GO


----------------------------------------------------------------------------------------------------------------------
-- Books, digests, authorities and reports: copied table by table, column by column in this order
----------------------------------------------------------------------------------------------------------------------

create table GL_bmulti (i_id int identity(1,1) not null, cname nvarchar(20) not null, ctext nvarchar(60) null)
GO
create table GL_btext (id int identity(1,1) not null, ctext nvarchar(60) null)
GO
create table GL_cvprintinfset (autoid int identity(1,1) not null, cname nvarchar(20) null, bprint bit not null default 0)
GO
create table GL_mcodeauth (cid nvarchar(20) not null, ctext nvarchar(60) null, tqguid nvarchar(38) null)
GO
create table GL_mcodeused (cid nvarchar(20) not null, ctext nvarchar(60) null, tqguid nvarchar(38) null)
GO
create table GL_mitemused (cid nvarchar(20) not null, ctext nvarchar(60) null, tqguid nvarchar(38) null)
GO
create table GL_mybooktype (cid nvarchar(20) not null, ctext nvarchar(60) null, tqguid nvarchar(38) null)
GO
create table GL_myoutput (iid int identity(1,1) not null, cid nvarchar(20) not null, ctext nvarchar(60) null, tqguid nvarchar(38) null)
GO
create table GL_DzDwSet (i_id int identity(1,1) not null, cid nvarchar(20) not null, ctext nvarchar(60) null, tqguid nvarchar(38) null)
GO
create table GL_MRReport_Main (cid nvarchar(20) not null, ctext nvarchar(60) null, tqguid nvarchar(38) null)
GO
create table GL_MRShowItem_Main (cid nvarchar(20) not null, ctext nvarchar(60) null, tqguid nvarchar(38) null)
GO
create table GL_MRReportOption (cid nvarchar(20) not null, ctext nvarchar(60) null, tqguid nvarchar(38) null)
GO
create table GL_MRColumnDic_Set (cid nvarchar(20) not null, ctext nvarchar(60) null, tqguid nvarchar(38) null)
GO
create table GL_PRN_Format (cid nvarchar(20) not null, ctext nvarchar(60) null, tqguid nvarchar(38) null)
GO


----------------------------------------------------------------------------------------------------------------------
-- Voucher models: copied with select *, so none of them has an identity column
----------------------------------------------------------------------------------------------------------------------

create table GL_ModelMain (
 modelId int not null primary key,
 cName nvarchar(40) not null)
GO
create table GL_modelpreplace (
 modelId int not null,
 cKey nvarchar(20) not null,
 cText nvarchar(60) null,
 primary key (modelId, cKey))
GO
create table GL_ModelSub1 (
 modelId int not null,
 inid int not null,
 ccode nvarchar(40) null,
 md money null,
 mc money null)
GO
create table GL_ModelSub2 (
 modelId int not null,
 inid int not null,
 cdigest nvarchar(120) null)
GO


----------------------------------------------------------------------------------------------------------------------
-- Print formats, cash-flow sources, multi-column books
----------------------------------------------------------------------------------------------------------------------

-- Print formats of editions; filled without a column list, so the order of the columns counts. The view items' own
-- tables and columns are not made here: an edition that has them makes them when it first needs them.
create table PrintEx (
 cSubID nvarchar(4) null,
 cLang nvarchar(10) null,
 iNumber int null,
 cTitle nvarchar(40) null,
 cName nvarchar(20) null,
 cPaper nvarchar(4) null,
 iOrient int null,
 iKind int null,
 cHead nvarchar(20) null,
 cTail nvarchar(20) null,
 b1 bit null, b2 bit null, b3 bit null, b4 bit null, b5 bit null, b6 bit null)
GO

-- Where the amount of a cash-flow item comes from: bDataStyle 0 an item of class 98, 1 one of class ZF.
create table GL_CashItemDataSource (
 cItemCode nvarchar(20) not null,
 bDataStyle bit not null,
 cDataSource nvarchar(200) null,
 bDir bit null,
 bRelation bit null,
 dStartDate datetime null,
 dEndDate datetime null,
 iyear int not null)
GO
create index ix_GL_CashItemDataSource on GL_CashItemDataSource(iyear, cItemCode)
GO

-- Column groups of the multi-column books. Filled without a column list: the year stands last.
create table GL_bmultiGroup (
 cname nvarchar(20) null, ctext nvarchar(60) null, cass nvarchar(20) null, cclass nvarchar(14) null,
 ctype nvarchar(10) null, igroupnum int null, csubname nvarchar(20) null, ccode nvarchar(40) null,
 cdef nvarchar(20) null, bye bit null, isubnum int null, bd_c bit null, ccodes nvarchar(200) null,
 cass_code nvarchar(20) null, cdef_name nvarchar(20) null, cnames nvarchar(200) null,
 is_f bit null, bsingle bit null, bdouble bit null,
 iyear int null)
GO
create index ix_GL_bmultiGroup on GL_bmultiGroup(iyear)
GO


----------------------------------------------------------------------------------------------------------------------
-- Procedures that a carry-forward runs on the new year when its stages are through
----------------------------------------------------------------------------------------------------------------------

-- Gives every item class a display text.
create procedure GL_P_AllItemName as
begin
 set nocount on
 update fitem set cItem_Text = cItem_Name where cItem_Text is null
end
GO

-- Drops the field list of item classes that no longer exist.
create procedure NE_UpdateItemView_Proc as
begin
 set nocount on
 delete from fitemstructure where citem_class not in (select citem_class from fitem)
end
GO
