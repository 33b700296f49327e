#include "host/clearing_component.h"

#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/run_state.h"

namespace host {
namespace {

using platform::Component;
using platform::Connection;
using platform::DateTime;
using platform::Money;
using platform::Recordset;
using platform::RunTimeError;
using platform::Value;

constexpr int noSuchOperation = 438;
constexpr std::size_t idsPerUpdate = 200;  // even, so that a statement marks whole pairs

// The lines that wait for their counterpart within one group, by what they add to the balance.
class Pairing {
public:
  using Amounts = std::pair<Money, Money>;  // main and foreign currency, debit positive

  // The id of the oldest waiting line that cancels this one; otherwise 0, and this line waits.
  std::int64_t match(const Amounts& amounts, std::int64_t id) {
    const auto found = waiting_.find({-amounts.first, -amounts.second});
    if (found == waiting_.end()) {
      waiting_[amounts].push_back(id);
      return 0;
    }
    const std::int64_t oldest = found->second.front();
    found->second.pop_front();
    if (found->second.empty()) waiting_.erase(found);
    return oldest;
  }
  void clear() { waiting_.clear(); }

private:
  std::map<Amounts, std::deque<std::int64_t>> waiting_;
};

class Clearing final : public Component {
public:
  explicit Clearing(std::shared_ptr<Journal> journal) : journal_(std::move(journal)) {}

  Value Call(const std::string& operation, std::vector<Argument>& arguments) override {
    if (platform::equalsIgnoreCase(operation, "InitZwPub")) {
      services_ = std::static_pointer_cast<platform::ZwPubCls>(arguments.at(0).object);
    } else if (platform::equalsIgnoreCase(operation, "SetCusorSup")) {
      suppliers_ = arguments.at(0).value.asInteger() != 0;
    } else if (platform::equalsIgnoreCase(operation, "AutoClear4Task")) {
      clear();
      arguments.at(1).value = "";
    } else {
      throw RunTimeError(noSuchOperation, "The clearing component has no operation " + operation);
    }
    return {};
  }

private:
  void clear() {
    const auto connection = gljz::run.m_conn;
    if (!services_ || !connection) throw RunTimeError(RunTimeError::objectNotSet, "The clearing component has no year");
    std::vector<std::int64_t> cleared;
    std::size_t count = 0;
    const auto flush = [&] {
      if (cleared.empty()) return;
      mark(*connection, cleared);
      count += cleared.size();
      cleared.clear();
    };

    auto lines = connection->OpenRecordset(openLines(), 2, platform::CursorLocation::server);
    Pairing pairing;
    std::vector<Value> group;
    for (; !lines->Eof(); lines->MoveNext()) {
      if (auto next = groupOf(*lines); next != group) {
        pairing.clear();
        group = std::move(next);
      }
      const std::int64_t id = lines->Field("i_id").asInteger();
      const std::int64_t counterpart = pairing.match(amountsOf(*lines), id);
      if (counterpart == 0) continue;
      cleared.push_back(counterpart);
      cleared.push_back(id);
      if (cleared.size() == idsPerUpdate) flush();
    }
    lines->Close();
    flush();
    if (journal_ && count > 0)
      journal_->note("automatic clearing: " + std::to_string(count) + " open lines of " +
                     (suppliers_ ? "suppliers" : "customers") + " cancel exactly and were marked as cleared");
  }

  // Oldest first within a group. Lines without any amount have nothing to clear.
  std::string openLines() const {
    const std::string partner = suppliers_ ? "csup_id" : "ccus_id", flag = suppliers_ ? "bsup" : "bcus";
    return "select v.i_id,v.ccode,v.cexch_name,v." + partner +
           " as cpartner,v.md,v.mc,v.md_f,v.mc_f from gl_accvouch v inner join code c on c.ccode=v.ccode and "
           "c.iyear=v.iyear where c.bend=1 and c." +
           flag + "=1 and not v." + partner + " is null and v.iyear>=" + gljz::run.m_strInitYear +
           " and v.iyear<=" + gljz::run.m_strLastYear +
           " and v.iflag is null and isnull(v.iflagperson,0)=0 and v.bdelete=0 and (v.md<>v.mc or v.md_f<>v.mc_f) "
           "order by v.ccode,v.cexch_name,v." +
           partner + ",v.iyear,v.iperiod,v.dbill_date,v.i_id";
  }

  // What two lines that cancel have in common, in the order of the selection. Letter case aside, as the server sorts.
  // A department or an item of a line does not matter: it is the partner who owes or is owed.
  static std::vector<Value> groupOf(const Recordset& line) {
    std::vector<Value> group;
    for (const char* field : {"ccode", "cexch_name", "cpartner"}) {
      const Value value = line.Field(field);
      group.push_back(value.isNull() ? value : Value(platform::toLowerAscii(value.asText())));
    }
    return group;
  }

  static Pairing::Amounts amountsOf(const Recordset& line) {
    return {line.Field("md").asMoney() - line.Field("mc").asMoney(),
            line.Field("md_f").asMoney() - line.Field("mc_f").asMoney()};
  }

  void mark(Connection& connection, const std::vector<std::int64_t>& ids) {
    const DateTime lastDay = DateTime::fromTicks(services_->CalendarInfo(0, 0).ticks() - DateTime::ticksPerDay);
    std::string list;
    for (const std::int64_t id : ids) list += (list.empty() ? "" : ",") + std::to_string(id);
    connection.ExecuteSql("update gl_accvouch set iflagperson=1,wllqdate='" + lastDay.dateText() +
                          "',wllqperiod=" + gljz::run.m_strLastYear + "12 where i_id in (" + list + ")");
  }

  std::shared_ptr<Journal> journal_;
  std::shared_ptr<platform::ZwPubCls> services_;
  bool suppliers_ = false;
};

}  // namespace

std::shared_ptr<Component> makeClearingComponent(std::shared_ptr<Journal> journal) {
  return std::make_shared<Clearing>(std::move(journal));
}

}  // namespace host
