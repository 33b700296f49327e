-- What the golden statements find beside the tables of the corpus. Runs in d2.
create table TqSystem.dbo.UA_AccountDatabase (cAcc_Id nvarchar(3) not null, iBeginYear int not null, iEndYear int null, cDatabase nvarchar(60) not null)
GO
-- work tables of the carry-forward
create table #T (ccode nvarchar(40) not null, iyear int not null)
select top 0 * into #gl_accmultiass from gl_accMultiass
create table tempdb..jztmp ([type] [varchar] (1) NOT NULL, ccode varchar(80) NOT NULL, cexch_name nvarchar(8) NULL, cbegind_c nvarchar(12) NOT NULL, mb money NULL, mb_f money NULL, nb_s float NULL, cperson_id nvarchar(8) NULL, citem_id nvarchar(20) NULL, citem_class nvarchar(4) NULL, cdept_id nvarchar(12) NULL, ccus_id nvarchar(12) NULL, csup_id nvarchar(12) NULL)
GO
create table GL_ViewItem (iID int not null)
GO
-- one column of every type
create table types (id int identity(1,1) not null primary key, f_bit bit null, f_tiny tinyint null, f_small smallint null, f_int int not null, f_big bigint null, f_money money null, f_smallmoney smallmoney null, f_dec decimal(10,2) null, f_wide decimal(30,6) null, f_real real null, f_float float null, f_date datetime null, f_sdate smalldatetime null, f_guid uniqueidentifier null, f_char char(6) null, f_varchar varchar(20) null, f_nchar nchar(4) null, f_nvarchar nvarchar(20) null, f_text text null, f_ntext ntext null, f_bin binary(4) null, f_varbin varbinary(8) null, f_image image null)
GO
create table a (k int not null, p nvarchar(10) null, q varchar(10) null, m money null, n int null)
create table b (k int not null, p nvarchar(10) null, m money null, d datetime null)
create unique index ux_b on b(k)
create table keyed (k1 int not null, k2 nvarchar(10) not null, v money not null default 0, constraint pk_keyed primary key(k1,k2))
create table numbered (id int identity(10,5) not null, t nvarchar(10) not null default N'x', w as id*2)
create table d1..a (k int not null, p nvarchar(10) null)
