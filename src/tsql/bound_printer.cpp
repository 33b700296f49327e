#include "tsql/bound_printer.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>

#include "tsql/emitter.h"

namespace tsql {
namespace {

constexpr std::size_t width = 120;  // of a line

// A leaf, or an operator with what it is applied to.
struct Form {
  std::string head;
  std::vector<Form> parts;
  bool leaf = true;
  std::size_t length = 0;  // on one line
};

Form word(std::string text) {
  Form f;
  f.length = text.size();
  f.head = std::move(text);
  return f;
}

Form list(std::string head, std::vector<Form> parts = {}) {
  Form f;
  f.leaf = false;
  f.length = head.size() + 2;
  for (const Form& p : parts) f.length += 1 + p.length;
  f.head = std::move(head);
  f.parts = std::move(parts);
  return f;
}

// name=value; the name goes into the value's own head, so that a long value still breaks below it.
Form named(const std::string& name, Form value) {
  if (name.empty()) return value;
  if (value.leaf) return word(name + "=" + value.head);
  std::vector<Form> one;
  one.push_back(std::move(value));
  return list(name + "=", std::move(one));
}

void write(const Form& f, std::size_t indent, std::size_t behind, std::string& out);

void writeFlat(const Form& f, std::string& out) {
  if (f.leaf) {
    out += f.head;
    return;
  }
  out += '(' + f.head;
  for (const Form& p : f.parts) {
    out += ' ';
    writeFlat(p, out);
  }
  out += ')';
}

// behind: closing brackets that follow on the same line.
void write(const Form& f, std::size_t indent, std::size_t behind, std::string& out) {
  if (f.leaf || indent + f.length + behind <= width) return writeFlat(f, out);
  out += '(' + f.head;
  const bool words = std::all_of(f.parts.begin(), f.parts.end(), [](const Form& p) { return p.leaf; });
  std::size_t used = width;  // of the line that is being filled
  for (std::size_t i = 0; i < f.parts.size(); ++i) {
    // Words stand side by side as far as they fit, everything else on lines of its own.
    used += 1 + f.parts[i].length;
    if (words && used <= width) {
      out += ' ' + f.parts[i].head;
      continue;
    }
    used = indent + 2 + f.parts[i].length;
    out += '\n' + std::string(indent + 2, ' ');
    write(f.parts[i], indent + 2, i + 1 == f.parts.size() ? behind + 1 : 0, out);
  }
  out += ')';
}

std::string tableName(const TableDef& t) {
  return t.database + "." + t.name;
}

std::string typed(std::string text, const BoundExpr& e) {
  return std::move(text) + ":" + e.type.name() + (e.nullable ? "" : "!");
}

std::string columnName(const TableDef& t, int index) {
  return t.columns[static_cast<std::size_t>(index)].name;
}

class BoundPrinter {
public:
  Form statement(const BoundStatement& s) {
    if (s.insert) return insert(*s.insert);
    if (s.update) return update(*s.update);
    if (s.delete_) return deletion(*s.delete_);
    return select(*s.select);
  }

private:
  std::vector<Form> forms(const std::vector<BoundPtr>& list) {
    std::vector<Form> out;
    for (const auto& e : list) out.push_back(expr(*e));
    return out;
  }

  Form expr(const BoundExpr& e) {
    switch (e.op) {
      case BoundOp::null:
        return word(typed("null", e));
      case BoundOp::slot:
        return word(typed("?" + std::to_string(e.slotIndex + 1), e));
      case BoundOp::integer:
        return word("#" + (e.text.empty() ? std::to_string(e.number) : e.text));
      case BoundOp::column:
        return word(typed(columnOf(e), e));
      case BoundOp::call:
        return list(typed(e.text, e), forms(e.args));
      case BoundOp::conv:
        return list(typed("convert", e), forms(e.args));
      case BoundOp::store:
        return list("store:" + e.target.name() + (e.nullable ? "" : "!"), forms(e.args));
      case BoundOp::concat:
        return list(typed("concat", e), forms(e.args));
      case BoundOp::caseWhen:
        return caseWhen(e);
      case BoundOp::aggregate:
        return list(typed(e.text + (e.distinct ? " distinct" : ""), e), forms(e.args));
      case BoundOp::countStar:
        return word(typed("count(*)", e));
      case BoundOp::scalar:
        return subquery(typed("scalar", e), e);
      default:
        return condition(e);
    }
  }

  Form condition(const BoundExpr& e) {
    static constexpr std::array<const char*, 6> symbols = {"=", "<>", "<", "<=", ">", ">="};
    const std::string no = e.negated ? "not " : "";
    switch (e.op) {
      case BoundOp::compare:
        return list(symbols[static_cast<std::size_t>(e.compareOp)], forms(e.args));
      case BoundOp::and_:
      case BoundOp::or_: {
        std::vector<Form> parts;
        chain(e, e.op, parts);
        return list(e.op == BoundOp::and_ ? "and" : "or", std::move(parts));
      }
      case BoundOp::not_:
        return list("not", forms(e.args));
      case BoundOp::isNull:
        return list(no + "null", forms(e.args));
      case BoundOp::inList:
        return list(no + "in", forms(e.args));
      case BoundOp::inSelect:
        return subquery(no + "in", e);
      case BoundOp::between:
        return list(no + "between", forms(e.args));
      case BoundOp::like:
        return list(no + "like", forms(e.args));
      case BoundOp::exists:
        return subquery("exists", e);
      case BoundOp::quantified:
        return subquery(std::string(symbols[static_cast<std::size_t>(e.compareOp)]) + (e.negated ? " all" : " any"), e);
      default:
        return word("unknown");
    }
  }

  // a and b and c is one level, whichever way it was bracketed.
  void chain(const BoundExpr& e, BoundOp op, std::vector<Form>& parts) {
    if (e.op == op)
      for (const auto& a : e.args) chain(*a, op, parts);
    else
      parts.push_back(expr(e));
  }

  Form caseWhen(const BoundExpr& e) {
    std::vector<Form> parts;
    const std::size_t pairs = e.args.size() / 2;
    for (std::size_t i = 0; i < pairs; ++i) {
      std::vector<Form> pair;
      pair.push_back(expr(*e.args[2 * i]));
      pair.push_back(expr(*e.args[2 * i + 1]));
      parts.push_back(list("when", std::move(pair)));
    }
    if (e.negated) parts.push_back(one("else", expr(*e.args.back())));
    return list(typed("case", e), std::move(parts));
  }

  Form subquery(const std::string& head, const BoundExpr& e) {
    auto parts = forms(e.args);
    parts.push_back(select(*e.select));
    return list(head, std::move(parts));
  }

  static Form one(const std::string& head, Form part) {
    std::vector<Form> parts;
    parts.push_back(std::move(part));
    return list(head, std::move(parts));
  }

  std::string columnOf(const BoundExpr& e) const {
    const auto found = sources_.find(e.source);
    const std::string name = found != sources_.end() && e.column >= 0
                                 ? found->second->columns[static_cast<std::size_t>(e.column)].name
                                 : e.text;
    return "s" + std::to_string(e.source) + "." + name;
  }

  void know(const BoundSource& s) {
    if (s.kind == BoundSource::Kind::join) {
      know(*s.left);
      know(*s.right);
    } else {
      sources_[s.id] = &s;
    }
  }

  Form source(const BoundSource& s) {
    static constexpr std::array<const char*, 5> joins = {"join", "left join", "right join", "full join", "cross join"};
    const std::string id = "s" + std::to_string(s.id);
    switch (s.kind) {
      case BoundSource::Kind::table:
        return word(id + "=" + tableName(*s.table));
      case BoundSource::Kind::derived:
        return one(id + "=", select(*s.derived));
      case BoundSource::Kind::join:
        break;
    }
    std::vector<Form> parts;
    parts.push_back(source(*s.left));
    parts.push_back(source(*s.right));
    if (s.condition) parts.push_back(one("on", expr(*s.condition)));
    return list(joins[static_cast<std::size_t>(s.join)], std::move(parts));
  }

  // The part from `from` to `where`, which update and delete have too.
  void rows(const BoundSelect& s, std::vector<Form>& parts) {
    std::vector<Form> from;
    for (const auto& f : s.from) from.push_back(source(*f));
    if (!from.empty()) parts.push_back(list("from", std::move(from)));
    if (s.where) parts.push_back(one("where", expr(*s.where)));
  }

  Form select(const BoundSelect& s) {
    static constexpr std::array<const char*, 5> operations = {"", "union all", "union", "except", "intersect"};
    for (const auto& f : s.from) know(*f);
    std::vector<Form> parts;
    if (s.top) parts.push_back(one("top", expr(*s.top)));
    std::vector<Form> items;
    for (const auto& item : s.items) items.push_back(named(item.name, expr(*item.expr)));
    parts.push_back(list("items", std::move(items)));
    rows(s, parts);
    if (!s.groupBy.empty()) parts.push_back(list("group by", forms(s.groupBy)));
    if (s.having) parts.push_back(one("having", expr(*s.having)));
    if (s.next) parts.push_back(one(operations[static_cast<std::size_t>(s.op)], select(*s.next)));
    if (!s.orderBy.empty()) {
      std::vector<Form> order;
      for (const auto& o : s.orderBy) {
        Form f = o.expr ? expr(*o.expr) : word("item " + std::to_string(o.position + 1));
        order.push_back(o.descending ? one("desc", std::move(f)) : std::move(f));
      }
      parts.push_back(list("order by", std::move(order)));
    }
    std::string head = s.distinct ? "select distinct" : "select";
    if (s.aggregated) head += " aggregated";
    if (s.singleRow) head += " single";
    return list(head, std::move(parts));
  }

  Form insert(const BoundInsert& i) {
    std::vector<Form> parts;
    if (!i.select) {
      for (std::size_t n = 0; n < i.values.size(); ++n)
        parts.push_back(named(columnName(*i.table, i.columns[n]), expr(*i.values[n])));
    } else {
      std::vector<Form> columns;
      for (const int c : i.columns) columns.push_back(word(columnName(*i.table, c)));
      parts.push_back(list("columns", std::move(columns)));
      parts.push_back(select(*i.select));
      if (!i.defaults.empty()) parts.push_back(list("defaults", forms(i.defaults)));
    }
    return list("insert " + tableName(*i.table) + (i.numbered ? " numbered" : ""), std::move(parts));
  }

  Form update(const BoundUpdate& u) {
    for (const auto& f : u.rows->from) know(*f);
    std::vector<Form> set;
    for (std::size_t n = 0; n < u.values.size(); ++n)
      set.push_back(named(columnName(*u.table, u.columns[n]), expr(*u.values[n])));
    std::vector<Form> parts;
    parts.push_back(list("set", std::move(set)));
    rows(*u.rows, parts);
    return list(
        "update s" + std::to_string(u.target) + (u.simple ? " in place" : "") + (u.touchesKey ? " touches a key" : ""),
        std::move(parts));
  }

  Form deletion(const BoundDelete& d) {
    for (const auto& f : d.rows->from) know(*f);
    std::vector<Form> parts;
    rows(*d.rows, parts);
    return list("delete s" + std::to_string(d.target) + (d.simple ? " in place" : ""), std::move(parts));
  }

  std::unordered_map<int, const BoundSource*> sources_;
};

}  // namespace

std::string printBound(const BoundStatement& statement) {
  std::string out;
  write(BoundPrinter().statement(statement), 0, 0, out);
  out += '\n';
  for (const Pin& p : statement.pins)
    out += "holds only for literal " + std::to_string(p.ordinal) + " = " + sqliteLiteral(p.value) + '\n';
  return out;
}

std::string printSlot(const Slot& slot) {
  std::string out = slot.negate ? "minus " : "";
  switch (slot.source) {
    case Slot::Source::literal:
      out += "literal " + std::to_string(slot.ordinal);
      break;
    case Slot::Source::parameter:
      out += "parameter " + std::to_string(slot.ordinal + 1);
      break;
    case Slot::Source::variable:
      out += slot.name;
      break;
    case Slot::Source::constant:
      out += "constant " + sqliteLiteral(slot.constant);
      break;
    case Slot::Source::identity:
      return out + "the next identity number";
  }
  out += ": " + slot.constantType.name();
  if (slot.type.kind != TypeKind::null && !(slot.type == slot.constantType)) out += " -> " + slot.type.name();
  if (slot.store) out += ", stored";
  if (slot.style != 0) out += ", style " + std::to_string(slot.style);
  return out;
}

}  // namespace tsql
