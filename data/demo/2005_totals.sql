-- The totals of 2005, derived from the opening balances and the vouchers. Runs in TqData_001_2005, in one session.
-- A key (account, currency, auxiliaries) has a row for every period from its first one on, so that the closing
-- balances of the year all stand in period 12.


----------------------------------------------------------------------------------------------------------------------
-- The opening balances of 1 January 2005, debit positive. Their sum is 0.
----------------------------------------------------------------------------------------------------------------------
create table #opening (
 ccode nvarchar(40) not null,
 cexch_name nvarchar(8) null,
 cdept_id nvarchar(12) null, cperson_id nvarchar(8) null,
 ccus_id nvarchar(12) null, csup_id nvarchar(12) null,
 citem_id nvarchar(20) null, citem_class nvarchar(4) null,
 cname nvarchar(40) null,
 cDefine1 nvarchar(60) null, cDefine2 nvarchar(60) null, cDefine3 nvarchar(60) null,
 mb money not null default 0, mb_f money not null default 0, nb_s float not null default 0)
GO

-- Assets
insert into #opening(ccode, mb) values(N'1001', 8600)
insert into #opening(ccode, mb) values(N'10020101', 486200)
insert into #opening(ccode, mb) values(N'10020102', 120000)
insert into #opening(ccode, mb, cexch_name, mb_f) values(N'10020201', 248295, N'美元', 30000)
insert into #opening(ccode, mb) values(N'1101', 50000)
insert into #opening(ccode, mb, cdept_id, ccus_id) values(N'1111', 58500, N'0201', N'C001')
insert into #opening(ccode, mb, ccus_id, cname) values(N'113101', 117000, N'C001', N'刘海涛')
insert into #opening(ccode, mb, ccus_id, cname) values(N'113101', 70200, N'C002', N'刘海涛')
insert into #opening(ccode, mb, ccus_id, cname) values(N'113101', 35100, N'C003', N'刘海涛')
insert into #opening(ccode, mb, ccus_id, cname) values(N'113101', 23400, N'C006', N'陈立国')
insert into #opening(ccode, mb, cexch_name, mb_f, ccus_id) values(N'113102', 99318, N'美元', 12000, N'C005')
insert into #opening(ccode, mb, cdept_id, cperson_id) values(N'113301', 5000, N'0201', N'003')
insert into #opening(ccode, mb, cdept_id, cperson_id) values(N'113301', 2000, N'0102', N'001')
insert into #opening(ccode, mb, cDefine3) values(N'113302', 20000, N'HT-2004-018')
insert into #opening(ccode, mb) values(N'1141', -1800)
insert into #opening(ccode, mb, csup_id) values(N'1151', 40000, N'V004')
insert into #opening(ccode, mb, nb_s, citem_class, citem_id) values(N'124301', 165000, 50, N'ch', N'S001')
insert into #opening(ccode, mb, nb_s, citem_class, citem_id) values(N'124301', 72000, 20, N'ch', N'S002')
insert into #opening(ccode, mb, nb_s, citem_class, citem_id) values(N'124301', 67500, 15, N'ch', N'S003')
insert into #opening(ccode, mb, nb_s, citem_class, citem_id) values(N'124302', 84000, 300, N'ch', N'H001')
insert into #opening(ccode, mb, nb_s, citem_class, citem_id) values(N'124302', 36000, 800, N'ch', N'H002')
insert into #opening(ccode, mb) values(N'130102', 30000)
insert into #opening(ccode, mb) values(N'150101', 1200000)
insert into #opening(ccode, mb, cdept_id) values(N'150102', 48000, N'0101')
insert into #opening(ccode, mb, cdept_id) values(N'150102', 32000, N'0102')
insert into #opening(ccode, mb) values(N'150103', 260000)
insert into #opening(ccode, mb) values(N'1502', -312000)
insert into #opening(ccode, mb) values(N'1801', 60000)
insert into #opening(ccode, mb) values(N'1901', 36000)
GO

-- Liabilities
insert into #opening(ccode, mb) values(N'2101', -300000)
insert into #opening(ccode, mb, csup_id) values(N'212101', -234000, N'V001')
insert into #opening(ccode, mb, csup_id) values(N'212101', -58500, N'V002')
insert into #opening(ccode, mb, ccus_id) values(N'2131', -30000, N'C004')
insert into #opening(ccode, mb) values(N'2153', -18600)
insert into #opening(ccode, mb) values(N'217102', -26400)
insert into #opening(ccode, mb) values(N'217106', -15000)
insert into #opening(ccode, mb) values(N'217108', -1848)
insert into #opening(ccode, mb) values(N'217601', -792)
insert into #opening(ccode, mb, cDefine1) values(N'218101', -10000, N'顺航货运')
GO

-- Equity
insert into #opening(ccode, mb, cDefine1) values(N'3101', -900000, N'陈立国')
insert into #opening(ccode, mb, cDefine1) values(N'3101', -600000, N'林秀英')
insert into #opening(ccode, mb) values(N'312101', -85000)
insert into #opening(ccode, mb) values(N'312102', -42500)
insert into #opening(ccode, mb) values(N'314115', -837673)
GO


----------------------------------------------------------------------------------------------------------------------
-- Everything that makes a balance: the openings as debits of period 0, then the voucher lines.
----------------------------------------------------------------------------------------------------------------------
create table #entry (
 iperiod tinyint not null,
 ccode nvarchar(40) not null,
 cexch_name nvarchar(8) null,
 cdept_id nvarchar(12) null, cperson_id nvarchar(8) null,
 ccus_id nvarchar(12) null, csup_id nvarchar(12) null,
 citem_id nvarchar(20) null, citem_class nvarchar(4) null,
 cname nvarchar(40) null,
 cDefine1 nvarchar(60) null, cDefine2 nvarchar(60) null, cDefine3 nvarchar(60) null,
 md money not null, mc money not null,
 md_f money not null, mc_f money not null,
 nd_s float not null, nc_s float not null)
GO
insert into #entry(iperiod, ccode, cexch_name, cdept_id, cperson_id, ccus_id, csup_id, citem_id, citem_class, cname, cDefine1, cDefine2, cDefine3, md, mc, md_f, mc_f, nd_s, nc_s)
 select 0, ccode, cexch_name, cdept_id, cperson_id, ccus_id, csup_id, citem_id, citem_class, cname, cDefine1, cDefine2, cDefine3, mb, 0, mb_f, 0, nb_s, 0
 from #opening

insert into #entry(iperiod, ccode, cexch_name, cdept_id, cperson_id, ccus_id, csup_id, citem_id, citem_class, cname, cDefine1, cDefine2, cDefine3, md, mc, md_f, mc_f, nd_s, nc_s)
 select iperiod, ccode, cexch_name, cdept_id, cperson_id, ccus_id, csup_id, citem_id, citem_class, cname, cDefine1, cDefine2, cDefine3, md, mc, md_f, mc_f, nd_s, nc_s
 from gl_accvouch where iyear=2005 and iperiod between 1 and 12

select distinct iperiod into #period from gl_accvouch where iyear=2005 and iperiod between 1 and 12
GO


----------------------------------------------------------------------------------------------------------------------
-- Multi-auxiliary totals: the accounts that have an auxiliary or a user-defined column. Balances are signed.
----------------------------------------------------------------------------------------------------------------------
insert into gl_accMultiass(iyear, ccode, cexch_name, cdept_id, cperson_id, ccus_id, csup_id, citem_id, citem_class, cname, cDefine1, cDefine2, cDefine3, iperiod,
 mb, md, mc, me, mb_f, md_f, mc_f, me_f, nb_s, nd_s, nc_s, ne_s)
 select 2005, e.ccode, e.cexch_name, e.cdept_id, e.cperson_id, e.ccus_id, e.csup_id, e.citem_id, e.citem_class, e.cname, e.cDefine1, e.cDefine2, e.cDefine3, p.iperiod,
  sum(case when e.iperiod<p.iperiod then e.md-e.mc else 0 end), sum(case when e.iperiod=p.iperiod then e.md else 0 end), sum(case when e.iperiod=p.iperiod then e.mc else 0 end), sum(e.md-e.mc),
  sum(case when e.iperiod<p.iperiod then e.md_f-e.mc_f else 0 end), sum(case when e.iperiod=p.iperiod then e.md_f else 0 end), sum(case when e.iperiod=p.iperiod then e.mc_f else 0 end), sum(e.md_f-e.mc_f),
  sum(case when e.iperiod<p.iperiod then e.nd_s-e.nc_s else 0 end), sum(case when e.iperiod=p.iperiod then e.nd_s else 0 end), sum(case when e.iperiod=p.iperiod then e.nc_s else 0 end), sum(e.nd_s-e.nc_s)
 from #entry e inner join #period p on e.iperiod<=p.iperiod inner join code c on c.iyear=2005 and c.ccode=e.ccode
 where c.bperson=1 or c.bcus=1 or c.bsup=1 or c.bdept=1 or c.bitem=1 or c.bcDefine1=1 or c.bcDefine2=1 or c.bcDefine3=1
 group by e.ccode, e.cexch_name, e.cdept_id, e.cperson_id, e.ccus_id, e.csup_id, e.citem_id, e.citem_class, e.cname, e.cDefine1, e.cDefine2, e.cDefine3, p.iperiod
GO


----------------------------------------------------------------------------------------------------------------------
-- Auxiliary totals: the same without the free name and the user-defined columns, for the accounts that have an
-- auxiliary. Signed at first; the update gives each balance its side and leaves the magnitude, and foreign amounts and
-- quantities turn over with the amount.
----------------------------------------------------------------------------------------------------------------------
insert into gl_accass(iyear, ccode, cexch_name, cdept_id, cperson_id, ccus_id, csup_id, citem_id, citem_class, iperiod,
 mb, md, mc, me, mb_f, md_f, mc_f, me_f, nb_s, nd_s, nc_s, ne_s)
 select 2005, m.ccode, m.cexch_name, m.cdept_id, m.cperson_id, m.ccus_id, m.csup_id, m.citem_id, m.citem_class, m.iperiod,
  sum(m.mb), sum(m.md), sum(m.mc), sum(m.me), sum(m.mb_f), sum(m.md_f), sum(m.mc_f), sum(m.me_f), sum(m.nb_s), sum(m.nd_s), sum(m.nc_s), sum(m.ne_s)
 from gl_accMultiass m inner join code c on c.iyear=m.iyear and c.ccode=m.ccode
 where m.iyear=2005 and (c.bperson=1 or c.bcus=1 or c.bsup=1 or c.bdept=1 or c.bitem=1)
 group by m.ccode, m.cexch_name, m.cdept_id, m.cperson_id, m.ccus_id, m.csup_id, m.citem_id, m.citem_class, m.iperiod

update gl_accass set
 cbegind_c=(case when mb>0 then N'借' when mb=0 then N'平' else N'贷' end), cbegind_c_engl=(case when mb>0 then N'Dr' when mb=0 then N'-' else N'Cr' end),
 cendd_c=(case when me>0 then N'借' when me=0 then N'平' else N'贷' end), cendd_c_engl=(case when me>0 then N'Dr' when me=0 then N'-' else N'Cr' end),
 mb=abs(mb), mb_f=(case when mb<0 then -mb_f else mb_f end), nb_s=(case when mb<0 then -nb_s else nb_s end),
 me=abs(me), me_f=(case when me<0 then -me_f else me_f end), ne_s=(case when me<0 then -ne_s else ne_s end)
 where iyear=2005
GO


----------------------------------------------------------------------------------------------------------------------
-- Account totals: last-level accounts per currency, then every parent from the last-level accounts below it, then sides
-- and magnitudes as above. A parent shows one currency when it has one of its own, and quantities only with a unit.
----------------------------------------------------------------------------------------------------------------------
insert into gl_accsum(iyear, ccode, cexch_name, iperiod, mb, md, mc, me, mb_f, md_f, mc_f, me_f, nb_s, nd_s, nc_s, ne_s)
 select 2005, e.ccode, e.cexch_name, p.iperiod,
  sum(case when e.iperiod<p.iperiod then e.md-e.mc else 0 end), sum(case when e.iperiod=p.iperiod then e.md else 0 end), sum(case when e.iperiod=p.iperiod then e.mc else 0 end), sum(e.md-e.mc),
  sum(case when e.iperiod<p.iperiod then e.md_f-e.mc_f else 0 end), sum(case when e.iperiod=p.iperiod then e.md_f else 0 end), sum(case when e.iperiod=p.iperiod then e.mc_f else 0 end), sum(e.md_f-e.mc_f),
  sum(case when e.iperiod<p.iperiod then e.nd_s-e.nc_s else 0 end), sum(case when e.iperiod=p.iperiod then e.nd_s else 0 end), sum(case when e.iperiod=p.iperiod then e.nc_s else 0 end), sum(e.nd_s-e.nc_s)
 from #entry e inner join #period p on e.iperiod<=p.iperiod
 group by e.ccode, e.cexch_name, p.iperiod

insert into gl_accsum(iyear, ccode, cexch_name, iperiod, mb, md, mc, me, mb_f, md_f, mc_f, me_f)
 select 2005, u.ccode, u.cexch_name, s.iperiod, sum(s.mb), sum(s.md), sum(s.mc), sum(s.me), sum(s.mb_f), sum(s.md_f), sum(s.mc_f), sum(s.me_f)
 from code u inner join code c on c.iyear=u.iyear and c.bend=1 and c.ccode like u.ccode+'%' inner join gl_accsum s on s.iyear=c.iyear and s.ccode=c.ccode
 where u.iyear=2005 and u.bend=0
 group by u.ccode, u.cexch_name, s.iperiod

update gl_accsum set
 cbegind_c=(case when mb>0 then N'借' when mb=0 then N'平' else N'贷' end), cbegind_c_engl=(case when mb>0 then N'Dr' when mb=0 then N'-' else N'Cr' end),
 cendd_c=(case when me>0 then N'借' when me=0 then N'平' else N'贷' end), cendd_c_engl=(case when me>0 then N'Dr' when me=0 then N'-' else N'Cr' end),
 mb=abs(mb), mb_f=(case when mb<0 then -mb_f else mb_f end), nb_s=(case when mb<0 then -nb_s else nb_s end),
 me=abs(me), me_f=(case when me<0 then -me_f else me_f end), ne_s=(case when me<0 then -ne_s else ne_s end)
 where iyear=2005
GO

-- An account with totals is in use.
update code set bused=1 where iyear=2005 and ccode in (select ccode from gl_accsum where iyear=2005)
GO

drop table #opening
drop table #entry
drop table #period
GO
