#pragma once
// The contents of a synthetic account set in memory, before it is written.

#include <cstdint>
#include <string>
#include <vector>

namespace host {

// A small generator whose sequence is fixed by its seed, whatever the library.
class Random {
public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  std::uint64_t next();
  // From 0 to below - 1.
  std::int64_t below(std::int64_t limit) {
    return static_cast<std::int64_t>(next() % static_cast<std::uint64_t>(limit));
  }

private:
  std::uint64_t state_;
};

enum class AccountKind { bank, customer, supplier, person, department, item, quantity, foreign, defined, plain };
inline constexpr int kindCount = 10;

// Amounts are in 1/100 of the currency, debit positive.
struct AuxiliaryBalance {
  std::size_t account = 0;  // index
  int partner = 0;          // customer, supplier, person, department or item number, or the user-defined text's
  std::int64_t amount = 0;
  bool fromItems = false;  // the amount is the sum of its open items
};
struct LedgerAccount {
  std::string code, name;
  AccountKind kind = AccountKind::plain;
  int grade = 1;
  bool last = true;
  std::size_t parent = noParent;
  std::int64_t amount = 0;
  bool hasBalance = false;
  static constexpr std::size_t noParent = static_cast<std::size_t>(-1);
};
// A line of the voucher table: a current-account item, or a bank line (auxiliary is then noAuxiliary). Also a line of a
// bank statement.
struct LedgerLine {
  std::size_t account = 0, auxiliary = noAuxiliary;
  std::int64_t amount = 0;
  int month = 1, day = 1;
  // The month in which the item was cleared: 1 to 12 of the closing year, 13 and further of the new one; 0 not yet.
  int clearedIn = 0;
  static constexpr std::size_t noAuxiliary = static_cast<std::size_t>(-1);
};
// What the books and the bank agreed on when the reconciliation began: a bank account's balance without its open lines.
struct BankOpening {
  std::size_t account = 0;
  std::int64_t amount = 0;
};
struct Cheque {
  std::size_t account = 0;
  std::int64_t amount = 0;
  int month = 1, day = 1;
  bool used = false;
};

inline constexpr int customerCount = 200, supplierCount = 120, personCount = 60, departmentCount = 12, itemCount = 80;

struct Ledger {
  std::vector<LedgerAccount> accounts;  // in the order of their codes
  std::vector<AuxiliaryBalance> auxiliaries;
  // items are open at the end of the closing year, some of them cleared after it; clearedItems were cleared before, by
  // twos that cancel out.
  std::vector<LedgerLine> items, clearedItems, bankLines, statementLines;
  std::vector<BankOpening> bankOpenings;
  std::vector<Cheque> cheques;
};

// Bank accounts in the foreign currency hold whole hundredths of it: their amounts are multiples of this.
inline constexpr std::int64_t foreignRate = 8;  // units of the main currency for one of the foreign
bool isBank(AccountKind kind);

Ledger makeLedger(std::int64_t accounts, std::int64_t balances, std::int64_t items, std::int64_t bank,
                  std::uint64_t seed);

}  // namespace host
