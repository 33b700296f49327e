// Functions of the dialect: a table of names, numbers of arguments and how each is bound.

#include <algorithm>
#include <map>
#include <set>

#include "tsql/binder_impl.h"

namespace tsql {

namespace {

const SqlType intType = typeOf(TypeKind::integer);
const SqlType floatType = typeOf(TypeKind::float_);
const SqlType dateType = typeOf(TypeKind::datetime);

struct Call {
  Binder& b;
  Scope& scope;
  const ast::Function& f;
  std::string name;  // lower case

  const ast::Expr& arg(std::size_t i) const { return *f.arguments[i]; }
  std::size_t count() const { return f.arguments.size(); }
  BoundPtr value(std::size_t i) const { return b.value(arg(i), scope); }
  BoundPtr asInt(std::size_t i) const { return b.convertTo(value(i), intType); }
  // Few functions take a long text.
  BoundPtr asText(std::size_t i, bool longToo = false) const {
    auto v = value(i);
    if (isLob(v->type.kind) && !longToo)
      fail(8116,
           "Argument data type " + v->type.baseName() + " is invalid for argument " + std::to_string(i + 1) + " of " +
               name + " function.",
           f.pos);
    if (isText(v->type.kind) || v->op == BoundOp::null) return v;
    return b.convertTo(std::move(v), typeOf(TypeKind::varchar, 8000));
  }
};

using Maker = BoundPtr (*)(const Call&);

SqlType textLike(const SqlType& t, int length) {
  SqlType r = t;
  if (r.kind == TypeKind::char_ || r.kind == TypeKind::text || r.kind == TypeKind::null) r.kind = TypeKind::varchar;
  if (r.kind == TypeKind::nchar || r.kind == TypeKind::ntext) r.kind = TypeKind::nvarchar;
  r.length = length;
  return r;
}

BoundPtr nullableFrom(BoundPtr e) {
  e->nullable = std::any_of(e->args.begin(), e->args.end(),
                            [](const BoundPtr& a) { return a->op != BoundOp::integer && a->nullable; });
  return e;
}

// One text in, a text of at most the same length out.
BoundPtr textToText(const Call& c) {
  auto x = c.asText(0);
  const SqlType t = textLike(x->type, x->type.length);
  return nullableFrom(c.b.call("ts_" + c.name, t, c.f.pos, std::move(x)));
}

BoundPtr textAndInt(const Call& c) {  // left, right
  auto x = c.asText(0);
  const SqlType t = textLike(x->type, x->type.length);
  auto n = c.asInt(1);
  return nullableFrom(c.b.call("ts_" + c.name, t, c.f.pos, std::move(x), std::move(n)));
}

BoundPtr substring(const Call& c) {
  auto x = c.value(0);
  if (!isText(x->type.kind) && !isBinary(x->type.kind) && x->type.kind != TypeKind::null)
    fail(8116, "Argument data type " + x->type.baseName() + " is invalid for argument 1 of substring function.",
         c.f.pos);
  const SqlType converted = isText(x->type.kind) ? x->type : typeOf(TypeKind::varchar, 8000);
  x = c.b.convertTo(std::move(x), converted);
  const SqlType t = textLike(x->type, x->type.length);
  auto start = c.asInt(1);
  auto length = c.asInt(2);
  return nullableFrom(c.b.call("ts_substring", t, c.f.pos, std::move(x), std::move(start), std::move(length)));
}

BoundPtr longText(const Call& c) {  // replace, replicate, stuff: the length is open
  auto e = c.b.call("ts_" + c.name, intType, c.f.pos);
  bool unicode = false;
  for (std::size_t i = 0; i < c.count(); ++i) {
    const bool number = (c.name == "replicate" && i == 1) || (c.name == "stuff" && (i == 1 || i == 2));
    auto x = number ? c.asInt(i) : c.asText(i);
    unicode = unicode || isUnicode(x->type.kind);
    e->args.push_back(std::move(x));
  }
  e->type = unicode ? typeOf(TypeKind::nvarchar, 4000) : typeOf(TypeKind::varchar, 8000);
  return e;
}

BoundPtr length(const Call& c) {
  auto x = c.asText(0);
  return nullableFrom(c.b.call("ts_len", intType, c.f.pos, std::move(x)));
}

BoundPtr dataLength(const Call& c) {
  auto x = c.value(0);
  const SqlType t = x->type;
  return c.b.call("ts_datalength", intType, c.f.pos, std::move(x), c.b.constant(t.pack()));
}

BoundPtr charIndex(const Call& c) {
  auto a = c.asText(0);
  auto x = c.asText(1);
  if (c.count() == 2) return c.b.call("ts_charindex", intType, c.f.pos, std::move(a), std::move(x));
  auto s = c.asInt(2);
  return c.b.call("ts_charindex", intType, c.f.pos, std::move(a), std::move(x), std::move(s));
}

BoundPtr patIndex(const Call& c) {
  auto a = c.asText(0);
  auto x = c.asText(1, true);
  return c.b.call("ts_patindex", intType, c.f.pos, std::move(a), std::move(x));
}

BoundPtr textToInt(const Call& c) {
  return c.b.call("ts_" + c.name, intType, c.f.pos, c.asText(0));
}

BoundPtr intToText(const Call& c) {  // char, nchar, space
  const SqlType t = c.name == "space"   ? typeOf(TypeKind::varchar, 8000)
                    : c.name == "nchar" ? typeOf(TypeKind::nchar, 1)
                                        : typeOf(TypeKind::char_, 1);
  return c.b.call("ts_" + c.name, t, c.f.pos, c.asInt(0));
}

BoundPtr str(const Call& c) {
  auto e = c.b.call("ts_str", typeOf(TypeKind::varchar, 30), c.f.pos);
  e->args.push_back(c.b.convertTo(c.value(0), floatType));
  for (std::size_t i = 1; i < c.count(); ++i) e->args.push_back(c.asInt(i));
  return e;
}

BoundPtr isNumericText(const Call& c) {
  return c.b.call("ts_isnumeric", intType, c.f.pos, c.asText(0));
}

BoundPtr quoteName(const Call& c) {
  auto e = c.b.call("ts_quotename", typeOf(TypeKind::nvarchar, 258), c.f.pos);
  for (std::size_t i = 0; i < c.count(); ++i) e->args.push_back(c.asText(i));
  return e;
}

// An argument that is evaluated only if the ones before it are Null.
BoundPtr later(const Call& c, std::size_t i) {
  const Branch branch(c.b.branches_);
  return c.value(i);
}

// isnull takes the type of its first argument, and cuts the second to it.
BoundPtr isNull(const Call& c) {
  auto a = c.value(0);
  auto x = later(c, 1);
  const SqlType t = a->type.kind == TypeKind::null ? x->type : a->type;
  const bool nullable = a->nullable && x->nullable;
  a = c.b.convertTo(std::move(a), t);
  const Branch branch(c.b.branches_);
  x = c.b.castTo(std::move(x), t);
  auto e = c.b.call("ifnull", t, c.f.pos, std::move(a), std::move(x));
  e->nullable = nullable;
  return e;
}

BoundPtr coalesce(const Call& c) {
  std::vector<BoundPtr> values;
  SqlType t;
  bool nullable = true;
  for (std::size_t i = 0; i < c.count(); ++i) {
    values.push_back(i ? later(c, i) : c.value(i));
    t = c.b.common(t, values.back()->type, c.f.pos);
    nullable = nullable && values.back()->nullable;
  }
  if (t.kind == TypeKind::null)
    fail(4127, "At least one of the arguments to COALESCE must be an expression that is not the NULL constant.",
         c.f.pos);
  auto e = c.b.call("coalesce", t, c.f.pos);
  e->args.push_back(c.b.convertTo(std::move(values[0]), t));
  const Branch branch(c.b.branches_);
  for (std::size_t i = 1; i < values.size(); ++i) e->args.push_back(c.b.convertTo(std::move(values[i]), t));
  e->nullable = nullable;
  return e;
}

BoundPtr nullIf(const Call& c) {
  auto result = c.value(0);
  if (result->op == BoundOp::null && result->type.kind == TypeKind::null)
    fail(4151,
         "The type of the first argument to NULLIF cannot be the NULL constant because the type of the first argument "
         "has to be known.",
         c.f.pos);
  auto e = std::make_unique<BoundExpr>();
  e->op = BoundOp::caseWhen;
  e->pos = c.f.pos;
  e->type = result->type;
  e->negated = true;
  e->args.push_back(c.b.comparison(ast::CompareOp::equal, c.value(0), c.value(1), c.f.pos));
  e->args.push_back(std::make_unique<BoundExpr>());
  e->args.push_back(std::move(result));
  return e;
}

BoundPtr numberToSame(const Call& c) {  // abs, floor, ceiling, sign
  auto x = c.value(0);
  if (isText(x->type.kind)) x = c.b.convertTo(std::move(x), floatType);
  if (x->type.kind == TypeKind::bit) x = c.b.convertTo(std::move(x), intType);
  if (!isNumeric(x->type.kind) && x->op != BoundOp::null)
    fail(8116, "Argument data type " + x->type.baseName() + " is invalid for argument 1 of " + c.name + " function.",
         c.f.pos);
  SqlType t = x->type;
  const bool whole = t.kind == TypeKind::decimal && t.scale > 0 && (c.name == "floor" || c.name == "ceiling");
  const SqlType result = decimalType(t.precision, 0);
  if (whole) t = decimalType(std::min(38, t.precision + 1), t.scale);  // the next whole number may be a digit longer
  auto e = nullableFrom(c.b.call("ts_" + c.name, t, c.f.pos, std::move(x), c.b.constant(t.pack())));
  return whole ? c.b.convertTo(std::move(e), result) : std::move(e);
}

BoundPtr round(const Call& c) {
  auto x = c.value(0);
  if (isText(x->type.kind)) x = c.b.convertTo(std::move(x), floatType);
  const SqlType t = x->type;
  auto n = c.asInt(1);
  auto e = c.b.call("ts_round", t, c.f.pos, std::move(x), std::move(n), c.b.constant(t.pack()));
  if (c.count() == 3) e->args.push_back(c.asInt(2));
  return e;
}

BoundPtr floats(const Call& c) {  // sqrt, square, exp, log, log10, pi
  auto e = c.b.call("ts_" + c.name, floatType, c.f.pos);
  for (std::size_t i = 0; i < c.count(); ++i) e->args.push_back(c.b.convertTo(c.value(i), floatType));
  return e;
}

// The result of power has the type of its base: power(2, -1) is 0.
BoundPtr power(const Call& c) {
  auto x = c.value(0);
  const SqlType t = x->type;
  auto e = c.b.call("ts_power", floatType, c.f.pos, c.b.convertTo(std::move(x), floatType),
                    c.b.convertTo(c.value(1), floatType));
  if (!isExactInteger(t.kind) && t.kind != TypeKind::decimal && !isMoney(t.kind)) return e;
  return c.b.convertTo(std::move(e), t.kind == TypeKind::decimal ? decimalType(38, t.scale) : t);
}

BoundPtr isDateText(const Call& c) {
  return c.b.call("ts_isdate", intType, c.f.pos, c.asText(0));
}

// ------------------------------------------------------------------------------------------------ dates
int datePart(const Call& c) {
  const ast::Expr& e = c.arg(0);
  static const std::map<std::string, int, std::less<>> parts = {
      {"year", 1},    {"yy", 1},      {"yyyy", 1}, {"quarter", 2},   {"qq", 2},           {"q", 2},
      {"month", 3},   {"mm", 3},      {"m", 3},    {"dayofyear", 4}, {"dy", 4},           {"y", 4},
      {"day", 5},     {"dd", 5},      {"d", 5},    {"week", 6},      {"wk", 6},           {"ww", 6},
      {"weekday", 7}, {"dw", 7},      {"hour", 8}, {"hh", 8},        {"minute", 9},       {"mi", 9},
      {"n", 9},       {"second", 10}, {"ss", 10},  {"s", 10},        {"millisecond", 11}, {"ms", 11}};
  if (e.kind == ast::ExprKind::column) {
    std::string word = static_cast<const ast::Column&>(e).name.last();
    std::transform(word.begin(), word.end(), word.begin(),
                   [](unsigned char ch) { return static_cast<char>(std::tolower(ch)); });
    if (const auto it = parts.find(word); it != parts.end()) return it->second;
    fail(155, "'" + static_cast<const ast::Column&>(e).name.last() + "' is not a recognized " + c.name + " option.",
         e.pos, 15);
  }
  fail(1023, "Invalid parameter 1 specified for " + c.name + ".", e.pos, 15);
}

BoundPtr asDate(const Call& c, std::size_t i) {
  return c.b.convertTo(c.value(i), dateType);
}

BoundPtr yearMonthDay(const Call& c) {
  const int part = c.name == "year" ? 1 : c.name == "month" ? 3 : 5;
  return nullableFrom(c.b.call("ts_datepart", intType, c.f.pos, c.b.constant(part), asDate(c, 0)));
}

BoundPtr partOfDate(const Call& c) {
  const int part = datePart(c);
  const bool name = c.name == "datename";
  return nullableFrom(c.b.call("ts_" + c.name, name ? typeOf(TypeKind::nvarchar, 30) : intType, c.f.pos,
                               c.b.constant(part), asDate(c, 1)));
}

BoundPtr dateAdd(const Call& c) {
  const int part = datePart(c);
  auto n = c.asInt(1);
  auto d = asDate(c, 2);
  return nullableFrom(c.b.call("ts_dateadd", dateType, c.f.pos, c.b.constant(part), std::move(n), std::move(d)));
}

BoundPtr dateDiff(const Call& c) {
  const int part = datePart(c);
  auto a = asDate(c, 1);
  auto x = asDate(c, 2);
  return nullableFrom(c.b.call("ts_datediff", intType, c.f.pos, c.b.constant(part), std::move(a), std::move(x)));
}

BoundPtr now(const Call& c) {
  auto e = c.b.call("ts_getdate", dateType, c.f.pos);
  e->nullable = false;
  return e;
}

BoundPtr newId(const Call& c) {
  auto e = c.b.call("ts_newid", typeOf(TypeKind::uniqueidentifier), c.f.pos);
  e->nullable = false;
  return e;
}

// ------------------------------------------------------------------------------------------------ session
BoundPtr objectId(const Call& c) {
  auto n = c.asText(0);
  if (c.count() == 1) return c.b.call("ts_object_id", intType, c.f.pos, std::move(n));
  auto t = c.asText(1);
  return c.b.call("ts_object_id", intType, c.f.pos, std::move(n), std::move(t));
}

BoundPtr objectProperty(const Call& c) {
  auto id = c.asInt(0);
  auto p = c.asText(1);
  return c.b.call("ts_objectproperty", intType, c.f.pos, std::move(id), std::move(p));
}

BoundPtr session(const Call& c) {
  static const std::map<std::string, SqlType, std::less<>> types = {
      {"scope_identity", decimalType(38, 0)},           {"db_name", typeOf(TypeKind::nvarchar, 128)},
      {"user_name", typeOf(TypeKind::nvarchar, 128)},   {"user", typeOf(TypeKind::nvarchar, 128)},
      {"system_user", typeOf(TypeKind::nvarchar, 128)}, {"suser_sname", typeOf(TypeKind::nvarchar, 128)},
      {"host_name", typeOf(TypeKind::nvarchar, 128)},   {"current_user", typeOf(TypeKind::nvarchar, 128)},
      {"session_user", typeOf(TypeKind::nvarchar, 128)}};
  return c.b.call("ts_session", types.at(c.name), c.f.pos, [&] {
    auto e = std::make_unique<BoundExpr>();
    e->op = BoundOp::integer;
    e->text = c.name;  // emitted as a text
    return e;
  }());
}

BoundPtr aboutIdentity(const Call& c) {  // ident_current, ident_seed, ident_incr
  return c.b.call("ts_" + c.name, decimalType(38, 0), c.f.pos, c.asText(0));
}

BoundPtr databaseName(const Call& c) {
  if (c.count() == 0) return session(c);
  return c.b.call("ts_db_name", typeOf(TypeKind::nvarchar, 128), c.f.pos, c.asInt(0));
}

BoundPtr columnProperty(const Call& c) {
  auto id = c.asInt(0);
  auto column = c.asText(1);
  auto property = c.asText(2);
  return c.b.call("ts_columnproperty", intType, c.f.pos, std::move(id), std::move(column), std::move(property));
}

BoundPtr columnLength(const Call& c) {
  auto table = c.asText(0);
  auto column = c.asText(1);
  return c.b.call("ts_col_length", typeOf(TypeKind::smallint), c.f.pos, std::move(table), std::move(column));
}

BoundPtr columnNameOf(const Call& c) {
  auto id = c.asInt(0);
  auto number = c.asInt(1);
  return c.b.call("ts_col_name", typeOf(TypeKind::nvarchar, 128), c.f.pos, std::move(id), std::move(number));
}

BoundPtr databaseId(const Call& c) {
  if (c.count() == 0) return c.b.call("ts_db_id", intType, c.f.pos);
  return c.b.call("ts_db_id", intType, c.f.pos, c.asText(0));
}

BoundPtr objectName(const Call& c) {
  return c.b.call("ts_object_name", typeOf(TypeKind::nvarchar, 128), c.f.pos, c.asInt(0));
}

BoundPtr aggregate(const Call& c) {
  return c.b.aggregate(c.f, c.name, c.scope);
}

struct Entry {
  int least, most;  // most -1: any number
  Maker make;
};

const std::map<std::string, Entry, std::less<>>& functions() {
  static const std::map<std::string, Entry, std::less<>> entries = {{"abs", {1, 1, numberToSame}},
                                                                    {"ascii", {1, 1, textToInt}},
                                                                    {"avg", {1, 1, aggregate}},
                                                                    {"ceiling", {1, 1, numberToSame}},
                                                                    {"char", {1, 1, intToText}},
                                                                    {"charindex", {2, 3, charIndex}},
                                                                    {"coalesce", {2, -1, coalesce}},
                                                                    {"count", {1, 1, aggregate}},
                                                                    {"count_big", {1, 1, aggregate}},
                                                                    {"current_timestamp", {0, 0, now}},
                                                                    {"datalength", {1, 1, dataLength}},
                                                                    {"dateadd", {3, 3, dateAdd}},
                                                                    {"datediff", {3, 3, dateDiff}},
                                                                    {"datename", {2, 2, partOfDate}},
                                                                    {"datepart", {2, 2, partOfDate}},
                                                                    {"day", {1, 1, yearMonthDay}},
                                                                    {"db_id", {0, 1, databaseId}},
                                                                    {"db_name", {0, 1, databaseName}},
                                                                    {"floor", {1, 1, numberToSame}},
                                                                    {"getdate", {0, 0, now}},
                                                                    {"host_name", {0, 0, session}},
                                                                    {"ident_current", {1, 1, aboutIdentity}},
                                                                    {"ident_incr", {1, 1, aboutIdentity}},
                                                                    {"ident_seed", {1, 1, aboutIdentity}},
                                                                    {"isdate", {1, 1, isDateText}},
                                                                    {"exp", {1, 1, floats}},
                                                                    {"log", {1, 1, floats}},
                                                                    {"log10", {1, 1, floats}},
                                                                    {"pi", {0, 0, floats}},
                                                                    {"square", {1, 1, floats}},
                                                                    {"columnproperty", {3, 3, columnProperty}},
                                                                    {"col_length", {2, 2, columnLength}},
                                                                    {"col_name", {2, 2, columnNameOf}},
                                                                    {"current_user", {0, 0, session}},
                                                                    {"session_user", {0, 0, session}},
                                                                    {"isnull", {2, 2, isNull}},
                                                                    {"isnumeric", {1, 1, isNumericText}},
                                                                    {"left", {2, 2, textAndInt}},
                                                                    {"len", {1, 1, length}},
                                                                    {"lower", {1, 1, textToText}},
                                                                    {"ltrim", {1, 1, textToText}},
                                                                    {"max", {1, 1, aggregate}},
                                                                    {"min", {1, 1, aggregate}},
                                                                    {"month", {1, 1, yearMonthDay}},
                                                                    {"nchar", {1, 1, intToText}},
                                                                    {"newid", {0, 0, newId}},
                                                                    {"nullif", {2, 2, nullIf}},
                                                                    {"object_id", {1, 2, objectId}},
                                                                    {"object_name", {1, 1, objectName}},
                                                                    {"objectproperty", {2, 2, objectProperty}},
                                                                    {"patindex", {2, 2, patIndex}},
                                                                    {"power", {2, 2, power}},
                                                                    {"quotename", {1, 2, quoteName}},
                                                                    {"replace", {3, 3, longText}},
                                                                    {"replicate", {2, 2, longText}},
                                                                    {"reverse", {1, 1, textToText}},
                                                                    {"right", {2, 2, textAndInt}},
                                                                    {"round", {2, 3, round}},
                                                                    {"rtrim", {1, 1, textToText}},
                                                                    {"scope_identity", {0, 0, session}},
                                                                    {"sign", {1, 1, numberToSame}},
                                                                    {"space", {1, 1, intToText}},
                                                                    {"sqrt", {1, 1, floats}},
                                                                    {"str", {1, 3, str}},
                                                                    {"stuff", {4, 4, longText}},
                                                                    {"substring", {3, 3, substring}},
                                                                    {"sum", {1, 1, aggregate}},
                                                                    {"suser_sname", {0, 0, session}},
                                                                    {"system_user", {0, 0, session}},
                                                                    {"unicode", {1, 1, textToInt}},
                                                                    {"upper", {1, 1, textToText}},
                                                                    {"user", {0, 0, session}},
                                                                    {"user_name", {0, 0, session}},
                                                                    {"year", {1, 1, yearMonthDay}}};
  return entries;
}

// Functions that the server has and this one has not: refused as what they are.
bool isOtherFunction(const std::string& name) {
  static const std::set<std::string, std::less<>> names = {"acos",
                                                           "app_name",
                                                           "asin",
                                                           "atan",
                                                           "atn2",
                                                           "binary_checksum",
                                                           "checksum",
                                                           "checksum_agg",
                                                           "columns_updated",
                                                           "connectionproperty",
                                                           "cos",
                                                           "cot",
                                                           "cursor_status",
                                                           "databaseproperty",
                                                           "databasepropertyex",
                                                           "degrees",
                                                           "dense_rank",
                                                           "difference",
                                                           "error_line",
                                                           "error_message",
                                                           "error_number",
                                                           "error_procedure",
                                                           "error_severity",
                                                           "error_state",
                                                           "file_id",
                                                           "file_name",
                                                           "filegroup_id",
                                                           "filegroup_name",
                                                           "formatmessage",
                                                           "getansinull",
                                                           "getutcdate",
                                                           "grouping",
                                                           "has_dbaccess",
                                                           "host_id",
                                                           "identity",
                                                           "index_col",
                                                           "indexkey_property",
                                                           "indexproperty",
                                                           "is_member",
                                                           "is_srvrolemember",
                                                           "newsequentialid",
                                                           "ntile",
                                                           "object_definition",
                                                           "object_schema_name",
                                                           "parsename",
                                                           "permissions",
                                                           "radians",
                                                           "rand",
                                                           "rank",
                                                           "row_number",
                                                           "schema_id",
                                                           "schema_name",
                                                           "serverproperty",
                                                           "sin",
                                                           "soundex",
                                                           "sql_variant_property",
                                                           "stats_date",
                                                           "stdev",
                                                           "stdevp",
                                                           "suser_id",
                                                           "suser_name",
                                                           "suser_sid",
                                                           "sysdatetime",
                                                           "sysutcdatetime",
                                                           "tan",
                                                           "textptr",
                                                           "textvalid",
                                                           "trigger_nestlevel",
                                                           "type_id",
                                                           "type_name",
                                                           "typeproperty",
                                                           "user_id",
                                                           "var",
                                                           "varp",
                                                           "xact_state"};
  return names.contains(name);
}

}  // namespace

BoundPtr Binder::function(const ast::Function& f, Scope& scope) {
  std::string name = f.name;
  std::transform(name.begin(), name.end(), name.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  const auto it = functions().find(name);
  if (it == functions().end() && isOtherFunction(name)) throwUnsupported("the function " + name, f.pos);
  if (it == functions().end()) fail(195, "'" + f.name + "' is not a recognized built-in function name.", f.pos, 15);
  const auto& entry = it->second;
  const int n = static_cast<int>(f.arguments.size());
  if (entry.least == entry.most && n != entry.least)
    fail(174, "The " + name + " function requires " + std::to_string(entry.least) + " argument(s).", f.pos, 15);
  if (n < entry.least || (entry.most >= 0 && n > entry.most))
    fail(189,
         "The " + name + " function requires " + std::to_string(entry.least) + " to " + std::to_string(entry.most) +
             " arguments.",
         f.pos, 15);
  return entry.make(Call{*this, scope, f, name});
}

}  // namespace tsql
