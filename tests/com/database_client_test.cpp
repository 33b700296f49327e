// The database client behind its adapters: classes of the test's own stand under its program ids and write down how
// they are used.

#include <gmock/gmock.h>

#include "adapters.h"
#include "automation.h"
#include "offered_class.h"

namespace com::test {
namespace {

using platform::CursorLocation;
using platform::RunTimeError;
using platform::Value;
using testing::ElementsAre;

constexpr CLSID connectionId = {0x5a0f2a61, 0x1c0e, 0x4b0b, {0x8e, 0x55, 0x27, 0x3f, 0x0d, 0x10, 0x55, 0x11}};
constexpr CLSID commandId = {0x5a0f2a61, 0x1c0e, 0x4b0b, {0x8e, 0x55, 0x27, 0x3f, 0x0d, 0x10, 0x55, 0x12}};
constexpr CLSID recordsetId = {0x5a0f2a61, 0x1c0e, 0x4b0b, {0x8e, 0x55, 0x27, 0x3f, 0x0d, 0x10, 0x55, 0x13}};

std::vector<std::string> calls;
int answersOfBatch = 1;
int failureBehindFirstAnswer = 0;  // a number of the client

void say(const std::string& call) {
  calls.push_back(call);
}

// A member that takes a value and tells it again.
Variant keep(const Invocation& call, const std::string& name, Value& place) {
  if (!call.writes()) return Variant(place);
  place = valueOf(call.newValue());
  say(name + " = " + place.displayText());
  return {};
}

class FakeField final : public TableObject<FakeField> {
public:
  FakeField(std::string name, const int& row) : name_(std::move(name)), row_(row) {}
  static const MemberTable<FakeField>& members() {
    using F = FakeField;
    static const MemberTable<F> table = {{L"Value", DISPID_VALUE, property, {}, 0, &F::value},
                                         {L"Name", 1, propertyGet, {}, 0, &F::name}};
    return table;
  }

private:
  Variant value(const Invocation& call) {
    if (!call.writes()) return Variant(Value(name_ + std::to_string(row_)));
    say(name_ + " := " + textOf(call.newValue()));
    return {};
  }
  Variant name(const Invocation&) { return Variant(Value(name_)); }

  std::string name_;
  const int& row_;
};

class FakeFields final : public TableObject<FakeFields> {
public:
  explicit FakeFields(const int& row) : row_(row) {}
  static const MemberTable<FakeFields>& members() {
    using F = FakeFields;
    static const MemberTable<F> table = {{L"Item", DISPID_VALUE, method | propertyGet, {L"Index"}, 1, &F::item},
                                         {L"Count", 1, propertyGet, {}, 0, &F::count}};
    return table;
  }

private:
  Variant item(const Invocation& call) {
    return Variant(adopt<IDispatch>(new FakeField(call.integer(0) == 0 ? "ccode" : "mb", row_)).get());
  }
  Variant count(const Invocation&) { return Variant(Value(2)); }
  const int& row_;
};

// Two rows, and as many answers behind it as the batch has.
class FakeRecordset final : public TableObject<FakeRecordset> {
public:
  explicit FakeRecordset(int answer = 1) : answer_(answer) {}
  static const MemberTable<FakeRecordset>& members() {
    using R = FakeRecordset;
    static const MemberTable<R> table = {
        {L"CursorLocation", 1, property, {}, 0, &R::location},
        {L"Open", 2, method, {L"Source", L"ActiveConnection", L"CursorType", L"LockType", L"Options"}, 5, &R::open},
        {L"Fields", 3, propertyGet, {}, 0, &R::fields},
        {L"EOF", 4, propertyGet, {}, 0, &R::eof},
        {L"BOF", 5, propertyGet, {}, 0, &R::bof},
        {L"MoveNext", 6, method, {}, 0, &R::moveNext},
        {L"AddNew", 7, method, {}, 0, &R::addNew},
        {L"Update", 8, method, {}, 0, &R::update},
        {L"Close", 9, method, {}, 0, &R::close},
        {L"NextRecordset", 10, method, {}, 0, &R::next},
    };
    return table;
  }

private:
  Variant location(const Invocation& call) { return keep(call, "CursorLocation", location_); }
  Variant open(const Invocation& call) {
    say("Open " + call.text(0) + " connection " + Automation(call.object(1)).get(L"ConnectionString").asText() +
        " cursor " + call.text(2) + " lock " + call.text(3) + " options " + call.text(4));
    return {};
  }
  Variant fields(const Invocation&) { return Variant(adopt<IDispatch>(new FakeFields(row_)).get()); }
  Variant eof(const Invocation&) { return Variant(Value(row_ > 2)); }
  Variant bof(const Invocation&) { return Variant(Value(false)); }
  Variant moveNext(const Invocation&) {
    ++row_;
    return {};
  }
  Variant addNew(const Invocation&) {
    say("AddNew");
    return {};
  }
  Variant update(const Invocation&) {
    say("Update");
    return {};
  }
  Variant close(const Invocation&) {
    say("Close");
    return {};
  }
  Variant next(const Invocation&) {
    if (failureBehindFirstAnswer != 0) throw RunTimeError(failureBehindFirstAnswer, "behind the first answer");
    if (answer_ >= answersOfBatch) return Variant(static_cast<IDispatch*>(nullptr));
    say("NextRecordset");
    return Variant(adopt<IDispatch>(new FakeRecordset(answer_ + 1)).get());
  }

  int answer_, row_ = 1;
  Value location_;
};

class FakeConnection final : public TableObject<FakeConnection> {
public:
  static const MemberTable<FakeConnection>& members() {
    using C = FakeConnection;
    static const MemberTable<C> table = {
        {L"Open", 1, method, {L"ConnectionString"}, 1, &C::open},
        {L"Close", 2, method, {}, 0, &C::close},
        {L"State", 3, propertyGet, {}, 0, &C::state},
        {L"ConnectionString", 4, propertyGet, {}, 0, &C::text},
        {L"CommandTimeout", 5, property, {}, 0, &C::timeout},
        {L"Execute", 6, method, {L"CommandText", L"RecordsAffected"}, 1, &C::execute},
        {L"BeginTrans", 7, method, {}, 0, &C::begin},
        {L"CommitTrans", 8, method, {}, 0, &C::commit},
        {L"RollbackTrans", 9, method, {}, 0, &C::rollback},
    };
    return table;
  }

private:
  Variant open(const Invocation& call) {
    text_ = call.text(0);
    open_ = true;
    return {};
  }
  Variant close(const Invocation&) {
    say("connection closed");
    open_ = false;
    return {};
  }
  Variant state(const Invocation&) { return Variant(Value(open_ ? 1 : 0)); }
  Variant text(const Invocation&) { return Variant(Value(text_)); }
  Variant timeout(const Invocation& call) { return keep(call, "connection's CommandTimeout", timeout_); }
  Variant execute(const Invocation& call) {
    say("Execute " + call.text(0));
    call.setText(1, "3");
    return Variant(adopt<IDispatch>(new FakeRecordset).get());
  }
  Variant begin(const Invocation&) { return said("BeginTrans", Value(1)); }
  Variant commit(const Invocation&) { return said("CommitTrans", Value()); }
  Variant rollback(const Invocation&) { return said("RollbackTrans", Value()); }
  static Variant said(const std::string& call, const Value& answer) {
    say(call);
    return Variant(answer);
  }

  bool open_ = false;
  std::string text_;
  Value timeout_{30};
};

class FakeParameters final : public TableObject<FakeParameters> {
public:
  static const MemberTable<FakeParameters>& members() {
    static const MemberTable<FakeParameters> table = {{L"Append", 1, method, {L"Object"}, 1, &FakeParameters::append}};
    return table;
  }

private:
  Variant append(const Invocation& call) {
    const Automation parameter(call.object(0));
    say("Append type " + parameter.get(L"Type").displayText() + " direction " +
        parameter.get(L"Direction").displayText() + " size " + parameter.get(L"Size").displayText() + " value " +
        parameter.get(L"Value").displayText());
    return {};
  }
};

class FakeParameter final : public TableObject<FakeParameter> {
public:
  explicit FakeParameter(const Invocation& call)
      : type_(call.value(1)), direction_(call.value(2)), size_(call.value(3)), value_(call.value(4)) {}
  static const MemberTable<FakeParameter>& members() {
    using P = FakeParameter;
    static const MemberTable<P> table = {{L"Type", 1, propertyGet, {}, 0, &P::type},
                                         {L"Direction", 2, propertyGet, {}, 0, &P::direction},
                                         {L"Size", 3, propertyGet, {}, 0, &P::size},
                                         {L"Value", 4, propertyGet, {}, 0, &P::value}};
    return table;
  }

private:
  Variant type(const Invocation&) { return Variant(type_); }
  Variant direction(const Invocation&) { return Variant(direction_); }
  Variant size(const Invocation&) { return Variant(size_); }
  Variant value(const Invocation&) { return Variant(value_); }
  Value type_, direction_, size_, value_;
};

class FakeCommand final : public TableObject<FakeCommand> {
public:
  static const MemberTable<FakeCommand>& members() {
    using C = FakeCommand;
    static const MemberTable<C> table = {
        {L"ActiveConnection", 1, property, {}, 0, &C::connection},
        {L"CommandText", 2, property, {}, 0, &C::text},
        {L"CommandType", 3, property, {}, 0, &C::type},
        {L"CommandTimeout", 4, property, {}, 0, &C::timeout},
        {L"Parameters", 5, propertyGet, {}, 0, &C::parameters},
        {L"CreateParameter", 6, method, {L"Name", L"Type", L"Direction", L"Size", L"Value"}, 5, &C::createParameter},
        {L"Execute", 7, method, {}, 0, &C::execute},
    };
    return table;
  }

private:
  Variant connection(const Invocation& call) {
    say("ActiveConnection " + Automation(objectOf(call.newValue())).get(L"ConnectionString").asText());
    return {};
  }
  Variant text(const Invocation& call) { return keep(call, "CommandText", text_); }
  Variant type(const Invocation& call) { return keep(call, "CommandType", type_); }
  Variant timeout(const Invocation& call) { return keep(call, "CommandTimeout", timeout_); }
  Variant parameters(const Invocation&) { return Variant(adopt<IDispatch>(new FakeParameters).get()); }
  Variant createParameter(const Invocation& call) { return Variant(adopt<IDispatch>(new FakeParameter(call)).get()); }
  Variant execute(const Invocation&) {
    say("Execute the command");
    return Variant(adopt<IDispatch>(new FakeRecordset).get());
  }
  Value text_, type_, timeout_;
};

class DatabaseClientTest : public testing::Test {
protected:
  void SetUp() override {
    calls.clear();
    answersOfBatch = 1;
    failureBehindFirstAnswer = 0;
    connection_ = clientConnection();
    connection_->ConnectionOpen("Provider=test;");
  }

  const OfferedClass<FakeConnection> connections_{connectionId, L"ADODB.Connection"};
  const OfferedClass<FakeCommand> commands_{commandId, L"ADODB.Command"};
  const OfferedClass<FakeRecordset> recordsets_{recordsetId, L"ADODB.Recordset"};
  std::shared_ptr<platform::Connection> connection_;
};

TEST_F(DatabaseClientTest, AConnectionIsOpenUntilItIsClosedAndClosingTwiceIsNothing) {
  EXPECT_EQ(connection_->ConnectionText(), "Provider=test;");
  EXPECT_EQ(connection_->RawConnection().State(), 1);
  connection_->ConnectionClose();
  connection_->ConnectionClose();
  EXPECT_EQ(connection_->RawConnection().State(), 0);
  EXPECT_THAT(calls, ElementsAre("connection closed"));
}

TEST_F(DatabaseClientTest, TransactionsAreTheClients) {
  connection_->BeginTrans();
  connection_->CommitTrans();
  connection_->BeginTrans();
  connection_->RollbackTrans();
  EXPECT_THAT(calls, ElementsAre("BeginTrans", "CommitTrans", "BeginTrans", "RollbackTrans"));
}

TEST_F(DatabaseClientTest, ServerAndClientCursorsAreOpenedForWriting) {
  auto rows = connection_->OpenRecordset("select * from gl_accsum", 2, CursorLocation::server);
  rows->Close();
  rows = connection_->OpenRecordset("select * from code", 2, CursorLocation::client);
  rows->Close();
  EXPECT_THAT(calls,
              ElementsAre("CursorLocation = 2",
                          "Open select * from gl_accsum connection Provider=test; cursor 0 lock 3 options 1", "Close",
                          "CursorLocation = 3",
                          "Open select * from code connection Provider=test; cursor 3 lock 3 options 1", "Close"));
}

TEST_F(DatabaseClientTest, FieldsShowTheCurrentRowAndTakeANewOne) {
  const auto rows = connection_->OpenRecordset("select", 2);
  EXPECT_EQ(rows->FieldCount(), 2u);
  EXPECT_EQ(rows->FieldName(1), "mb");
  EXPECT_EQ(rows->Field("CCODE"), Value("ccode1"));
  rows->MoveNext();
  EXPECT_EQ(rows->Field(std::size_t{0}), Value("ccode2"));
  EXPECT_FALSE(rows->Eof());
  rows->MoveNext();
  EXPECT_TRUE(rows->Eof());
  calls.clear();
  rows->AddNew();
  rows->SetField("MB", Value(platform::Money::parse("12.5")));
  rows->Update();
  EXPECT_THAT(calls, ElementsAre("AddNew", "mb := 12.5", "Update"));
}

TEST_F(DatabaseClientTest, ACommandHasItsTextsAndTimeOuts) {
  const auto row = connection_->RawConnection().OpenCommand("select * from code where iyear=? and ccode=? ",
                                                            {{"2005", 8}, {"银行", 60}}, 600);
  EXPECT_EQ(row->Field("ccode"), Value("ccode1"));
  EXPECT_THAT(calls, ElementsAre("connection's CommandTimeout = 600", "ActiveConnection Provider=test;",
                                 "CommandText = select * from code where iyear=? and ccode=? ", "CommandType = 1",
                                 "CommandTimeout = 600", "Append type 202 direction 1 size 8 value 2005",
                                 "Append type 202 direction 1 size 60 value 银行", "Execute the command"));
}

TEST_F(DatabaseClientTest, ABatchIsWalkedToItsEnd) {
  answersOfBatch = 3;
  EXPECT_EQ(connection_->ExecuteSql("update a update b update c"), 3);
  EXPECT_THAT(calls, ElementsAre("Execute update a update b update c", "NextRecordset", "NextRecordset"));
}

TEST_F(DatabaseClientTest, AFailureBehindTheFirstAnswerIsTheBatchs) {
  failureBehindFirstAnswer = RunTimeError::serverError;
  try {
    connection_->ExecuteSql("update a update b");
    FAIL();
  } catch (const RunTimeError& e) {
    EXPECT_EQ(e.description(), "behind the first answer");
  }
}

TEST_F(DatabaseClientTest, AProviderThatKnowsOneAnswerOnlyIsTakenAtItsWord) {
  failureBehindFirstAnswer = 3251;  // the client: not offered by the provider
  EXPECT_EQ(connection_->ExecuteSql("update a"), 3);
}

// The client's connection where it is not installed.
TEST(NoDatabaseClientTest, IsAComponentThatCannotBeCreated) {
  try {
    createByProgramId("ADODB.NoSuchClass");
    FAIL();
  } catch (const RunTimeError& e) {
    EXPECT_EQ(e.number(), RunTimeError::cannotCreate);
    EXPECT_THAT(e.description(), testing::HasSubstr("ADODB.NoSuchClass"));
  }
}

}  // namespace
}  // namespace com::test
