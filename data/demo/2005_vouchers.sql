-- The vouchers of 2005. Runs in TqData_001_2005.
-- One insert a voucher line; the number of a voucher starts anew each month. What all lines have in common, the year,
-- the voucher type, who made and who posted them, is set by the last statement of the file.

----------------------------------------------------------------------------------------------------------------------
-- January
----------------------------------------------------------------------------------------------------------------------
-- No. 1, 5 January: cash for the till.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(1, 1, 1, '2005-01-05', N'提取备用金', N'1001', 10000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(1, 1, 2, '2005-01-05', N'提取备用金', N'10020101', 0, 10000, N'101', N'XJ0501')

-- No. 2, 10 January: taxes of last December are paid.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(1, 2, 1, '2005-01-10', N'缴纳上月税费', N'217102', 26400, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(1, 2, 2, '2005-01-10', N'缴纳上月税费', N'217108', 1848, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(1, 2, 3, '2005-01-10', N'缴纳上月税费', N'217601', 792, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(1, 2, 4, '2005-01-10', N'缴纳上月税费', N'10020101', 0, 29040, N'3', N'SF0501')

-- No. 3, 12 January: Dongming pays what it owed from last year.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(1, 3, 1, '2005-01-12', N'收回货款', N'10020101', 117000, 0, N'2', N'DH0112')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id, ccus_id, cname)
 values(1, 3, 2, '2005-01-12', N'收回货款', N'113101', 0, 117000, N'2', N'DH0112', N'C001', N'刘海涛')

-- No. 4, 18 January: 40 tons of bars from Beiyuan.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nd_s, citem_class, citem_id)
 values(1, 4, 1, '2005-01-18', N'购进商品', N'124301', 136000, 0, 40, N'ch', N'S001')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(1, 4, 2, '2005-01-18', N'购进商品', N'21710101', 23120, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csup_id)
 values(1, 4, 3, '2005-01-18', N'购进商品', N'212101', 0, 159120, N'V001')

-- No. 5, 20 January: last year's debt to Beiyuan is paid.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id, csup_id)
 values(1, 5, 1, '2005-01-20', N'支付货款', N'212101', 234000, 0, N'2', N'DH0120', N'V001')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(1, 5, 2, '2005-01-20', N'支付货款', N'10020101', 0, 234000, N'2', N'DH0120')

GO

----------------------------------------------------------------------------------------------------------------------
-- February
----------------------------------------------------------------------------------------------------------------------
-- No. 1, 3 February: 30 tons of bars to Ningtai.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, ccus_id, cname)
 values(2, 1, 1, '2005-02-03', N'销售商品', N'113101', 161460, 0, N'C002', N'刘海涛')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(2, 1, 2, '2005-02-03', N'销售商品', N'510101', 0, 138000, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(2, 1, 3, '2005-02-03', N'销售商品', N'21710105', 0, 23460)

-- No. 2, 3 February: their cost.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(2, 2, 1, '2005-02-03', N'结转销售成本', N'540101', 99600, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nc_s, citem_class, citem_id)
 values(2, 2, 2, '2005-02-03', N'结转销售成本', N'124301', 0, 99600, 30, N'ch', N'S001')

-- No. 3, 8 February: 500 drills from Jinchui.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nd_s, citem_class, citem_id)
 values(2, 3, 1, '2005-02-08', N'购进商品', N'124302', 140000, 0, 500, N'ch', N'H001')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(2, 3, 2, '2005-02-08', N'购进商品', N'21710101', 23800, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csup_id)
 values(2, 3, 3, '2005-02-08', N'购进商品', N'212101', 0, 163800, N'V002')

-- No. 4, 16 February: Zhao Min takes an advance for the spring fair.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, cperson_id)
 values(2, 4, 1, '2005-02-16', N'预借差旅费', N'113301', 6000, 0, N'0202', N'004')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(2, 4, 2, '2005-02-16', N'预借差旅费', N'1001', 0, 6000)

-- No. 5, 25 February: Liu Haitao settles last year's advance.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, cperson_id)
 values(2, 5, 1, '2005-02-25', N'报销差旅费', N'550203', 4600, 0, N'0201', N'003')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(2, 5, 2, '2005-02-25', N'退回余款', N'1001', 400, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, cperson_id)
 values(2, 5, 3, '2005-02-25', N'报销差旅费', N'113301', 0, 5000, N'0201', N'003')

GO

----------------------------------------------------------------------------------------------------------------------
-- March
----------------------------------------------------------------------------------------------------------------------
-- No. 1, 2 March: 330 drills to Bluewater, in dollars.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cexch_name, md_f, nfrat, ccus_id)
 values(3, 1, 1, '2005-03-02', N'出口销售', N'113102', 182083, 0, N'美元', 22000, 8.2765, N'C005')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(3, 1, 2, '2005-03-02', N'出口销售', N'510102', 0, 182083)

-- No. 2, 2 March: their cost.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(3, 2, 1, '2005-03-02', N'结转销售成本', N'540102', 92400, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nc_s, citem_class, citem_id)
 values(3, 2, 2, '2005-03-02', N'结转销售成本', N'124302', 0, 92400, 330, N'ch', N'H001')

-- No. 3, 15 March: Bluewater pays what it owed from last year.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cexch_name, md_f, nfrat, csettle, cn_id)
 values(3, 3, 1, '2005-03-15', N'收回外销货款', N'10020201', 99318, 0, N'美元', 12000, 8.2765, N'2', N'TT0315')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cexch_name, mc_f, nfrat, csettle, cn_id, ccus_id)
 values(3, 3, 2, '2005-03-15', N'收回外销货款', N'113102', 0, 99318, N'美元', 12000, 8.2765, N'2', N'TT0315', N'C005')

-- No. 4, 31 March: wages of the quarter.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(3, 4, 1, '2005-03-31', N'计提本季工资', N'550201', 12000, 0, N'0101')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(3, 4, 2, '2005-03-31', N'计提本季工资', N'550201', 9000, 0, N'0102')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(3, 4, 3, '2005-03-31', N'计提本季工资', N'550102', 15000, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(3, 4, 4, '2005-03-31', N'计提本季工资', N'550102', 8000, 0, N'0202')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(3, 4, 5, '2005-03-31', N'计提本季工资', N'2151', 0, 44000)

-- No. 5, 31 March: wages are paid.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(3, 5, 1, '2005-03-31', N'发放工资', N'2151', 44000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(3, 5, 2, '2005-03-31', N'发放工资', N'10020101', 0, 44000, N'102', N'ZZ0331')

-- No. 6, 31 March: depreciation of the quarter.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(3, 6, 1, '2005-03-31', N'计提折旧', N'550205', 6000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(3, 6, 2, '2005-03-31', N'计提折旧', N'1502', 0, 6000)

-- No. 7, 31 March: interest on the bank loan is accrued.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(3, 7, 1, '2005-03-31', N'预提借款利息', N'550301', 4500, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(3, 7, 2, '2005-03-31', N'预提借款利息', N'2191', 0, 4500)

-- No. 8, 31 March: a quarter of the rent falls due.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(3, 8, 1, '2005-03-31', N'摊销房租', N'550206', 6000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(3, 8, 2, '2005-03-31', N'摊销房租', N'130102', 0, 6000)

GO

----------------------------------------------------------------------------------------------------------------------
-- April
----------------------------------------------------------------------------------------------------------------------
-- No. 1, 6 April: Ningtai pays what it owed from last year.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(4, 1, 1, '2005-04-06', N'收回货款', N'10020101', 70200, 0, N'102', N'ZZ0406')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id, ccus_id, cname)
 values(4, 1, 2, '2005-04-06', N'收回货款', N'113101', 0, 70200, N'102', N'ZZ0406', N'C002', N'刘海涛')

-- No. 2, 12 April: last year's debt to Jinchui is paid.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id, csup_id)
 values(4, 2, 1, '2005-04-12', N'支付货款', N'212101', 58500, 0, N'2', N'DH0412', N'V002')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(4, 2, 2, '2005-04-12', N'支付货款', N'10020101', 0, 58500, N'2', N'DH0412')

-- No. 3, 20 April: accrued interest is paid.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(4, 3, 1, '2005-04-20', N'支付借款利息', N'2191', 4500, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(4, 3, 2, '2005-04-20', N'支付借款利息', N'10020101', 0, 4500, N'3', N'TS0420')

-- No. 4, 22 April: 100 drills to Hengli.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, ccus_id, cname)
 values(4, 4, 1, '2005-04-22', N'销售商品', N'113101', 46800, 0, N'C003', N'刘海涛')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(4, 4, 2, '2005-04-22', N'销售商品', N'510101', 0, 40000, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(4, 4, 3, '2005-04-22', N'销售商品', N'21710105', 0, 6800)

-- No. 5, 22 April: their cost.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(4, 5, 1, '2005-04-22', N'结转销售成本', N'540101', 28000, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nc_s, citem_class, citem_id)
 values(4, 5, 2, '2005-04-22', N'结转销售成本', N'124302', 0, 28000, 100, N'ch', N'H001')

GO

----------------------------------------------------------------------------------------------------------------------
-- May
----------------------------------------------------------------------------------------------------------------------
-- No. 1, 10 May: 20 tons of plate from Jiangbei, partly against the advance payment.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nd_s, citem_class, citem_id)
 values(5, 1, 1, '2005-05-10', N'购进商品', N'124301', 90000, 0, 20, N'ch', N'S003')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(5, 1, 2, '2005-05-10', N'购进商品', N'21710101', 15300, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csup_id)
 values(5, 1, 3, '2005-05-10', N'购进商品', N'1151', 0, 40000, N'V004')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csup_id)
 values(5, 1, 4, '2005-05-10', N'购进商品', N'212101', 0, 65300, N'V004')

-- No. 2, 16 May: the warehouse racks: first stage.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, citem_class, citem_id, cDefine2)
 values(5, 2, 1, '2005-05-16', N'滨江仓库一期用款', N'4107', 18000, 0, N'04', N'01', N'P01', N'一期')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(5, 2, 2, '2005-05-16', N'滨江仓库一期用款', N'10020101', 0, 18000, N'102', N'ZZ0516')

-- No. 3, 24 May: 6 tons of angle steel to Haiping, mostly paid in advance.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, ccus_id)
 values(5, 3, 1, '2005-05-24', N'销售商品', N'2131', 30000, 0, N'C004')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, ccus_id, cname)
 values(5, 3, 2, '2005-05-24', N'销售商品', N'113101', 5100, 0, N'C004', N'刘海涛')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(5, 3, 3, '2005-05-24', N'销售商品', N'510101', 0, 30000, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(5, 3, 4, '2005-05-24', N'销售商品', N'21710105', 0, 5100)

-- No. 4, 24 May: their cost.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(5, 4, 1, '2005-05-24', N'结转销售成本', N'540101', 21600, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nc_s, citem_class, citem_id)
 values(5, 4, 2, '2005-05-24', N'结转销售成本', N'124301', 0, 21600, 6, N'ch', N'S002')

GO

----------------------------------------------------------------------------------------------------------------------
-- June
----------------------------------------------------------------------------------------------------------------------
-- No. 1, 2 June: charges of the bank.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(6, 1, 1, '2005-06-02', N'银行手续费', N'550302', 120, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(6, 1, 2, '2005-06-02', N'银行手续费', N'10020101', 0, 120, N'3', N'SF0602')

-- No. 2, 9 June: 300 drills and 500 wrench sets to Bluewater.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cexch_name, md_f, nfrat, ccus_id)
 values(6, 2, 1, '2005-06-09', N'出口销售', N'113102', 231742, 0, N'美元', 28000, 8.2765, N'C005')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(6, 2, 2, '2005-06-09', N'出口销售', N'510102', 0, 231742)

-- No. 3, 9 June: their cost.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(6, 3, 1, '2005-06-09', N'结转销售成本', N'540102', 106500, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nc_s, citem_class, citem_id)
 values(6, 3, 2, '2005-06-09', N'结转销售成本', N'124302', 0, 84000, 300, N'ch', N'H001')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nc_s, citem_class, citem_id)
 values(6, 3, 3, '2005-06-09', N'结转销售成本', N'124302', 0, 22500, 500, N'ch', N'H002')

-- No. 4, 15 June: Bluewater pays the sale of March.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cexch_name, md_f, nfrat, csettle, cn_id)
 values(6, 4, 1, '2005-06-15', N'收回外销货款', N'10020201', 182083, 0, N'美元', 22000, 8.2765, N'2', N'TT0615')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cexch_name, mc_f, nfrat, csettle, cn_id, ccus_id)
 values(6, 4, 2, '2005-06-15', N'收回外销货款', N'113102', 0, 182083, N'美元', 22000, 8.2765, N'2', N'TT0615', N'C005')

-- No. 5, 20 June: 20,000 dollars are sold to the bank.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(6, 5, 1, '2005-06-20', N'结汇', N'10020102', 165400, 0, N'2', N'JH0620')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(6, 5, 2, '2005-06-20', N'结汇损失', N'550303', 130, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cexch_name, mc_f, nfrat, csettle, cn_id)
 values(6, 5, 3, '2005-06-20', N'结汇', N'10020201', 0, 165530, N'美元', 20000, 8.2765, N'2', N'JH0620')

-- No. 6, 30 June: wages of the quarter.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(6, 6, 1, '2005-06-30', N'计提本季工资', N'550201', 12000, 0, N'0101')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(6, 6, 2, '2005-06-30', N'计提本季工资', N'550201', 9000, 0, N'0102')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(6, 6, 3, '2005-06-30', N'计提本季工资', N'550102', 15000, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(6, 6, 4, '2005-06-30', N'计提本季工资', N'550102', 8000, 0, N'0202')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(6, 6, 5, '2005-06-30', N'计提本季工资', N'2151', 0, 44000)

-- No. 7, 30 June: wages are paid.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(6, 7, 1, '2005-06-30', N'发放工资', N'2151', 44000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(6, 7, 2, '2005-06-30', N'发放工资', N'10020101', 0, 44000, N'102', N'ZZ0630')

-- No. 8, 30 June: depreciation of the quarter.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(6, 8, 1, '2005-06-30', N'计提折旧', N'550205', 6000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(6, 8, 2, '2005-06-30', N'计提折旧', N'1502', 0, 6000)

-- No. 9, 30 June: interest on the bank loan is accrued.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(6, 9, 1, '2005-06-30', N'预提借款利息', N'550301', 4500, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(6, 9, 2, '2005-06-30', N'预提借款利息', N'2191', 0, 4500)

-- No. 10, 30 June: a quarter of the rent falls due.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(6, 10, 1, '2005-06-30', N'摊销房租', N'550206', 6000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(6, 10, 2, '2005-06-30', N'摊销房租', N'130102', 0, 6000)

GO

----------------------------------------------------------------------------------------------------------------------
-- July
----------------------------------------------------------------------------------------------------------------------
-- No. 1, 4 July: cash for the till.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(7, 1, 1, '2005-07-04', N'提取备用金', N'1001', 10000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(7, 1, 2, '2005-07-04', N'提取备用金', N'10020101', 0, 10000, N'101', N'XJ0704')

-- No. 2, 6 July: office supplies.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(7, 2, 1, '2005-07-06', N'购买办公用品', N'550202', 1350, 0, N'0101')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(7, 2, 2, '2005-07-06', N'购买办公用品', N'550202', 2480, 0, N'0102')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(7, 2, 3, '2005-07-06', N'购买办公用品', N'1001', 0, 3830)

-- No. 3, 12 July: customers are entertained.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(7, 3, 1, '2005-07-12', N'业务招待费', N'550204', 3200, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(7, 3, 2, '2005-07-12', N'业务招待费', N'1001', 0, 3200)

-- No. 4, 15 July: the note of Dongming is honoured.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(7, 4, 1, '2005-07-15', N'应收票据到期收款', N'10020101', 58500, 0, N'3', N'TS0715')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id, cdept_id, ccus_id)
 values(7, 4, 2, '2005-07-15', N'应收票据到期收款', N'1111', 0, 58500, N'3', N'TS0715', N'0201', N'C001')

-- No. 5, 20 July: accrued interest is paid.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(7, 5, 1, '2005-07-20', N'支付借款利息', N'2191', 4500, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(7, 5, 2, '2005-07-20', N'支付借款利息', N'10020101', 0, 4500, N'3', N'TS0720')

-- No. 6, 22 July: 25 tons of bars to Dongming.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, ccus_id, cname)
 values(7, 6, 1, '2005-07-22', N'销售商品', N'113101', 128700, 0, N'C001', N'刘海涛')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(7, 6, 2, '2005-07-22', N'销售商品', N'510101', 0, 110000, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(7, 6, 3, '2005-07-22', N'销售商品', N'21710105', 0, 18700)

-- No. 7, 22 July: their cost.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(7, 7, 1, '2005-07-22', N'结转销售成本', N'540101', 83500, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nc_s, citem_class, citem_id)
 values(7, 7, 2, '2005-07-22', N'结转销售成本', N'124301', 0, 83500, 25, N'ch', N'S001')

GO

----------------------------------------------------------------------------------------------------------------------
-- August
----------------------------------------------------------------------------------------------------------------------
-- No. 1, 2 August: Chen Liguo pays back his advance.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(8, 1, 1, '2005-08-02', N'归还借款', N'1001', 2000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, cperson_id)
 values(8, 1, 2, '2005-08-02', N'归还借款', N'113301', 0, 2000, N'0102', N'001')

-- No. 2, 5 August: insurance for a year.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(8, 2, 1, '2005-08-05', N'预付财产保险费', N'130101', 12000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(8, 2, 2, '2005-08-05', N'预付财产保险费', N'10020101', 0, 12000, N'102', N'ZZ0805')

-- No. 3, 10 August: part of the January purchase is paid to Beiyuan.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id, csup_id)
 values(8, 3, 1, '2005-08-10', N'支付货款', N'212101', 100000, 0, N'2', N'DH0810', N'V001')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(8, 3, 2, '2005-08-10', N'支付货款', N'10020101', 0, 100000, N'2', N'DH0810')

-- No. 4, 18 August: 2 tons of angle steel to Yuantu.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, ccus_id, cname)
 values(8, 4, 1, '2005-08-18', N'销售商品', N'113101', 11700, 0, N'C006', N'陈立国')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(8, 4, 2, '2005-08-18', N'销售商品', N'510101', 0, 10000, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(8, 4, 3, '2005-08-18', N'销售商品', N'21710105', 0, 1700)

-- No. 5, 18 August: their cost.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(8, 5, 1, '2005-08-18', N'结转销售成本', N'540101', 7200, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nc_s, citem_class, citem_id)
 values(8, 5, 2, '2005-08-18', N'结转销售成本', N'124301', 0, 7200, 2, N'ch', N'S002')

-- No. 6, 25 August: income tax of last year.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(8, 6, 1, '2005-08-25', N'缴纳上年所得税', N'217106', 15000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(8, 6, 2, '2005-08-25', N'缴纳上年所得税', N'10020101', 0, 15000, N'3', N'SF0825')

GO

----------------------------------------------------------------------------------------------------------------------
-- September
----------------------------------------------------------------------------------------------------------------------
-- No. 1, 6 September: shares are sold.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(9, 1, 1, '2005-09-06', N'出售短期投资', N'10020102', 53000, 0, N'2', N'ZQ0906')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(9, 1, 2, '2005-09-06', N'出售短期投资', N'1101', 0, 50000)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(9, 1, 3, '2005-09-06', N'出售短期投资', N'5201', 0, 3000)

-- No. 2, 9 September: Zhao Min settles her advance.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, cperson_id)
 values(9, 2, 1, '2005-09-09', N'报销差旅费', N'550203', 5400, 0, N'0202', N'004')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(9, 2, 2, '2005-09-09', N'退回余款', N'1001', 600, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, cperson_id)
 values(9, 2, 3, '2005-09-09', N'报销差旅费', N'113301', 0, 6000, N'0202', N'004')

-- No. 3, 20 September: Bluewater pays part of the June sale, at a lower rate.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cexch_name, md_f, nfrat, csettle, cn_id)
 values(9, 3, 1, '2005-09-20', N'收回外销货款', N'10020201', 121350, 0, N'美元', 15000, 8.09, N'2', N'TT0920')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(9, 3, 2, '2005-09-20', N'汇兑损失', N'550303', 2797.5, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cexch_name, mc_f, nfrat, csettle, cn_id, ccus_id)
 values(9, 3, 3, '2005-09-20', N'收回外销货款', N'113102', 0, 124147.5, N'美元', 15000, 8.2765, N'2', N'TT0920', N'C005')

-- No. 4, 30 September: wages of the quarter.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(9, 4, 1, '2005-09-30', N'计提本季工资', N'550201', 12000, 0, N'0101')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(9, 4, 2, '2005-09-30', N'计提本季工资', N'550201', 9000, 0, N'0102')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(9, 4, 3, '2005-09-30', N'计提本季工资', N'550102', 15000, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(9, 4, 4, '2005-09-30', N'计提本季工资', N'550102', 8000, 0, N'0202')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(9, 4, 5, '2005-09-30', N'计提本季工资', N'2151', 0, 44000)

-- No. 5, 30 September: wages are paid.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(9, 5, 1, '2005-09-30', N'发放工资', N'2151', 44000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(9, 5, 2, '2005-09-30', N'发放工资', N'10020101', 0, 44000, N'102', N'ZZ0930')

-- No. 6, 30 September: depreciation of the quarter.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(9, 6, 1, '2005-09-30', N'计提折旧', N'550205', 6000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(9, 6, 2, '2005-09-30', N'计提折旧', N'1502', 0, 6000)

-- No. 7, 30 September: interest on the bank loan is accrued.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(9, 7, 1, '2005-09-30', N'预提借款利息', N'550301', 4500, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(9, 7, 2, '2005-09-30', N'预提借款利息', N'2191', 0, 4500)

-- No. 8, 30 September: a quarter of the rent falls due.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(9, 8, 1, '2005-09-30', N'摊销房租', N'550206', 6000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(9, 8, 2, '2005-09-30', N'摊销房租', N'130102', 0, 6000)

-- No. 9, 30 September: insurance of the period.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(9, 9, 1, '2005-09-30', N'摊销保险费', N'550206', 2000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(9, 9, 2, '2005-09-30', N'摊销保险费', N'130101', 0, 2000)

GO

----------------------------------------------------------------------------------------------------------------------
-- October
----------------------------------------------------------------------------------------------------------------------
-- No. 1, 8 October: money is moved to the basic account.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(10, 1, 1, '2005-10-08', N'账户间转款', N'10020101', 150000, 0, N'102', N'ZZ1008')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(10, 1, 2, '2005-10-08', N'账户间转款', N'10020102', 0, 150000, N'102', N'ZZ1008')

-- No. 2, 10 October: computers for the sales office.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(10, 2, 1, '2005-10-10', N'购置电脑', N'150102', 15600, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(10, 2, 2, '2005-10-10', N'购置电脑', N'10020101', 0, 15600, N'102', N'ZZ1010')

-- No. 3, 12 October: a third of the loan is paid back.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(10, 3, 1, '2005-10-12', N'归还短期借款', N'2101', 100000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(10, 3, 2, '2005-10-12', N'归还短期借款', N'10020101', 0, 100000, N'102', N'ZZ1012')

-- No. 4, 14 October: Hengli pays what it owed from last year.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(10, 4, 1, '2005-10-14', N'收回货款', N'10020101', 35100, 0, N'102', N'ZZ1014')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id, ccus_id, cname)
 values(10, 4, 2, '2005-10-14', N'收回货款', N'113101', 0, 35100, N'102', N'ZZ1014', N'C003', N'刘海涛')

-- No. 5, 17 October: Dongming gives a note for the sale of July.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, ccus_id)
 values(10, 5, 1, '2005-10-17', N'收到银行承兑汇票', N'1111', 128700, 0, N'0201', N'C001')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, ccus_id, cname)
 values(10, 5, 2, '2005-10-17', N'收到银行承兑汇票', N'113101', 0, 128700, N'C001', N'刘海涛')

-- No. 6, 18 October: 200 drills and 1,000 wrench sets from Jinchui.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nd_s, citem_class, citem_id)
 values(10, 6, 1, '2005-10-18', N'购进商品', N'124302', 57000, 0, 200, N'ch', N'H001')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nd_s, citem_class, citem_id)
 values(10, 6, 2, '2005-10-18', N'购进商品', N'124302', 45000, 0, 1000, N'ch', N'H002')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(10, 6, 3, '2005-10-18', N'购进商品', N'21710101', 17340, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csup_id)
 values(10, 6, 4, '2005-10-18', N'购进商品', N'212101', 0, 119340, N'V002')

-- No. 7, 20 October: accrued interest is paid.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(10, 7, 1, '2005-10-20', N'支付借款利息', N'2191', 4500, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(10, 7, 2, '2005-10-20', N'支付借款利息', N'10020101', 0, 4500, N'3', N'TS1020')

-- No. 8, 24 October: the warehouse racks: second stage; the steel frame of the showroom.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, citem_class, citem_id, cDefine2)
 values(10, 8, 1, '2005-10-24', N'滨江仓库二期用款', N'4107', 26000, 0, N'04', N'01', N'P01', N'二期')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, citem_class, citem_id, cDefine2)
 values(10, 8, 2, '2005-10-24', N'展厅一期用款', N'4107', 9500, 0, N'04', N'01', N'P02', N'一期')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(10, 8, 3, '2005-10-24', N'工程用款', N'10020101', 0, 35500, N'102', N'ZZ1024')

-- No. 9, 28 October: a tenant leaves a deposit.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(10, 9, 1, '2005-10-28', N'收取押金', N'10020101', 5000, 0, N'102', N'ZZ1028')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cDefine1)
 values(10, 9, 2, '2005-10-28', N'收取押金', N'218101', 0, 5000, N'汉江仓储')

GO

----------------------------------------------------------------------------------------------------------------------
-- November
----------------------------------------------------------------------------------------------------------------------
-- No. 1, 3 November: 400 wrench sets to Bluewater.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cexch_name, md_f, nfrat, ccus_id)
 values(11, 1, 1, '2005-11-03', N'出口销售', N'113102', 64640, 0, N'美元', 8000, 8.08, N'C005')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(11, 1, 2, '2005-11-03', N'出口销售', N'510102', 0, 64640)

-- No. 2, 3 November: their cost.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(11, 2, 1, '2005-11-03', N'结转销售成本', N'540102', 18000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nc_s, citem_class, citem_id)
 values(11, 2, 2, '2005-11-03', N'结转销售成本', N'124302', 0, 18000, 400, N'ch', N'H002')

-- No. 3, 8 November: the February purchase is paid to Jinchui.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id, csup_id)
 values(11, 3, 1, '2005-11-08', N'支付货款', N'212101', 163800, 0, N'4', N'HP1108', N'V002')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(11, 3, 2, '2005-11-08', N'支付货款', N'10020102', 0, 163800, N'4', N'HP1108')

-- No. 4, 11 November: cash for the till.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(11, 4, 1, '2005-11-11', N'提取备用金', N'1001', 5000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(11, 4, 2, '2005-11-11', N'提取备用金', N'10020101', 0, 5000, N'101', N'XJ1111')

-- No. 5, 14 November: Sun Zhiqiang takes an advance for buying.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, cperson_id)
 values(11, 5, 1, '2005-11-14', N'预借采购差旅费', N'113301', 8000, 0, N'03', N'005')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(11, 5, 2, '2005-11-14', N'预借采购差旅费', N'1001', 0, 8000)

-- No. 6, 21 November: 10 tons of plate to Ningtai.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, ccus_id, cname)
 values(11, 6, 1, '2005-11-21', N'销售商品', N'113101', 70200, 0, N'C002', N'刘海涛')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(11, 6, 2, '2005-11-21', N'销售商品', N'510101', 0, 60000, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(11, 6, 3, '2005-11-21', N'销售商品', N'21710105', 0, 10200)

-- No. 7, 21 November: their cost.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(11, 7, 1, '2005-11-21', N'结转销售成本', N'540101', 45000, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nc_s, citem_class, citem_id)
 values(11, 7, 2, '2005-11-21', N'结转销售成本', N'124301', 0, 45000, 10, N'ch', N'S003')

-- No. 8, 25 November: a carrier pays a penalty.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(11, 8, 1, '2005-11-25', N'收到违约金', N'1001', 500, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(11, 8, 2, '2005-11-25', N'收到违约金', N'5301', 0, 500)

GO

----------------------------------------------------------------------------------------------------------------------
-- December
----------------------------------------------------------------------------------------------------------------------
-- No. 1, 5 December: cash for the till.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 1, 1, '2005-12-05', N'提取备用金', N'1001', 10000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(12, 1, 2, '2005-12-05', N'提取备用金', N'10020101', 0, 10000, N'101', N'XJ1205')

-- No. 2, 6 December: Liu Haitao takes an advance.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, cperson_id)
 values(12, 2, 1, '2005-12-06', N'预借差旅费', N'113301', 3000, 0, N'0201', N'003')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 2, 2, '2005-12-06', N'预借差旅费', N'1001', 0, 3000)

-- No. 3, 8 December: Ningtai pays the sale of February.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(12, 3, 1, '2005-12-08', N'收回货款', N'10020101', 161460, 0, N'2', N'DH1208')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id, ccus_id, cname)
 values(12, 3, 2, '2005-12-08', N'收回货款', N'113101', 0, 161460, N'2', N'DH1208', N'C002', N'刘海涛')

-- No. 4, 10 December: Jinchui accepts a note for part of the October purchase.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csup_id)
 values(12, 4, 1, '2005-12-10', N'开出商业承兑汇票', N'212101', 50000, 0, N'V002')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csup_id)
 values(12, 4, 2, '2005-12-10', N'开出商业承兑汇票', N'2111', 0, 50000, N'V002')

-- No. 5, 12 December: 30 tons of bars from Beiyuan.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nd_s, citem_class, citem_id)
 values(12, 5, 1, '2005-12-12', N'购进商品', N'124301', 103500, 0, 30, N'ch', N'S001')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 5, 2, '2005-12-12', N'购进商品', N'21710101', 17595, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csup_id)
 values(12, 5, 3, '2005-12-12', N'购进商品', N'212101', 0, 121095, N'V001')

-- No. 6, 14 December: 20 tons of bars to Dongming.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, ccus_id, cname)
 values(12, 6, 1, '2005-12-14', N'销售商品', N'113101', 102960, 0, N'C001', N'刘海涛')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 6, 2, '2005-12-14', N'销售商品', N'510101', 0, 88000, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 6, 3, '2005-12-14', N'销售商品', N'21710105', 0, 14960)

-- No. 7, 14 December: their cost.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 7, 1, '2005-12-14', N'结转销售成本', N'540101', 67000, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, nc_s, citem_class, citem_id)
 values(12, 7, 2, '2005-12-14', N'结转销售成本', N'124301', 0, 67000, 20, N'ch', N'S001')

-- No. 8, 16 December: Jiangbei is paid for the plate.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id, csup_id)
 values(12, 8, 1, '2005-12-16', N'支付货款', N'212101', 65300, 0, N'2', N'DH1216', N'V004')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(12, 8, 2, '2005-12-16', N'支付货款', N'10020101', 0, 65300, N'2', N'DH1216')

-- No. 9, 20 December: Jiangbei gets an advance payment by cheque, which it has not cashed.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id, csup_id)
 values(12, 9, 1, '2005-12-20', N'预付货款', N'1151', 60000, 0, N'102', N'ZZ1220', N'V004')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(12, 9, 2, '2005-12-20', N'预付货款', N'10020101', 0, 60000, N'102', N'ZZ1220')

-- No. 10, 22 December: Haiping pays in advance with a bank draft.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(12, 10, 1, '2005-12-22', N'预收货款', N'10020101', 20000, 0, N'4', N'HP1222')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id, ccus_id)
 values(12, 10, 2, '2005-12-22', N'预收货款', N'2131', 0, 20000, N'4', N'HP1222', N'C004')

-- No. 11, 28 December: Hengli pays the sale of April; the cheque is still with the bank.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(12, 11, 1, '2005-12-28', N'收回货款', N'10020101', 46800, 0, N'102', N'ZZ1228')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id, ccus_id, cname)
 values(12, 11, 2, '2005-12-28', N'收回货款', N'113101', 0, 46800, N'102', N'ZZ1228', N'C003', N'刘海涛')

-- No. 12, 29 December: freight, by a cheque that has not been cashed.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 12, 1, '2005-12-29', N'支付运费', N'550101', 2300, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(12, 12, 2, '2005-12-29', N'支付运费', N'10020101', 0, 2300, N'102', N'ZZ1229')

-- No. 13, 31 December: wages of the quarter.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 13, 1, '2005-12-31', N'计提本季工资', N'550201', 12000, 0, N'0101')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 13, 2, '2005-12-31', N'计提本季工资', N'550201', 9000, 0, N'0102')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 13, 3, '2005-12-31', N'计提本季工资', N'550102', 15000, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 13, 4, '2005-12-31', N'计提本季工资', N'550102', 8000, 0, N'0202')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 13, 5, '2005-12-31', N'计提本季工资', N'2151', 0, 44000)

-- No. 14, 31 December: wages are paid.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 14, 1, '2005-12-31', N'发放工资', N'2151', 44000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(12, 14, 2, '2005-12-31', N'发放工资', N'10020101', 0, 44000, N'102', N'ZZ1231')

-- No. 15, 31 December: depreciation of the quarter.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 15, 1, '2005-12-31', N'计提折旧', N'550205', 6000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 15, 2, '2005-12-31', N'计提折旧', N'1502', 0, 6000)

-- No. 16, 31 December: interest on the bank loan is accrued.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 16, 1, '2005-12-31', N'预提借款利息', N'550301', 4500, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 16, 2, '2005-12-31', N'预提借款利息', N'2191', 0, 4500)

-- No. 17, 31 December: a quarter of the rent falls due.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 17, 1, '2005-12-31', N'摊销房租', N'550206', 6000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 17, 2, '2005-12-31', N'摊销房租', N'130102', 0, 6000)

-- No. 18, 31 December: insurance of the period.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 18, 1, '2005-12-31', N'摊销保险费', N'550206', 3000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 18, 2, '2005-12-31', N'摊销保险费', N'130101', 0, 3000)

-- No. 19, 31 December: freight without an invoice is estimated.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 19, 1, '2005-12-31', N'暂估运费', N'550101', 1800, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csup_id)
 values(12, 19, 2, '2005-12-31', N'暂估运费', N'212102', 0, 1800, N'V003')

-- No. 20, 31 December: the dollar accounts are valued at the rate of the year-end.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 20, 1, '2005-12-31', N'期末调汇', N'550303', 12134.5, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cexch_name, nfrat)
 values(12, 20, 2, '2005-12-31', N'期末调汇', N'10020201', 0, 9374.2, N'美元', 8.0702)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cexch_name, nfrat, ccus_id)
 values(12, 20, 3, '2005-12-31', N'期末调汇', N'113102', 0, 2760.3, N'美元', 8.0702, N'C005')

-- No. 21, 31 December: income tax of the year.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 21, 1, '2005-12-31', N'计提所得税', N'5701', 34931.49, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 21, 2, '2005-12-31', N'计提所得税', N'217106', 0, 34931.49)

-- No. 22, 31 December: income is closed to the profit of the year.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 22, 1, '2005-12-31', N'结转本年收入', N'510101', 476000, 0, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 22, 2, '2005-12-31', N'结转本年收入', N'510102', 478465, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 22, 3, '2005-12-31', N'结转本年收入', N'5201', 3000, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 22, 4, '2005-12-31', N'结转本年收入', N'5301', 500, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 22, 5, '2005-12-31', N'结转本年收入', N'3131', 0, 957965)

-- No. 23, 31 December: costs and expenses are closed to the profit of the year.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 23, 1, '2005-12-31', N'结转本年成本费用', N'3131', 887043.49, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 23, 2, '2005-12-31', N'结转本年成本费用', N'540101', 0, 351900, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 23, 3, '2005-12-31', N'结转本年成本费用', N'540102', 0, 216900)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 23, 4, '2005-12-31', N'结转本年成本费用', N'550101', 0, 4100, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 23, 5, '2005-12-31', N'结转本年成本费用', N'550102', 0, 60000, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 23, 6, '2005-12-31', N'结转本年成本费用', N'550102', 0, 32000, N'0202')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 23, 7, '2005-12-31', N'结转本年成本费用', N'550201', 0, 48000, N'0101')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 23, 8, '2005-12-31', N'结转本年成本费用', N'550201', 0, 36000, N'0102')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 23, 9, '2005-12-31', N'结转本年成本费用', N'550202', 0, 1350, N'0101')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 23, 10, '2005-12-31', N'结转本年成本费用', N'550202', 0, 2480, N'0102')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, cperson_id)
 values(12, 23, 11, '2005-12-31', N'结转本年成本费用', N'550203', 0, 4600, N'0201', N'003')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id, cperson_id)
 values(12, 23, 12, '2005-12-31', N'结转本年成本费用', N'550203', 0, 5400, N'0202', N'004')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, cdept_id)
 values(12, 23, 13, '2005-12-31', N'结转本年成本费用', N'550204', 0, 3200, N'0201')
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 23, 14, '2005-12-31', N'结转本年成本费用', N'550205', 0, 24000)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 23, 15, '2005-12-31', N'结转本年成本费用', N'550206', 0, 29000)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 23, 16, '2005-12-31', N'结转本年成本费用', N'550301', 0, 18000)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 23, 17, '2005-12-31', N'结转本年成本费用', N'550302', 0, 120)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 23, 18, '2005-12-31', N'结转本年成本费用', N'550303', 0, 15062)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 23, 19, '2005-12-31', N'结转本年成本费用', N'5701', 0, 34931.49)

-- No. 24, 31 December: the profit goes to retained earnings.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 24, 1, '2005-12-31', N'结转本年利润', N'3131', 70921.51, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 24, 2, '2005-12-31', N'结转本年利润', N'314115', 0, 70921.51)

-- No. 25, 31 December: a tenth of it to the statutory reserve, a twentieth to the welfare reserve.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 25, 1, '2005-12-31', N'提取盈余公积', N'314102', 10638.23, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 25, 2, '2005-12-31', N'提取盈余公积', N'312101', 0, 7092.15)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 25, 3, '2005-12-31', N'提取盈余公积', N'312102', 0, 3546.08)

-- No. 26, 31 December: and the appropriation is closed.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 26, 1, '2005-12-31', N'结转利润分配', N'314115', 10638.23, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 26, 2, '2005-12-31', N'结转利润分配', N'314102', 0, 10638.23)

-- No. 27, 31 December: charges of December that came after the closing entries: they stay in the profit and loss.
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc)
 values(12, 27, 1, '2005-12-31', N'银行手续费', N'550302', 45, 0)
insert into gl_accvouch(iperiod, ino_id, inid, dbill_date, cdigest, ccode, md, mc, csettle, cn_id)
 values(12, 27, 2, '2005-12-31', N'银行手续费', N'10020101', 0, 45, N'3', N'SF1231')

GO

----------------------------------------------------------------------------------------------------------------------
-- What all lines have in common: posted vouchers of 2005, of the one type, made by Wang Fang and checked by Chen Liguo.
----------------------------------------------------------------------------------------------------------------------
update gl_accvouch set iyear=2005, iYPeriod=200500+iperiod, csign=N'记', isignseq=1, idoc=1, cbill=N'王芳', ccheck=N'陈立国', cbook=N'王芳', ibook=1 where iyear is null and iperiod between 1 and 12
update gl_accvouch set ccashier=N'林英' where iyear=2005 and (ccode=N'1001' or ccode like N'1002%')
GO
