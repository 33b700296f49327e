#include "host/generated_ledger.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace host {
namespace {

constexpr std::array<const char*, kindCount> kindNames{"银行存款", "应收账款", "应付账款", "备用金",   "部门费用",
                                                       "工程成本", "原材料",   "外币存款", "合同往来", "其他科目"};

std::string twoDigits(std::int64_t n) {
  return std::string(n < 10 ? "0" : "") + std::to_string(n);
}

// Liabilities and income stand in credit.
bool isCreditKind(AccountKind kind) {
  return kind == AccountKind::supplier;
}
bool hasPartners(AccountKind kind) {
  return kind == AccountKind::customer || kind == AccountKind::supplier || kind == AccountKind::person ||
         kind == AccountKind::department || kind == AccountKind::item || kind == AccountKind::defined;
}
bool hasItems(AccountKind kind) {
  return kind == AccountKind::customer || kind == AccountKind::supplier || kind == AccountKind::person;
}
int partnersOf(AccountKind kind) {
  switch (kind) {
    case AccountKind::customer:
      return customerCount;
    case AccountKind::supplier:
      return supplierCount;
    case AccountKind::person:
      return personCount;
    case AccountKind::department:
      return departmentCount;
    default:
      return itemCount;
  }
}

class Builder {
public:
  Builder(std::int64_t accounts, std::uint64_t seed) : random_(seed) {
    chart(std::max<std::int64_t>(accounts, kindCount + 1));
  }

  Ledger build(std::int64_t balances, std::int64_t items, std::int64_t bank) {
    chooseBalances(balances);
    openItems(items);
    bankLines(bank);
    cheques(bank);
    settleAmounts();
    return std::move(ledger_);
  }

private:
  // Four digits on the first level, two more on each further one, at most 99 children an account. The last account of
  // the first level stands alone and takes what is missing to make debits equal credits.
  void chart(std::int64_t wanted) {
    constexpr std::int64_t firstCode = 1001, lastCode = 9900, mostTops = 900, perTop = 400;
    const std::int64_t tops = std::clamp<std::int64_t>(wanted / perTop, kindCount, mostTops);
    std::int64_t left = wanted - 1;
    for (std::int64_t top = 0; top < tops; ++top) {
      const std::int64_t share = left / (tops - top);
      left -= share;
      const auto kind = static_cast<AccountKind>(top % kindCount);
      subtree(std::to_string(firstCode + top), kind, 1, LedgerAccount::noParent, share);
    }
    add(std::to_string(lastCode), "实收资本", AccountKind::plain, 1, LedgerAccount::noParent);
  }
  void subtree(const std::string& code, AccountKind kind, int grade, std::size_t parent, std::int64_t size) {
    constexpr std::int64_t mostChildren = 99;
    const std::size_t self = add(code, std::string(kindNames[static_cast<std::size_t>(kind)]) + (grade > 1 ? code : ""),
                                 kind, grade, parent);
    std::int64_t left = size - 1;
    if (left <= 0) return;
    ledger_.accounts[self].last = false;
    const auto even = static_cast<std::int64_t>(std::ceil(std::sqrt(static_cast<double>(left))));
    const std::int64_t children = std::min({left, left <= 40 ? left : even, mostChildren});
    for (std::int64_t child = 0; child < children; ++child) {
      const std::int64_t share = left / (children - child);
      left -= share;
      subtree(code + twoDigits(child + 1), kind, grade + 1, self, share);
    }
  }
  std::size_t add(std::string code, std::string name, AccountKind kind, int grade, std::size_t parent) {
    ledger_.accounts.push_back({std::move(code), std::move(name), kind, grade, true, parent});
    return ledger_.accounts.size() - 1;
  }

  std::int64_t amount() { return 100 + random_.below(9'999'900); }
  std::int64_t signedAmount(AccountKind kind) {
    const std::int64_t a = kind == AccountKind::foreign ? amount() * foreignRate : amount();
    // One balance in twelve stands on the unusual side.
    return isCreditKind(kind) != (random_.below(12) == 0) ? -a : a;
  }

  // Spread over the whole chart, so that a small number meets every kind.
  void chooseBalances(std::int64_t wanted) {
    std::vector<std::size_t> leaves;
    for (std::size_t i = 0; i + 1 < ledger_.accounts.size(); ++i)
      if (ledger_.accounts[i].last) leaves.push_back(i);
    const auto count = std::min<std::int64_t>(wanted, static_cast<std::int64_t>(leaves.size()));
    for (std::int64_t i = 0; i < count; ++i)
      balance(leaves[static_cast<std::size_t>(i * static_cast<std::int64_t>(leaves.size()) / count)]);
  }
  void balance(std::size_t index) {
    LedgerAccount& account = ledger_.accounts[index];
    account.hasBalance = true;
    if (!hasPartners(account.kind)) {
      account.amount = signedAmount(account.kind);
      return;
    }
    const int partners = partnersOf(account.kind), rows = 1 + static_cast<int>(random_.below(4));
    const int first = static_cast<int>(random_.below(partners));
    if (hasItems(account.kind)) itemRows_.push_back(ledger_.auxiliaries.size());
    for (int row = 0; row < rows; ++row) {
      if (row > 0 && hasItems(account.kind)) itemRows_.push_back(ledger_.auxiliaries.size());
      ledger_.auxiliaries.push_back({index, (first + row) % partners, signedAmount(account.kind)});
    }
  }

  void openItems(std::int64_t wanted) {
    if (itemRows_.empty()) return;
    for (std::int64_t i = 0; i < wanted; ++i) {
      const std::size_t row =
          itemRows_[static_cast<std::size_t>(random_.below(static_cast<std::int64_t>(itemRows_.size())))];
      AuxiliaryBalance& auxiliary = ledger_.auxiliaries[row];
      if (!auxiliary.fromItems) auxiliary.amount = 0, auxiliary.fromItems = true;
      LedgerLine line = datedLine(auxiliary.account, row, signedAmount(ledger_.accounts[auxiliary.account].kind));
      auxiliary.amount += line.amount;
      constexpr std::int64_t oneIn = 6;  // were cleared when the year had ended already
      if (random_.below(oneIn) == 0) line.clearedIn = 13 + static_cast<int>(random_.below(3));
      ledger_.items.push_back(line);
      if (i % 4 == 0) clearedPair(auxiliary.account, row);
    }
  }
  // A debit and its payment, which leave the balance as it is.
  void clearedPair(std::size_t account, std::size_t row) {
    LedgerLine first = datedLine(account, row, signedAmount(ledger_.accounts[account].kind)), second = first;
    second.amount = -first.amount;
    second.month = first.clearedIn = second.clearedIn = first.month + static_cast<int>(random_.below(13 - first.month));
    ledger_.clearedItems.push_back(first);
    ledger_.clearedItems.push_back(second);
  }

  std::vector<std::size_t> banks() const {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < ledger_.accounts.size(); ++i)
      if (ledger_.accounts[i].last && isBank(ledger_.accounts[i].kind)) found.push_back(i);
    return found;
  }
  // Every open line of the books and of the statements waits for its counterpart; both sides start from the balance
  // without them.
  void bankLines(std::int64_t wanted) {
    const std::vector<std::size_t> all = banks();
    if (all.empty() || wanted == 0) return;
    for (const std::size_t bank : all) ledger_.bankOpenings.push_back({bank, ledger_.accounts[bank].amount});
    for (std::int64_t i = 0; i < wanted; ++i) {
      const LedgerLine line = bankLine(all);
      ledger_.accounts[line.account].hasBalance = true;
      ledger_.accounts[line.account].amount += line.amount;
      ledger_.bankLines.push_back(line);
    }
    for (std::int64_t i = 0; i < wanted / 2; ++i) ledger_.statementLines.push_back(bankLine(all));
  }
  LedgerLine bankLine(const std::vector<std::size_t>& all) {
    const std::size_t bank = oneOf(all);
    const std::int64_t size = ledger_.accounts[bank].kind == AccountKind::foreign ? amount() * foreignRate : amount();
    return datedLine(bank, LedgerLine::noAuxiliary, random_.below(2) == 0 ? size : -size);
  }
  std::size_t oneOf(const std::vector<std::size_t>& all) {
    return all[static_cast<std::size_t>(random_.below(static_cast<std::int64_t>(all.size())))];
  }
  // A cheque for ten bank lines; every third has been used up.
  void cheques(std::int64_t bankLineCount) {
    const std::vector<std::size_t> all = banks();
    if (all.empty()) return;
    for (std::int64_t i = 0; i < bankLineCount / 10; ++i) {
      const LedgerLine drawn = bankLine(all);
      ledger_.cheques.push_back({drawn.account, std::abs(drawn.amount), drawn.month, drawn.day, i % 3 == 0});
    }
  }
  LedgerLine datedLine(std::size_t account, std::size_t auxiliary, std::int64_t lineAmount) {
    const int month = 1 + static_cast<int>(random_.below(12));
    return {account, auxiliary, lineAmount, month, 1 + static_cast<int>(random_.below(28))};
  }

  void settleAmounts() {
    for (const AuxiliaryBalance& auxiliary : ledger_.auxiliaries)
      ledger_.accounts[auxiliary.account].amount += auxiliary.amount;
    std::int64_t total = 0;
    for (const LedgerAccount& account : ledger_.accounts)
      if (account.last) total += account.amount;
    ledger_.accounts.back().amount = -total;
    ledger_.accounts.back().hasBalance = true;
    // A child stands behind its parent, so that going backwards every account is complete when it is added up.
    for (std::size_t i = ledger_.accounts.size(); i-- > 0;) {
      const LedgerAccount& account = ledger_.accounts[i];
      if (account.parent == LedgerAccount::noParent || !account.hasBalance) continue;
      ledger_.accounts[account.parent].amount += account.amount;
      ledger_.accounts[account.parent].hasBalance = true;
    }
  }

  Random random_;
  Ledger ledger_;
  std::vector<std::size_t> itemRows_;  // auxiliary rows that may take open items
};

}  // namespace

bool isBank(AccountKind kind) {
  return kind == AccountKind::bank || kind == AccountKind::foreign;
}

std::uint64_t Random::next() {
  std::uint64_t z = (state_ += 0x9E3779B97F4A7C15u);
  z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9u;
  z = (z ^ z >> 27) * 0x94D049BB133111EBu;
  return z ^ z >> 31;
}

Ledger makeLedger(std::int64_t accounts, std::int64_t balances, std::int64_t items, std::int64_t bank,
                  std::uint64_t seed) {
  return Builder(accounts, seed).build(balances, items, bank);
}

}  // namespace host
