-- Current-account items of 2005: the items that were open when the year began, and what has been cleared since.
-- Runs in TqData_001_2005.
--
-- An item is a voucher line on an account of persons, customers or suppliers. It is open while iflagPerson is Null.
-- Clearing marks the debits and credits that cancel out with 1, the date, and the period as year times 100 plus month.


----------------------------------------------------------------------------------------------------------------------
-- Opening details: the items behind the opening balances, as lines of period 0 with the dates of last year.
----------------------------------------------------------------------------------------------------------------------

-- Customers
insert into gl_accvouch(iperiod, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, ccus_id) values(0, 1, '2004-10-20', N'收到银行承兑汇票', N'1111', 58500, 0, N'0201', N'C001')
insert into gl_accvouch(iperiod, inid, dbill_date, cdigest, ccode, md, mc, ccus_id, cname) values(0, 1, '2004-12-14', N'销售商品', N'113101', 117000, 0, N'C001', N'刘海涛')
insert into gl_accvouch(iperiod, inid, dbill_date, cdigest, ccode, md, mc, ccus_id, cname) values(0, 1, '2004-12-21', N'销售商品', N'113101', 70200, 0, N'C002', N'刘海涛')
insert into gl_accvouch(iperiod, inid, dbill_date, cdigest, ccode, md, mc, ccus_id, cname) values(0, 1, '2004-11-30', N'销售商品', N'113101', 35100, 0, N'C003', N'刘海涛')
insert into gl_accvouch(iperiod, inid, dbill_date, cdigest, ccode, md, mc, ccus_id, cname) values(0, 1, '2004-09-08', N'销售商品', N'113101', 23400, 0, N'C006', N'陈立国')
insert into gl_accvouch(iperiod, inid, dbill_date, cdigest, ccode, md, mc, cexch_name, md_f, nfrat, ccus_id) values(0, 1, '2004-12-02', N'出口销售', N'113102', 99318, 0, N'美元', 12000, 8.2765, N'C005')
insert into gl_accvouch(iperiod, inid, dbill_date, cdigest, ccode, md, mc, ccus_id) values(0, 1, '2004-12-28', N'预收货款', N'2131', 0, 30000, N'C004')

-- Suppliers
insert into gl_accvouch(iperiod, inid, dbill_date, cdigest, ccode, md, mc, csup_id) values(0, 1, '2004-12-15', N'预付货款', N'1151', 40000, 0, N'V004')
insert into gl_accvouch(iperiod, inid, dbill_date, cdigest, ccode, md, mc, csup_id) values(0, 1, '2004-12-16', N'购进商品', N'212101', 0, 234000, N'V001')
insert into gl_accvouch(iperiod, inid, dbill_date, cdigest, ccode, md, mc, csup_id) values(0, 1, '2004-12-09', N'购进商品', N'212101', 0, 58500, N'V002')

-- Persons
insert into gl_accvouch(iperiod, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, cperson_id) values(0, 1, '2004-12-20', N'预借差旅费', N'113301', 5000, 0, N'0201', N'003')
insert into gl_accvouch(iperiod, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, cperson_id) values(0, 1, '2004-11-15', N'个人借款', N'113301', 2000, 0, N'0102', N'001')

update gl_accvouch set iyear=2005, iYPeriod=200500, idoc=0, cbook=N'王芳', ibook=1 where iyear is null and iperiod=0
GO


----------------------------------------------------------------------------------------------------------------------
-- Cleared: customers
----------------------------------------------------------------------------------------------------------------------

-- Dongming: last year's debt was paid in January, its note was honoured in July, the sale of July became a note in October.
update gl_accvouch set iflagPerson=1, wllqDate='2005-01-31', wllqPeriod=200501 where iyear=2005 and ccode=N'113101' and ccus_id=N'C001' and (md=117000 or mc=117000)
update gl_accvouch set iflagPerson=1, wllqDate='2005-07-31', wllqPeriod=200507 where iyear=2005 and ccode=N'1111' and ccus_id=N'C001' and (md=58500 or mc=58500)
update gl_accvouch set iflagPerson=1, wllqDate='2005-10-31', wllqPeriod=200510 where iyear=2005 and ccode=N'113101' and ccus_id=N'C001' and (md=128700 or mc=128700)

-- Ningtai: last year's debt was paid in April, the sale of February in December.
update gl_accvouch set iflagPerson=1, wllqDate='2005-04-30', wllqPeriod=200504 where iyear=2005 and ccode=N'113101' and ccus_id=N'C002' and iperiod in (0, 4)
update gl_accvouch set iflagPerson=1, wllqDate='2005-12-31', wllqPeriod=200512 where iyear=2005 and ccode=N'113101' and ccus_id=N'C002' and iperiod in (2, 12)

-- Hengli: last year's debt was paid in October, the sale of April in December.
update gl_accvouch set iflagPerson=1, wllqDate='2005-10-31', wllqPeriod=200510 where iyear=2005 and ccode=N'113101' and ccus_id=N'C003' and iperiod in (0, 10)
update gl_accvouch set iflagPerson=1, wllqDate='2005-12-31', wllqPeriod=200512 where iyear=2005 and ccode=N'113101' and ccus_id=N'C003' and iperiod in (4, 12)

-- Haiping: the goods it had paid in advance were delivered in May.
update gl_accvouch set iflagPerson=1, wllqDate='2005-05-31', wllqPeriod=200505 where iyear=2005 and ccode=N'2131' and ccus_id=N'C004' and iperiod in (0, 5)

-- Bluewater, in dollars: last year's debt and the sale of March were paid; the sale of June has been paid in part only.
update gl_accvouch set iflagPerson=1, wllqDate='2005-03-31', wllqPeriod=200503 where iyear=2005 and ccode=N'113102' and ccus_id=N'C005' and (md_f=12000 or mc_f=12000)
update gl_accvouch set iflagPerson=1, wllqDate='2005-06-30', wllqPeriod=200506 where iyear=2005 and ccode=N'113102' and ccus_id=N'C005' and (md_f=22000 or mc_f=22000)
GO


----------------------------------------------------------------------------------------------------------------------
-- Cleared: suppliers
----------------------------------------------------------------------------------------------------------------------

-- Last year's debts to Beiyuan and Jinchui, Jinchui's delivery of February, and the advance payment to Jiangbei.
update gl_accvouch set iflagPerson=1, wllqDate='2005-01-31', wllqPeriod=200501 where iyear=2005 and ccode=N'212101' and csup_id=N'V001' and (md=234000 or mc=234000)
update gl_accvouch set iflagPerson=1, wllqDate='2005-04-30', wllqPeriod=200504 where iyear=2005 and ccode=N'212101' and csup_id=N'V002' and (md=58500 or mc=58500)
update gl_accvouch set iflagPerson=1, wllqDate='2005-11-30', wllqPeriod=200511 where iyear=2005 and ccode=N'212101' and csup_id=N'V002' and (md=163800 or mc=163800)
update gl_accvouch set iflagPerson=1, wllqDate='2005-05-31', wllqPeriod=200505 where iyear=2005 and ccode=N'1151' and csup_id=N'V004' and (md=40000 or mc=40000)

-- Jiangbei's plate was paid in December but cleared only in January 2006: at the year-end both lines are still open.
update gl_accvouch set iflagPerson=1, wllqDate='2006-01-05', wllqPeriod=200601 where iyear=2005 and ccode=N'212101' and csup_id=N'V004'
GO


----------------------------------------------------------------------------------------------------------------------
-- Cleared: persons
----------------------------------------------------------------------------------------------------------------------

-- Last year's advances of Liu Haitao and Chen Liguo, and this year's of Zhao Min.
update gl_accvouch set iflagPerson=1, wllqDate='2005-02-28', wllqPeriod=200502 where iyear=2005 and ccode=N'113301' and cperson_id=N'003' and iperiod in (0, 2)
update gl_accvouch set iflagPerson=1, wllqDate='2005-08-31', wllqPeriod=200508 where iyear=2005 and ccode=N'113301' and cperson_id=N'001' and iperiod in (0, 8)
update gl_accvouch set iflagPerson=1, wllqDate='2005-09-30', wllqPeriod=200509 where iyear=2005 and ccode=N'113301' and cperson_id=N'004' and iperiod in (2, 9)

-- Travel expenses name the traveller for the analysis only; nothing is owed on them, so they count as cleared at once.
update gl_accvouch set iflagPerson=1, wllqDate='2005-12-31', wllqPeriod=200512 where iyear=2005 and ccode=N'550203'
GO
