-- The bank side of 2005: starting balances, what has been reconciled, the bank's statements, the cheques.
-- Runs in TqData_001_2005.


----------------------------------------------------------------------------------------------------------------------
-- Starting balances of the reconciliation in the ledger: lines of period 20, in the currency of the account.
----------------------------------------------------------------------------------------------------------------------
insert into gl_accvouch(iyear, iperiod, inid, dbill_date, idoc, ibook, cdigest, ccode, md, mc) values(2005, 20, 0, '2005-01-01', 0, 1, N' ', N'10020101', 486200, 0)
insert into gl_accvouch(iyear, iperiod, inid, dbill_date, idoc, ibook, cdigest, ccode, md, mc) values(2005, 20, 0, '2005-01-01', 0, 1, N' ', N'10020102', 120000, 0)
insert into gl_accvouch(iyear, iperiod, inid, dbill_date, idoc, ibook, cdigest, ccode, cexch_name, md, mc) values(2005, 20, 0, '2005-01-01', 0, 1, N' ', N'10020201', N'美元', 30000, 0)
GO


----------------------------------------------------------------------------------------------------------------------
-- Reconciled lines of the ledger. A mark up to 24 is a line that was ticked and is still on view, a higher one a line
-- that has been put away.
----------------------------------------------------------------------------------------------------------------------

-- January to November are reconciled and put away; December is ticked.
update gl_accvouch set iflagbank=25, cBankReconNo=N'2005' where iyear=2005 and ccode like N'1002%' and iperiod between 1 and 11
update gl_accvouch set iflagbank=1, cBankReconNo=N'200512' where iyear=2005 and ccode like N'1002%' and iperiod=12

-- Still open: the cheques to Jiangbei and to the carrier, and the cheque of Hengli, which the bank has not credited yet.
update gl_accvouch set iflagbank=null, cBankReconNo=null where iyear=2005 and ccode=N'10020101' and iperiod=12 and cn_id in (N'ZZ1220', N'ZZ1228', N'ZZ1229')

-- The year-end valuation of the dollars has no counterpart at the bank.
update gl_accvouch set iflagbank=null, cBankReconNo=null where iyear=2005 and ccode=N'10020201' and iperiod=12
GO


----------------------------------------------------------------------------------------------------------------------
-- Bank statements. bd_c 1 is money that came in.
----------------------------------------------------------------------------------------------------------------------

-- Opening rows
insert into rp_bankrecp(iyear, ibegin, ddate, mmoney, mbalance, ccode, bd_c) values(2005, 0, '2005-01-01', 486200, 486200, N'10020101', 1)
insert into rp_bankrecp(iyear, ibegin, ddate, mmoney, mbalance, ccode, bd_c) values(2005, 0, '2005-01-01', 120000, 120000, N'10020102', 1)
insert into rp_bankrecp(iyear, ibegin, ddate, mmoney, mbalance, ccode, bd_c, cexch_name) values(2005, 0, '2005-01-01', 30000, 30000, N'10020201', 1, N'美元')
GO

-- What the ledger has reconciled stands in the statements on the same day, the dollar account in dollars.
insert into rp_bankrecp(iyear, ibegin, ddate, mmoney, ccode, csettle, cn_id, bd_c, iflag, cBankReconNo, cdigest)
 select 2005, 1, dbill_date, md+mc, ccode, csettle, cn_id, case when md<>0 then 1 else 0 end, 1, cBankReconNo, cdigest
 from gl_accvouch where iyear=2005 and ccode like N'100201%' and iperiod between 1 and 12 and iflagbank is not null
insert into rp_bankrecp(iyear, ibegin, ddate, mmoney, ccode, csettle, cn_id, bd_c, iflag, cBankReconNo, cexch_name, cdigest)
 select 2005, 1, dbill_date, md_f+mc_f, ccode, csettle, cn_id, case when md_f<>0 then 1 else 0 end, 1, cBankReconNo, cexch_name, cdigest
 from gl_accvouch where iyear=2005 and ccode=N'10020201' and iperiod between 1 and 12 and iflagbank is not null
GO

-- What the ledger does not have yet: interest, the electricity bill, and a charge on the dollar account.
insert into rp_bankrecp(iyear, ibegin, ddate, mmoney, ccode, csettle, cn_id, bd_c, cdigest) values(2005, 1, '2005-12-21', 312.5, N'10020101', N'3', N'LX1221', 1, N'存款利息')
insert into rp_bankrecp(iyear, ibegin, ddate, mmoney, ccode, csettle, cn_id, bd_c, cdigest) values(2005, 1, '2005-12-30', 860, N'10020101', N'3', N'DF1230', 0, N'代扣电费')
insert into rp_bankrecp(iyear, ibegin, ddate, mmoney, ccode, csettle, cn_id, bd_c, cexch_name, cdigest) values(2005, 1, '2005-12-28', 15, N'10020201', N'3', N'SF1228', 0, N'美元', N'账户管理费')
GO

-- The running balance of each account, by day and within a day in the order of entry.
update rp_bankrecp set mbalance=r.balance
 from rp_bankrecp, (
  select a.i_id, sum(case when b.bd_c=1 then b.mmoney else -b.mmoney end) as balance
  from rp_bankrecp a inner join rp_bankrecp b on b.iyear=a.iyear and b.ccode=a.ccode and (b.ddate<a.ddate or b.ddate=a.ddate and b.i_id<=a.i_id)
  where a.iyear=2005
  group by a.i_id) r
 where rp_bankrecp.i_id=r.i_id
GO


----------------------------------------------------------------------------------------------------------------------
-- Cheques: dout is the day on which a cheque was settled. Two are on their way, and one has been handed out blank.
----------------------------------------------------------------------------------------------------------------------
insert into rp_cheque(cCode, ccheque_id, dbill_date, cdept, cname, mmoney, ctext, dout, cget, cbankname) values(N'10020101', N'XJ1205', '2005-12-05', N'0101', N'王芳', 10000, N'备用金', '2005-12-05', N'王芳', N'工商银行')
insert into rp_cheque(cCode, ccheque_id, dbill_date, cdept, cname, mmoney, ctext, dout, cget, cbankname) values(N'10020101', N'ZZ1024', '2005-10-24', N'04', N'周建', 35500, N'工程款', '2005-10-26', N'周建', N'工商银行')
insert into rp_cheque(cCode, ccheque_id, dbill_date, cdept, cname, mmoney, ctext, cget, cbankname) values(N'10020101', N'ZZ1220', '2005-12-20', N'03', N'孙志强', 60000, N'预付货款', N'孙志强', N'工商银行')
insert into rp_cheque(cCode, ccheque_id, dbill_date, cdept, cname, mmoney, ctext, cget, cbankname) values(N'10020101', N'ZZ1229', '2005-12-29', N'0201', N'刘海涛', 2300, N'运费', N'刘海涛', N'工商银行')
insert into rp_cheque(cCode, ccheque_id, dbill_date, cdept, cname, ctext, cget, cbankname) values(N'10020102', N'ZZ1230', '2005-12-30', N'0102', N'陈立国', N'限额五千元', N'陈立国', N'工商银行')
GO
