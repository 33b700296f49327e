-- The chart of accounts of 2005: a trading company. Runs in TqData_001_2005.
-- Codes have four digits on the first level and two more on each further one.

-- Assets
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'1001', N'现金', N'资产', 1, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'1002', N'银行存款', N'资产', 1, 0, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'100201', N'工商银行', N'资产', 2, 0, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'10020101', N'工行基本户', N'资产', 3, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'10020102', N'工行一般户', N'资产', 3, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'100202', N'中国银行', N'资产', 2, 0, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'10020201', N'中行美元户', N'资产', 3, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'1101', N'短期投资', N'资产', 1, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'1111', N'应收票据', N'资产', 1, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'1131', N'应收账款', N'资产', 1, 0, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'113101', N'国内应收款', N'资产', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'113102', N'外销应收款', N'资产', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'1133', N'其他应收款', N'资产', 1, 0, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'113301', N'个人借款', N'资产', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'113302', N'押金保证金', N'资产', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'1141', N'坏账准备', N'资产', 1, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'1151', N'预付账款', N'资产', 1, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'1243', N'库存商品', N'资产', 1, 0, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'124301', N'钢材', N'资产', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'124302', N'五金工具', N'资产', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'1301', N'待摊费用', N'资产', 1, 0, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'130101', N'保险费', N'资产', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'130102', N'预付房租', N'资产', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'1501', N'固定资产', N'资产', 1, 0, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'150101', N'房屋建筑物', N'资产', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'150102', N'办公设备', N'资产', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'150103', N'运输设备', N'资产', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'1502', N'累计折旧', N'资产', 1, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'1801', N'无形资产', N'资产', 1, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'1901', N'长期待摊费用', N'资产', 1, 1, 1)
GO

-- Liabilities
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'2101', N'短期借款', N'负债', 1, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'2111', N'应付票据', N'负债', 1, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'2121', N'应付账款', N'负债', 1, 0, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'212101', N'应付货款', N'负债', 2, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'212102', N'暂估应付款', N'负债', 2, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'2131', N'预收账款', N'负债', 1, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'2151', N'应付工资', N'负债', 1, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'2153', N'应付福利费', N'负债', 1, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'2171', N'应交税金', N'负债', 1, 0, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'217101', N'应交增值税', N'负债', 2, 0, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'21710101', N'进项税额', N'负债', 3, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'21710103', N'转出未交增值税', N'负债', 3, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'21710105', N'销项税额', N'负债', 3, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'217102', N'未交增值税', N'负债', 2, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'217106', N'应交所得税', N'负债', 2, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'217108', N'应交城建税', N'负债', 2, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'2176', N'其他应交款', N'负债', 1, 0, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'217601', N'教育费附加', N'负债', 2, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'2181', N'其他应付款', N'负债', 1, 0, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'218101', N'收取押金', N'负债', 2, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'2191', N'预提费用', N'负债', 1, 1, 0)
GO

-- Equity
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'3101', N'实收资本', N'权益', 1, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'3121', N'盈余公积', N'权益', 1, 0, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'312101', N'法定盈余公积', N'权益', 2, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'312102', N'法定公益金', N'权益', 2, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'3131', N'本年利润', N'权益', 1, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'3141', N'利润分配', N'权益', 1, 0, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'314102', N'提取盈余公积', N'权益', 2, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'314115', N'未分配利润', N'权益', 2, 1, 0)
GO

-- Costs
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'4107', N'劳务成本', N'成本', 1, 1, 1)
GO

-- Profit and loss
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'5101', N'主营业务收入', N'损益', 1, 0, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'510101', N'国内销售收入', N'损益', 2, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'510102', N'出口销售收入', N'损益', 2, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'5201', N'投资收益', N'损益', 1, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'5301', N'营业外收入', N'损益', 1, 1, 0)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'5401', N'主营业务成本', N'损益', 1, 0, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'540101', N'国内销售成本', N'损益', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'540102', N'出口销售成本', N'损益', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'5402', N'主营业务税金及附加', N'损益', 1, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'5501', N'营业费用', N'损益', 1, 0, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'550101', N'运杂费', N'损益', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'550102', N'销售人员工资', N'损益', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'5502', N'管理费用', N'损益', 1, 0, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'550201', N'管理人员工资', N'损益', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'550202', N'办公费', N'损益', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'550203', N'差旅费', N'损益', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'550204', N'业务招待费', N'损益', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'550205', N'折旧及摊销', N'损益', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'550206', N'租赁及保险费', N'损益', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'5503', N'财务费用', N'损益', 1, 0, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'550301', N'利息支出', N'损益', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'550302', N'手续费', N'损益', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'550303', N'汇兑损益', N'损益', 2, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'5601', N'营业外支出', N'损益', 1, 1, 1)
insert into code(iyear, ccode, ccode_name, cclass, igrade, bend, bd_c) values(2005, N'5701', N'所得税', N'损益', 1, 1, 1)
GO

-- Auxiliaries: whom and what a line on the account has to name.
update code set bcus=1 where iyear=2005 and ccode in (N'1111', N'113101', N'113102', N'2131')
update code set bsup=1 where iyear=2005 and ccode in (N'1151', N'2111', N'212101', N'212102')
update code set bperson=1 where iyear=2005 and ccode in (N'113301', N'550203')
update code set bdept=1 where iyear=2005 and ccode in (N'150102', N'510101', N'540101', N'550101', N'550102', N'550201', N'550202', N'550204')

-- Notes receivable also name the department that sold, project costs the department that builds and the project.
update code set bdept=1 where iyear=2005 and ccode in (N'1111', N'4107')
update code set bitem=1, cass_item=N'01' where iyear=2005 and ccode=N'4107'

-- The goods are kept by article and in quantities.
update code set bitem=1, cass_item=N'ch', cmeasure=N'吨' where iyear=2005 and ccode=N'124301'
update code set bitem=1, cass_item=N'ch', cmeasure=N'件' where iyear=2005 and ccode=N'124302'

-- User-defined columns: 1 the other party, 2 the stage of a project, 3 the number of a contract.
update code set bcDefine1=1 where iyear=2005 and ccode in (N'218101', N'3101')
update code set bcDefine2=1 where iyear=2005 and ccode=N'4107'
update code set bcDefine3=1 where iyear=2005 and ccode=N'113302'

-- Dollar accounts.
update code set cexch_name=N'美元', bexchange=1 where iyear=2005 and ccode in (N'100202', N'10020201', N'113102')

-- Cash and bank; the bank accounts are reconciled with the bank's statements from the first of January on.
update code set bcash=1, br=1 where iyear=2005 and ccode=N'1001'
update code set bbank=1, br=1 where iyear=2005 and ccode like N'1002%'
update code set be=1, dbegin='2005-01-01' where iyear=2005 and ccode like N'1002%' and bend=1

-- What follows from the above.
update code set bproperty=bd_c where iyear=2005
update code set cclass_engl=(case cclass when N'资产' then N'Assets' when N'负债' then N'Liabilities' when N'权益' then N'Equity' when N'成本' then N'Costs' else N'Profit and loss' end) where iyear=2005
update code set cbook_type=N'金额式', cbook_type_engl=N'Amount' where iyear=2005
update code set cbook_type=N'外币金额式', cbook_type_engl=N'Foreign amount' where iyear=2005 and cexch_name is not null
update code set cbook_type=N'数量金额式', cbook_type_engl=N'Quantity' where iyear=2005 and cmeasure is not null
GO
