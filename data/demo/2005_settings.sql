-- Options, state of the year, transfer definitions, voucher models and settings of 2005. Runs in TqData_001_2005.


----------------------------------------------------------------------------------------------------------------------
-- Options of the account set, and the state of the year: opened by hand, every month closed, December for good.
----------------------------------------------------------------------------------------------------------------------
insert into accinformation(cSysID, cName, cCaption, cValue, cDefault) values(N'AA', N'cCompanyName', N'单位名称', N'临江商贸有限公司', null)
insert into accinformation(cSysID, cName, cCaption, cValue, cDefault) values(N'GL', N'bMultiCurrency', N'外币核算', N'True', N'False')
insert into accinformation(cSysID, cName, cCaption, cValue, cDefault) values(N'GL', N'cDefaultCurrency', N'本位币', N'人民币', N'人民币')
insert into accinformation(cSysID, cName, cCaption, cValue, cDefault) values(N'GL', N'bCusAccount', N'客户往来由总账核算', N'True', N'True')
insert into accinformation(cSysID, cName, cCaption, cValue, cDefault) values(N'GL', N'bSupAccount', N'供应商往来由总账核算', N'True', N'True')
insert into accinformation(cSysID, cName, cCaption, cValue, cDefault) values(N'GL', N'bCusDisplay', N'显示客户往来', N'True', N'True')
insert into accinformation(cSysID, cName, cCaption, cValue, cDefault) values(N'GL', N'bSupDisplay', N'显示供应商往来', N'True', N'True')
insert into accinformation(cSysID, cName, cCaption, cValue, cDefault) values(N'GL', N'bAdjust', N'启用调整期', N'True', N'False')
insert into accinformation(cSysID, cName, cCaption, cValue, cDefault) values(N'GL', N'iZBMsg', N'专版', N'0', N'0')

insert into gl_yearstate(iyear, iinitflag, iIsUnload) values(2005, 1, 0)

insert into gl_mend(iyear, iperiod, bflag, bflag_GLGZ) values(2005, 1, 1, 0)
insert into gl_mend(iyear, iperiod, bflag, bflag_GLGZ) values(2005, 2, 1, 0)
insert into gl_mend(iyear, iperiod, bflag, bflag_GLGZ) values(2005, 3, 1, 0)
insert into gl_mend(iyear, iperiod, bflag, bflag_GLGZ) values(2005, 4, 1, 0)
insert into gl_mend(iyear, iperiod, bflag, bflag_GLGZ) values(2005, 5, 1, 0)
insert into gl_mend(iyear, iperiod, bflag, bflag_GLGZ) values(2005, 6, 1, 0)
insert into gl_mend(iyear, iperiod, bflag, bflag_GLGZ) values(2005, 7, 1, 0)
insert into gl_mend(iyear, iperiod, bflag, bflag_GLGZ) values(2005, 8, 1, 0)
insert into gl_mend(iyear, iperiod, bflag, bflag_GLGZ) values(2005, 9, 1, 0)
insert into gl_mend(iyear, iperiod, bflag, bflag_GLGZ) values(2005, 10, 1, 0)
insert into gl_mend(iyear, iperiod, bflag, bflag_GLGZ) values(2005, 11, 1, 0)
insert into gl_mend(iyear, iperiod, bflag, bflag_GLGZ) values(2005, 12, 1, 1)
GO


----------------------------------------------------------------------------------------------------------------------
-- Transfer definitions. Some of them do not fit the chart and the records of 2006 and will stay behind.
----------------------------------------------------------------------------------------------------------------------

-- 1/0001: the cost of bars sold. Fits.
insert into gl_bautotran(itype, ctran_id, inid, csign, ctext, ccode, cdigest, cdept_id, bd_c, cformula) values(1, N'0001', 1, N'记', N'结转螺纹钢销售成本', N'540101', N'结转销售成本', N'0201', 1, N'JG()')
insert into gl_bautotran(itype, ctran_id, inid, csign, ctext, ccode, cdigest, citem_class, citem_id, bd_c, cformula, cformula_s) values(1, N'0001', 2, N'记', N'结转螺纹钢销售成本', N'124301', N'结转销售成本', N'ch', N'S001', 0, N'QM(124301,月,借,S001)', N'SQM(124301,月,借,S001)')

-- 1/0002: writing off the start-up costs. Their account is gone in 2006.
insert into gl_bautotran(itype, ctran_id, inid, csign, ctext, ccode, cdigest, bd_c, cformula) values(1, N'0002', 1, N'记', N'摊销长期待摊费用', N'550205', N'摊销长期待摊费用', 1, N'JG()')
insert into gl_bautotran(itype, ctran_id, inid, csign, ctext, ccode, cdigest, bd_c, cformula) values(1, N'0002', 2, N'记', N'摊销长期待摊费用', N'1901', N'摊销长期待摊费用', 0, N'QM(1901,月,借)/36')

-- 1/0003: setting advance payments off against purchases. The account of the former has other auxiliaries in 2006.
insert into gl_bautotran(itype, ctran_id, inid, csign, ctext, ccode, cdigest, csup_id, bd_c, cformula) values(1, N'0003', 1, N'记', N'预付冲应付', N'212101', N'预付冲应付', N'V004', 1, N'JG()')
insert into gl_bautotran(itype, ctran_id, inid, csign, ctext, ccode, cdigest, csup_id, bd_c, cformula) values(1, N'0003', 2, N'记', N'预付冲应付', N'1151', N'预付冲应付', N'V004', 0, N'QM(1151,月,借,V004)')

-- 1/0004: the bad debt of Yuantu. That customer is gone in 2006.
insert into gl_bautotran(itype, ctran_id, inid, csign, ctext, ccode, cdigest, bd_c, cformula) values(1, N'0004', 1, N'记', N'核销远图坏账', N'1141', N'核销坏账', 1, N'JG()')
insert into gl_bautotran(itype, ctran_id, inid, csign, ctext, ccode, cdigest, ccus_id, bd_c, cformula) values(1, N'0004', 2, N'记', N'核销远图坏账', N'113101', N'核销坏账', N'C006', 0, N'QM(113101,月,借,C006)')

-- 20/0001: closing the administrative expenses; this type may name parent accounts.
insert into gl_bautotran(itype, ctran_id, inid, csign, ctext, ccode, cdigest, bd_c, cformula) values(20, N'0001', 1, N'记', N'结转管理费用', N'5502', N'结转管理费用', 0, N'QM(5502,月,借)')
insert into gl_bautotran(itype, ctran_id, inid, csign, ctext, ccode, cdigest, bd_c, cformula) values(20, N'0001', 2, N'记', N'结转管理费用', N'3131', N'结转管理费用', 1, N'CE()')

-- 80/0001: the insurance paid in August (voucher 2), spread over twelve months.
insert into gl_bautotran(itype, ctran_id, inid, csign, ctext, ccode, cdigest, bd_c, RefVouchPeriod, RefVouchSign, RefVouchNo, cplan, RefJe, iCount, Je, operater, bAuto) values(80, N'0001', 1, N'记', N'摊销财产保险费', N'130101', N'摊销保险费', 0, 8, N'记', 2, N'按月', 12000, 12, 1000, N'王芳', 1)
insert into gl_bautotran(itype, ctran_id, inid, csign, ctext, ccode, cdigest, bd_c, operater, bAuto) values(80, N'0001', 2, N'记', N'摊销财产保险费', N'550206', N'摊销保险费', 1, N'王芳', 1)

-- 81/0001: the interest on the bank loan, accrued each quarter since March (voucher 7).
insert into gl_bautotran(itype, ctran_id, inid, csign, ctext, ccode, cdigest, bd_c, RefVouchPeriod, RefVouchSign, RefVouchNo, cplan, RefJe, iCount, Je, operater, bAuto) values(81, N'0001', 1, N'记', N'预提借款利息', N'2191', N'预提借款利息', 0, 3, N'记', 7, N'按季', 4500, 4, 4500, N'王芳', 0)
insert into gl_bautotran(itype, ctran_id, inid, csign, ctext, ccode, cdigest, bd_c, operater, bAuto) values(81, N'0001', 2, N'记', N'预提借款利息', N'550301', N'预提借款利息', 1, N'王芳', 0)
GO

-- The runs of the last two: the vouchers that they made. The first run of the accrual was logged without its year.
insert into GL_TranReport(itype, ctran_id, vouchYear, vouchPeriod, vouchSign, vouchNo, bAuto) values(80, N'0001', 2005, 9, N'记', 9, 1)
insert into GL_TranReport(itype, ctran_id, vouchYear, vouchPeriod, vouchSign, vouchNo, bAuto) values(80, N'0001', 2005, 12, N'记', 18, 1)
insert into GL_TranReport(itype, ctran_id, vouchYear, vouchPeriod, vouchSign, vouchNo, dbill_date, sumJe, sumJe_f, sumSL, cbill, bAuto) values(81, N'0001', null, 3, N'记', 7, '2005-03-31', -4500, 0, 0, N'王芳', 0)
insert into GL_TranReport(itype, ctran_id, vouchYear, vouchPeriod, vouchSign, vouchNo, bAuto) values(81, N'0001', 2005, 6, N'记', 9, 0)
insert into GL_TranReport(itype, ctran_id, vouchYear, vouchPeriod, vouchSign, vouchNo, bAuto) values(81, N'0001', 2005, 9, N'记', 7, 0)
insert into GL_TranReport(itype, ctran_id, vouchYear, vouchPeriod, vouchSign, vouchNo, bAuto) values(81, N'0001', 2005, 12, N'记', 16, 0)
GO


----------------------------------------------------------------------------------------------------------------------
-- Voucher models
----------------------------------------------------------------------------------------------------------------------

-- The wages of a quarter
insert into GL_ModelMain(modelId, cName) values(1, N'工资')
insert into GL_modelpreplace(modelId, cKey, cText) values(1, N'{季}', N'本季')
insert into GL_ModelSub1(modelId, inid, ccode, md, mc) values(1, 1, N'550201', 21000, 0)
insert into GL_ModelSub1(modelId, inid, ccode, md, mc) values(1, 2, N'550102', 23000, 0)
insert into GL_ModelSub1(modelId, inid, ccode, md, mc) values(1, 3, N'2151', 0, 44000)
insert into GL_ModelSub2(modelId, inid, cdigest) values(1, 1, N'计提{季}工资')

-- Depreciation
insert into GL_ModelMain(modelId, cName) values(2, N'折旧')
insert into GL_modelpreplace(modelId, cKey, cText) values(2, N'{季}', N'本季')
insert into GL_ModelSub1(modelId, inid, ccode, md, mc) values(2, 1, N'550205', 6000, 0)
insert into GL_ModelSub1(modelId, inid, ccode, md, mc) values(2, 2, N'1502', 0, 6000)
insert into GL_ModelSub2(modelId, inid, cdigest) values(2, 1, N'计提{季}折旧')
GO


----------------------------------------------------------------------------------------------------------------------
-- Books, digests, authorities and reports
----------------------------------------------------------------------------------------------------------------------

-- The multi-column book of the administrative expenses and its columns
insert into GL_bmulti(cname, ctext) values(N'管理费用', N'管理费用多栏账')
insert into GL_bmultiGroup(cname, ctext, cclass, ctype, igroupnum, csubname, ccode, bye, isubnum, bd_c, ccodes, cnames, is_f, bsingle, bdouble, iyear) values(N'管理费用', N'管理费用多栏账', N'损益', N'科目', 1, N'人员', N'5502', 1, 1, 1, N'550201,550203', N'工资,差旅费', 0, 1, 0, 2005)
insert into GL_bmultiGroup(cname, ctext, cclass, ctype, igroupnum, csubname, ccode, bye, isubnum, bd_c, ccodes, cnames, is_f, bsingle, bdouble, iyear) values(N'管理费用', N'管理费用多栏账', N'损益', N'科目', 1, N'办公', N'5502', 1, 2, 1, N'550202,550204', N'办公费,招待费', 0, 1, 0, 2005)

insert into GL_btext(ctext) values(N'提取备用金')
insert into GL_btext(ctext) values(N'收回货款')
insert into GL_btext(ctext) values(N'支付货款')
insert into GL_btext(ctext) values(N'购进商品')
insert into GL_btext(ctext) values(N'销售商品')
insert into GL_btext(ctext) values(N'结转销售成本')

insert into GL_cvprintinfset(cname, bprint) values(N'金额式凭证', 1)
insert into GL_cvprintinfset(cname, bprint) values(N'外币凭证', 0)

insert into GL_mcodeauth(cid, ctext, tqguid) values(N'1001', N'王芳', N'{6F0C1E52-0A41-4B0F-9C51-2A7D9E1B0001}')
insert into GL_mcodeauth(cid, ctext, tqguid) values(N'1002', N'王芳', N'{6F0C1E52-0A41-4B0F-9C51-2A7D9E1B0002}')
insert into GL_mcodeused(cid, ctext, tqguid) values(N'1131', N'往来明细账', null)
insert into GL_mcodeused(cid, ctext, tqguid) values(N'1243', N'数量金额账', null)
insert into GL_mitemused(cid, ctext, tqguid) values(N'ch', N'存货明细账', null)
insert into GL_mitemused(cid, ctext, tqguid) values(N'01', N'项目明细账', null)
insert into GL_mybooktype(cid, ctext, tqguid) values(N'01', N'总账', null)
insert into GL_mybooktype(cid, ctext, tqguid) values(N'02', N'日记账', null)
insert into GL_myoutput(cid, ctext, tqguid) values(N'YE', N'余额表', null)
insert into GL_DzDwSet(cid, ctext, tqguid) values(N'C005', N'Bluewater Tools Ltd.', null)
insert into GL_MRReport_Main(cid, ctext, tqguid) values(N'R01', N'月度经营简报', null)
insert into GL_MRShowItem_Main(cid, ctext, tqguid) values(N'R01-1', N'本月收入', null)
insert into GL_MRShowItem_Main(cid, ctext, tqguid) values(N'R01-2', N'本月费用', null)
insert into GL_MRReportOption(cid, ctext, tqguid) values(N'R01', N'按部门', null)
insert into GL_MRColumnDic_Set(cid, ctext, tqguid) values(N'R01', N'金额', null)
insert into GL_PRN_Format(cid, ctext, tqguid) values(N'PZ', N'凭证打印格式', null)
GO


----------------------------------------------------------------------------------------------------------------------
-- Where the amounts of the cash-flow statement come from: 0 the items of class 98, 1 the items of its supplement.
-- The last one names an item that does not exist.
----------------------------------------------------------------------------------------------------------------------
insert into GL_CashItemDataSource(cItemCode, bDataStyle, cDataSource, bDir, bRelation, dStartDate, dEndDate, iyear) values(N'0101', 0, N'113101', 0, 0, '2005-01-01', '2005-12-31', 2005)
insert into GL_CashItemDataSource(cItemCode, bDataStyle, cDataSource, bDir, bRelation, dStartDate, dEndDate, iyear) values(N'0104', 0, N'212101', 1, 0, '2005-01-01', '2005-12-31', 2005)
insert into GL_CashItemDataSource(cItemCode, bDataStyle, cDataSource, bDir, bRelation, dStartDate, dEndDate, iyear) values(N'0105', 0, N'2151', 1, 0, '2005-01-01', '2005-12-31', 2005)
insert into GL_CashItemDataSource(cItemCode, bDataStyle, cDataSource, bDir, bRelation, dStartDate, dEndDate, iyear) values(N'03', 1, N'1502', 0, 0, null, null, 2005)
insert into GL_CashItemDataSource(cItemCode, bDataStyle, cDataSource, bDir, bRelation, dStartDate, dEndDate, iyear) values(N'10', 1, N'1243', 0, 1, null, null, 2005)
insert into GL_CashItemDataSource(cItemCode, bDataStyle, cDataSource, bDir, bRelation, dStartDate, dEndDate, iyear) values(N'0999', 0, N'1001', 0, 0, null, null, 2005)
GO
