#include "host/missing_codes.h"

#include "balances/reference_records_sql.h"

namespace host {
namespace {

constexpr std::size_t maxCodes = 1000;

constexpr std::string_view leftOut = ": what names it was left out", carried = ": bank lines were carried with it";

std::string nameOf(MissingCodes::Kind kind) {
  switch (kind) {
    case MissingCodes::Kind::account:
      return "account";
    case MissingCodes::Kind::department:
      return "department";
    case MissingCodes::Kind::person:
      return "person";
    case MissingCodes::Kind::customer:
      return "customer";
    case MissingCodes::Kind::supplier:
      return "supplier";
    case MissingCodes::Kind::item:
      return "item";
  }
  return {};
}

// Questions that the system puts itself; those about accounts and items go through the services.
struct Question {
  MissingCodes::Kind kind;
  std::string_view text;  // with one hole, the code
};
constexpr Question questions[] = {
    {MissingCodes::Kind::department, gljz::reference_records_sql::departmentExists.text},
    {MissingCodes::Kind::person, gljz::reference_records_sql::personExists.text},
    {MissingCodes::Kind::customer, gljz::reference_records_sql::customerExists.text},
    {MissingCodes::Kind::supplier, gljz::reference_records_sql::vendorExists.text},
};

}  // namespace

void MissingCodes::add(Kind kind, std::string_view code, std::string_view itemClass, Named named) {
  Code missing{kind, std::string(code), std::string(itemClass), named};
  if (codes_.size() < maxCodes)
    codes_.insert(std::move(missing));
  else
    more_ |= !codes_.contains(missing);
}

void MissingCodes::selectionWasEmpty(std::string_view selection, Named named) {
  for (const Question& question : questions) {
    const std::string_view head = question.text.substr(0, question.text.find('{'));
    const std::string_view tail = question.text.substr(question.text.find('}') + 1);
    if (!selection.starts_with(head) || !selection.ends_with(tail)) continue;
    return add(question.kind, selection.substr(head.size(), selection.size() - head.size() - tail.size()), {}, named);
  }
}

std::vector<std::string> MissingCodes::notes() const {
  std::vector<std::string> texts;
  for (const Code& missing : codes_) {
    std::string text = "the new year has no " + nameOf(missing.kind) + " ";
    text += missing.code.empty() ? "\"\"" : missing.code;
    if (missing.kind == Kind::item) text += " of class " + missing.itemClass;
    texts.push_back(text.append(missing.named == Named::carried ? carried : leftOut));
  }
  if (more_)
    texts.push_back("more than " + std::to_string(maxCodes) +
                    " codes are missing in the new year; the others are not listed");
  return texts;
}

}  // namespace host
