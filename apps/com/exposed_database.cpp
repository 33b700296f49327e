// Connections and result sets of ours for hosts and components.

#include <utility>

#include "adapters.h"
#include "dispatch_object.h"
#include "exposed.h"
#include "native.h"

namespace com {
namespace {

using platform::Connection;
using platform::CursorLocation;
using platform::Recordset;
using platform::RunTimeError;
using platform::TextParameter;
using platform::Value;

using Rows = std::shared_ptr<Recordset>;

// A cell of the current row, whatever row that is by then.
class Field final : public TableObject<Field> {
public:
  Field(Rows rows, std::size_t index) : rows_(std::move(rows)), index_(index) {}
  static const MemberTable<Field>& members() {
    static const MemberTable<Field> table = {
        {L"Value", DISPID_VALUE, property, {}, 0, &Field::value},
        {L"Name", 1, propertyGet, {}, 0, &Field::name},
    };
    return table;
  }

private:
  Variant value(const Invocation& call) {
    if (!call.writes()) return Variant(rows_->Field(index_));
    rows_->SetField(index_, valueOf(call.newValue()));
    return {};
  }
  Variant name(const Invocation&) { return Variant(Value(rows_->FieldName(index_))); }

  Rows rows_;
  std::size_t index_;
};

// By name or position, as the argument is.
Variant fieldOf(const Rows& rows, const Invocation& call) {
  const Value which = call.value(0);
  std::size_t index = rows->FieldCount();
  if (which.kind() == Value::Kind::text) {
    for (std::size_t i = 0; i < rows->FieldCount() && index == rows->FieldCount(); ++i)
      if (platform::equalsIgnoreCase(rows->FieldName(i), which.textOrEmpty())) index = i;
  } else if (const std::int64_t position = which.asInteger(); position >= 0) {
    index = static_cast<std::size_t>(position);
  }
  if (index >= rows->FieldCount())
    throw RunTimeError(RunTimeError::noSuchField, "The result set has no field " + which.displayText());
  return Variant(adopt<IDispatch>(new Field(rows, index)).get());
}

class Fields final : public TableObject<Fields> {
public:
  explicit Fields(Rows rows) : rows_(std::move(rows)) {}
  static const MemberTable<Fields>& members() {
    static const MemberTable<Fields> table = {
        {L"Item", DISPID_VALUE, method | propertyGet, {L"Index"}, 1, &Fields::item},
        {L"Count", 1, propertyGet, {}, 0, &Fields::count},
    };
    return table;
  }

private:
  Variant item(const Invocation& call) { return fieldOf(rows_, call); }
  Variant count(const Invocation&) { return Variant(Value(static_cast<std::int64_t>(rows_->FieldCount()))); }

  Rows rows_;
};

class ExposedRecordset final : public TableObject<ExposedRecordset> {
public:
  explicit ExposedRecordset(Rows rows) : rows_(std::move(rows)) {}
  static const MemberTable<ExposedRecordset>& members() {
    using R = ExposedRecordset;
    static const MemberTable<R> table = {
        {L"Fields", DISPID_VALUE, method | propertyGet, {L"Index"}, 0, &R::fields},
        {L"EOF", 1, propertyGet, {}, 0, &R::eof},
        {L"BOF", 2, propertyGet, {}, 0, &R::bof},
        {L"State", 3, propertyGet, {}, 0, &R::state},
        {L"MoveFirst", 4, method, {}, 0, &R::moveFirst},
        {L"MoveNext", 5, method, {}, 0, &R::moveNext},
        {L"MovePrevious", 6, method, {}, 0, &R::movePrevious},
        {L"AddNew", 7, method, {}, 0, &R::addNew},
        {L"Update", 8, method, {}, 0, &R::update},
        {L"Close", 9, method, {}, 0, &R::close},
    };
    return table;
  }

private:
  Variant fields(const Invocation& call) {
    if (call.has(0)) return fieldOf(rows_, call);
    return Variant(adopt<IDispatch>(new Fields(rows_)).get());
  }
  Variant eof(const Invocation&) { return Variant(Value(rows_->Eof())); }
  Variant bof(const Invocation&) { return Variant(Value(rows_->Bof())); }
  Variant state(const Invocation&) { return Variant(Value(rows_->IsOpen() ? 1 : 0)); }
  Variant moveFirst(const Invocation&) { return done(&Recordset::MoveFirst); }
  Variant moveNext(const Invocation&) { return done(&Recordset::MoveNext); }
  Variant movePrevious(const Invocation&) { return done(&Recordset::MovePrevious); }
  Variant addNew(const Invocation&) { return done(&Recordset::AddNew); }
  Variant update(const Invocation&) { return done(&Recordset::Update); }
  Variant close(const Invocation&) { return done(&Recordset::Close); }

  Variant done(void (Recordset::*operation)()) {
    (rows_.get()->*operation)();
    return {};
  }

  Rows rows_;
};

// The database client's connection behind one of ours. It lives with it, and is itself again when it comes back.
class ExposedRawConnection final : public TableObject<ExposedRawConnection> {
public:
  explicit ExposedRawConnection(std::shared_ptr<Connection> connection)
      : native_{std::move(connection), nullptr, nullptr} {}
  static const MemberTable<ExposedRawConnection>& members() {
    using R = ExposedRawConnection;
    static const MemberTable<R> table = {
        {L"State", 1, propertyGet, {}, 0, &R::state},
        {L"Execute", 2, method, {L"CommandText"}, 1, &R::execute},
    };
    return table;
  }

private:
  void* interfaceOf(REFIID id) override { return IsEqualIID(id, nativeInterface) ? &native_ : nullptr; }
  platform::RawConnection& raw() const { return native_.connection->RawConnection(); }

  Variant state(const Invocation&) { return Variant(Value(raw().State())); }
  Variant execute(const Invocation& call) { return Variant(expose(raw().Open(call.text(0))).get()); }

  Native native_;
};

class ExposedConnection final : public TableObject<ExposedConnection> {
public:
  explicit ExposedConnection(std::shared_ptr<Connection> connection)
      : native_{std::move(connection), nullptr, nullptr} {}
  static const MemberTable<ExposedConnection>& members() {
    using C = ExposedConnection;
    static const MemberTable<C> table = {
        {L"ConnectionOpen", 1, method, {L"text"}, 1, &C::connectionOpen},
        {L"ConnectionClose", 2, method, {}, 0, &C::connectionClose},
        {L"ConnectionText", 3, propertyGet, {}, 0, &C::connectionText},
        {L"RawConnection", 4, propertyGet, {}, 0, &C::rawConnection},
        {L"BeginTrans", 5, method, {}, 0, &C::beginTrans},
        {L"CommitTrans", 6, method, {}, 0, &C::commitTrans},
        {L"RollbackTrans", 7, method, {}, 0, &C::rollbackTrans},
        {L"ExecuteSql", 8, method, {L"sql"}, 1, &C::executeSql},
        {L"OpenRecordset", 9, method, {L"sql", L"options"}, 1, &C::openRecordset},
    };
    return table;
  }

private:
  void* interfaceOf(REFIID id) override { return IsEqualIID(id, nativeInterface) ? &native_ : nullptr; }
  Connection& connection() const { return *native_.connection; }

  Variant connectionOpen(const Invocation& call) {
    connection().ConnectionOpen(call.text(0));
    return {};
  }
  Variant connectionClose(const Invocation&) {
    connection().ConnectionClose();
    return {};
  }
  Variant connectionText(const Invocation&) { return Variant(Value(connection().ConnectionText())); }
  Variant rawConnection(const Invocation&) {
    return Variant(adopt<IDispatch>(new ExposedRawConnection(native_.connection)).get());
  }
  Variant beginTrans(const Invocation&) {
    connection().BeginTrans();
    return {};
  }
  Variant commitTrans(const Invocation&) {
    connection().CommitTrans();
    return {};
  }
  Variant rollbackTrans(const Invocation&) {
    connection().RollbackTrans();
    return {};
  }
  Variant executeSql(const Invocation& call) { return Variant(Value(connection().ExecuteSql(call.text(0)))); }
  Variant openRecordset(const Invocation& call) {
    constexpr int usualOptions = 2;
    return Variant(
        expose(connection().OpenRecordset(call.text(0), call.has(1) ? call.integer(1) : usualOptions)).get());
  }

  Native native_;
};

}  // namespace

Pointer<IDispatch> expose(std::shared_ptr<Connection> connection) {
  return adopt<IDispatch>(new ExposedConnection(std::move(connection)));
}

Pointer<IDispatch> expose(std::unique_ptr<Recordset> rows) {
  return adopt<IDispatch>(new ExposedRecordset(std::move(rows)));
}

}  // namespace com
