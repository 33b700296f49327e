-- Reference records of 2005. Runs in TqData_001_2005.

insert into dsign(csign, isignseq, ctext) values(N'记', 1, N'记账凭证')

insert into settlestyle(csscode, cssname, bssflag, bssend) values(N'1', N'支票', 0, 0)
insert into settlestyle(csscode, cssname, bssflag, bssend) values(N'101', N'现金支票', 1, 1)
insert into settlestyle(csscode, cssname, bssflag, bssend) values(N'102', N'转账支票', 1, 1)
insert into settlestyle(csscode, cssname, bssflag, bssend) values(N'2', N'电汇', 0, 1)
insert into settlestyle(csscode, cssname, bssflag, bssend) values(N'3', N'托收', 0, 1)
insert into settlestyle(csscode, cssname, bssflag, bssend) values(N'4', N'银行汇票', 0, 1)

insert into foreigncurrency(cexch_name, cexch_code) values(N'人民币', N'RMB')
insert into foreigncurrency(cexch_name, cexch_code) values(N'美元', N'USD')
GO

-- Departments and persons
insert into Department(cDepCode, cDepName, iDepGrade, bDepEnd) values(N'01', N'管理部', 1, 0)
insert into Department(cDepCode, cDepName, iDepGrade, bDepEnd) values(N'0101', N'财务部', 2, 1)
insert into Department(cDepCode, cDepName, iDepGrade, bDepEnd) values(N'0102', N'行政部', 2, 1)
insert into Department(cDepCode, cDepName, iDepGrade, bDepEnd) values(N'02', N'业务部', 1, 0)
insert into Department(cDepCode, cDepName, iDepGrade, bDepEnd) values(N'0201', N'内销部', 2, 1)
insert into Department(cDepCode, cDepName, iDepGrade, bDepEnd) values(N'0202', N'外贸部', 2, 1)
insert into Department(cDepCode, cDepName, iDepGrade, bDepEnd) values(N'03', N'采购部', 1, 1)
insert into Department(cDepCode, cDepName, iDepGrade, bDepEnd) values(N'04', N'工程部', 1, 1)

insert into Person(cPersonCode, cPersonName, cDepCode) values(N'001', N'陈立国', N'0102')
insert into Person(cPersonCode, cPersonName, cDepCode) values(N'002', N'王芳', N'0101')
insert into Person(cPersonCode, cPersonName, cDepCode) values(N'003', N'刘海涛', N'0201')
insert into Person(cPersonCode, cPersonName, cDepCode) values(N'004', N'赵敏', N'0202')
insert into Person(cPersonCode, cPersonName, cDepCode) values(N'005', N'孙志强', N'03')
insert into Person(cPersonCode, cPersonName, cDepCode) values(N'006', N'周建', N'04')
GO

-- Customers and suppliers
insert into customerclass(cCCCode, cCCName, iCCGrade) values(N'01', N'国内客户', 1)
insert into customerclass(cCCCode, cCCName, iCCGrade) values(N'0101', N'华东', 2)
insert into customerclass(cCCCode, cCCName, iCCGrade) values(N'0102', N'华北', 2)
insert into customerclass(cCCCode, cCCName, iCCGrade) values(N'02', N'国外客户', 1)

insert into Customer(cCusCode, cCusName, cCusAbbName, cCCCode, iCusCreLine) values(N'C001', N'上海东明建材有限公司', N'东明建材', N'0101', 300000)
insert into Customer(cCusCode, cCusName, cCusAbbName, cCCCode, iCusCreLine) values(N'C002', N'南京宁泰机械厂', N'宁泰机械', N'0101', 200000)
insert into Customer(cCusCode, cCusName, cCusAbbName, cCCCode, iCusCreLine) values(N'C003', N'北京恒立五金商店', N'恒立五金', N'0102', 50000)
insert into Customer(cCusCode, cCusName, cCusAbbName, cCCCode, iCusCreLine) values(N'C004', N'天津海平商行', N'海平商行', N'0102', null)
insert into Customer(cCusCode, cCusName, cCusAbbName, cCCCode, iCusCreLine) values(N'C005', N'Bluewater Tools Ltd.', N'Bluewater', N'02', 500000)
insert into Customer(cCusCode, cCusName, cCusAbbName, cCCCode, iCusCreLine) values(N'C006', N'杭州远图装饰公司', N'远图装饰', N'0101', 30000.5)

insert into vendorclass(cVCCode, cVCName, iVCGrade) values(N'01', N'钢材供应商', 1)
insert into vendorclass(cVCCode, cVCName, iVCGrade) values(N'02', N'五金供应商', 1)
insert into vendorclass(cVCCode, cVCName, iVCGrade) values(N'03', N'服务商', 1)

insert into Vendor(cVenCode, cVenName, cVenAbbName, cVCCode, iVenCreLine) values(N'V001', N'唐山北源钢铁厂', N'北源钢铁', N'01', 400000)
insert into Vendor(cVenCode, cVenName, cVenAbbName, cVCCode, iVenCreLine) values(N'V002', N'永康金锤工具厂', N'金锤工具', N'02', 200000)
insert into Vendor(cVenCode, cVenName, cVenAbbName, cVCCode, iVenCreLine) values(N'V003', N'宁波顺航货运公司', N'顺航货运', N'03', null)
insert into Vendor(cVenCode, cVenName, cVenAbbName, cVCCode, iVenCreLine) values(N'V004', N'武汉江北钢材市场', N'江北钢材', N'01', 100000)
GO

-- Item classes: cash-flow items, the cash-flow supplement, the articles of the inventory, and the projects.
insert into fitem(citem_class, cItem_Name, cItem_Text, crule) values(N'98', N'现金流量项目', N'现金流量项目', N'22')
insert into fitem(citem_class, cItem_Name, cItem_Text, crule) values(N'ZF', N'现金流量附表', N'现金流量附表项目', N'2')
insert into fitem(citem_class, cItem_Name, cItem_Text, crule) values(N'ch', N'存货核算', N'存货', N'2')
insert into fitem(citem_class, cItem_Name, cItem_Text, crule) values(N'01', N'工程项目', N'工程项目', N'2')

insert into fitemstructure(citem_class, cfield_name, imode) values(N'98', N'citemcode', 1)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'98', N'citemccode', 2)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'98', N'citemname', 4)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'98', N'bclose', 5)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'ZF', N'citemcode', 1)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'ZF', N'citemccode', 2)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'ZF', N'citemname', 4)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'ZF', N'bclose', 5)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'ch', N'cInvCode', 1)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'ch', N'cInvCCode', 2)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'ch', N'cInvName', 4)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'01', N'citemcode', 1)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'01', N'citemccode', 2)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'01', N'cmanager', 3)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'01', N'citemname', 4)
insert into fitemstructure(citem_class, cfield_name, imode) values(N'01', N'bclose', 5)
GO

-- Cash-flow items
insert into fitemss98class(citemccode, cItemCname, iItemCGrade) values(N'01', N'经营活动', 1)
insert into fitemss98class(citemccode, cItemCname, iItemCGrade) values(N'02', N'投资活动', 1)
insert into fitemss98class(citemccode, cItemCname, iItemCGrade) values(N'03', N'筹资活动', 1)
insert into fitemss98(citemcode, citemname, citemccode) values(N'0101', N'销售商品收到的现金', N'01')
insert into fitemss98(citemcode, citemname, citemccode) values(N'0104', N'购买商品支付的现金', N'01')
insert into fitemss98(citemcode, citemname, citemccode) values(N'0105', N'支付给职工的现金', N'01')
insert into fitemss98(citemcode, citemname, citemccode) values(N'0106', N'支付的各项税费', N'01')
insert into fitemss98(citemcode, citemname, citemccode) values(N'0201', N'收回投资收到的现金', N'02')
insert into fitemss98(citemcode, citemname, citemccode) values(N'0205', N'购建固定资产支付的现金', N'02')
insert into fitemss98(citemcode, citemname, citemccode) values(N'0304', N'偿还债务支付的现金', N'03')

insert into fitemssZFclass(citemccode, cItemCname, iItemCGrade) values(N'01', N'附表项目', 1)
insert into fitemssZF(citemcode, citemname, citemccode) values(N'01', N'净利润', N'01')
insert into fitemssZF(citemcode, citemname, citemccode) values(N'03', N'固定资产折旧', N'01')
insert into fitemssZF(citemcode, citemname, citemccode) values(N'10', N'存货的减少', N'01')

-- Articles
insert into inventoryclass(cInvCCode, cInvCName, iInvCGrade) values(N'01', N'钢材', 1)
insert into inventoryclass(cInvCCode, cInvCName, iInvCGrade) values(N'02', N'五金工具', 1)
insert into inventory(cInvCode, cInvName, cInvCCode) values(N'S001', N'螺纹钢', N'01')
insert into inventory(cInvCode, cInvName, cInvCCode) values(N'S002', N'角钢', N'01')
insert into inventory(cInvCode, cInvName, cInvCCode) values(N'S003', N'钢板', N'01')
insert into inventory(cInvCode, cInvName, cInvCCode) values(N'H001', N'手电钻', N'02')
insert into inventory(cInvCode, cInvName, cInvCCode) values(N'H002', N'套筒扳手', N'02')
GO

-- Projects: defining item class 01 made its two tables.
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
insert into fitemss01class(citemccode, cItemCname, iItemCGrade) values(N'01', N'安装工程', 1)
insert into fitemss01(citemcode, citemname, citemccode, cmanager) values(N'P01', N'滨江仓库货架安装', N'01', N'周建')
insert into fitemss01(citemcode, citemname, citemccode, cmanager) values(N'P02', N'展厅钢结构', N'01', N'周建')
GO
