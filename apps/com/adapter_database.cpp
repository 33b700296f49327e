// Connections and result sets of the host, and those of the database client itself.

#include <algorithm>
#include <utility>
#include <vector>

#include "adapter_support.h"
#include "adapters.h"
#include "exposed.h"

namespace com {
namespace {

using platform::Connection;
using platform::CursorLocation;
using platform::Recordset;
using platform::RunTimeError;
using platform::TextParameter;
using platform::Value;

// Constants of the database client.
constexpr int stateOpen = 1;
constexpr int useServer = 2, useClient = 3;
constexpr int openForwardOnly = 0, openStatic = 3;
constexpr int lockOptimistic = 3;
constexpr int commandIsText = 1;
constexpr int notOffered = 3251;  // the provider does not have an operation
constexpr int parameterIsText = 202, parameterGoesIn = 1;

class AutomationRecordset final : public Recordset {
public:
  explicit AutomationRecordset(const Pointer<IDispatch>& object) : rows_(object) { lookAtFields(); }
  ~AutomationRecordset() override {
    try {
      if (open_) rows_.call(L"Close");
    } catch (const RunTimeError&) {  // whoever drops a result set has nobody to tell
    }
  }

  bool IsOpen() const override { return open_; }
  bool Bof() const override { return boolOf(rows_.call(L"BOF")); }
  bool Eof() const override { return boolOf(rows_.call(L"EOF")); }

  std::size_t FieldCount() const override {
    needsCollection();
    return names_.size();
  }
  const std::string& FieldName(std::size_t index) const override {
    needsCollection();
    if (index >= names_.size()) throw noSuchField(std::to_string(index));
    return names_[index];
  }
  Value Field(std::string_view name) const override {
    if (!collection_) return valueOf(rows_.call(L"Fields", {Argument(Value(name))}).get());
    return Field(positionOf(name));
  }
  Value Field(std::size_t index) const override {
    if (!collection_) return valueOf(rows_.call(L"Fields", {Argument(number(index))}).get());
    return field(index).get(L"Value");
  }

  void MoveFirst() override { rows_.call(L"MoveFirst"); }
  void MoveNext() override { rows_.call(L"MoveNext"); }
  void MovePrevious() override { rows_.call(L"MovePrevious"); }

  void AddNew() override { rows_.call(L"AddNew"); }
  void SetField(std::string_view name, const Value& value) override {
    if (collection_) return SetField(positionOf(name), value);
    Automation(objectOf(rows_.call(L"Fields", {Argument(Value(name))}).get())).put(L"Value", value);
  }
  void SetField(std::size_t index, const Value& value) override {
    if (collection_) return field(index).put(L"Value", value);
    Automation(objectOf(rows_.call(L"Fields", {Argument(number(index))}).get())).put(L"Value", value);
  }
  void Update() override { rows_.call(L"Update"); }
  void Close() override {
    if (!std::exchange(open_, false)) return;
    rows_.call(L"Close");
  }

private:
  static Value number(std::size_t n) { return Value(static_cast<std::int64_t>(n)); }
  static RunTimeError noSuchField(const std::string& name) {
    return {RunTimeError::noSuchField, "The result set has no field " + name};
  }

  // The database client's fields live as long as the result set and always show the current row: each is fetched once.
  void lookAtFields() {
    try {
      const Pointer<IDispatch> fields = objectOf(rows_.call(L"Fields").get());
      if (!fields) return;
      const Automation collection(fields);
      if (!collection.has(L"Count") || !collection.has(L"Item")) return;
      const std::int64_t count = collection.get(L"Count").asInteger();
      for (std::int64_t i = 0; i < count; ++i) {
        fields_.emplace_back(objectOf(collection.call(L"Item", {Argument(Value(i))}).get()));
        names_.push_back(fields_.back().get(L"Name").displayText());
      }
      collection_ = true;
    } catch (const RunTimeError&) {  // Fields wants an argument: it is asked for each cell
      fields_.clear();
      names_.clear();
    }
  }
  void needsCollection() const {
    if (!collection_) throw RunTimeError(RunTimeError::invalidCall, "The result set does not tell its fields");
  }
  const Automation& field(std::size_t index) const {
    if (index >= fields_.size()) throw noSuchField(std::to_string(index));
    return fields_[index];
  }
  std::size_t positionOf(std::string_view name) const {
    const auto at = std::find_if(names_.begin(), names_.end(),
                                 [&](const std::string& n) { return platform::equalsIgnoreCase(n, name); });
    if (at == names_.end()) throw noSuchField(std::string(name));
    return static_cast<std::size_t>(at - names_.begin());
  }

  Automation rows_;
  bool collection_ = false, open_ = true;
  std::vector<Automation> fields_;
  std::vector<std::string> names_;
};

class AutomationRawConnection final : public platform::RawConnection {
public:
  explicit AutomationRawConnection(const Pointer<IDispatch>& object) : connection_(object) {}

  int State() const override { return static_cast<int>(integerOf(connection_.call(L"State"))); }
  std::unique_ptr<Recordset> Open(const std::string& sql) override {
    return recordsetOf(objectOf(connection_.call(L"Execute", {Argument(Value(sql))}).get()));
  }
  std::unique_ptr<Recordset> OpenCommand(const std::string& sql, const std::vector<TextParameter>& parameters,
                                         int timeoutSeconds) override {
    // ConnectionTimeout cannot be set on an open connection; CommandTimeout, for all its commands, can.
    if (connection_.has(L"CommandTimeout")) connection_.put(L"CommandTimeout", Value(timeoutSeconds));
    const Automation command(createByProgramId("ADODB.Command"));
    command.putObject(L"ActiveConnection", connection_.object());
    command.put(L"CommandText", Value(sql));
    command.put(L"CommandType", Value(commandIsText));
    command.put(L"CommandTimeout", Value(timeoutSeconds));
    const Automation list(objectOf(command.call(L"Parameters").get()));
    for (const TextParameter& parameter : parameters) {
      const Variant made = command.call(
          L"CreateParameter", {Argument(Value("")), Argument(Value(parameterIsText)), Argument(Value(parameterGoesIn)),
                               Argument(Value(parameter.size)), Argument(Value(parameter.text))});
      list.call(L"Append", {Argument(made)});
    }
    return recordsetOf(objectOf(command.call(L"Execute").get()));
  }

private:
  Automation connection_;
};

// The client's connection of one of our own.
class NativeRawConnection final : public platform::RawConnection {
public:
  explicit NativeRawConnection(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}

  int State() const override { return raw().State(); }
  std::unique_ptr<Recordset> Open(const std::string& sql) override { return raw().Open(sql); }
  std::unique_ptr<Recordset> OpenCommand(const std::string& sql, const std::vector<TextParameter>& parameters,
                                         int timeoutSeconds) override {
    return raw().OpenCommand(sql, parameters, timeoutSeconds);
  }

private:
  platform::RawConnection& raw() const { return connection_->RawConnection(); }

  std::shared_ptr<Connection> connection_;
};

// The wrapper of the database client that the host's package brings.
class AutomationConnection final : public Connection, public Adapted {
public:
  explicit AutomationConnection(const Pointer<IDispatch>& object) : connection_(object) {}
  IDispatch* object() const override { return connection_.object(); }

  void ConnectionOpen(const std::string& text) override {
    connection_.call(L"ConnectionOpen", {Argument(Value(text))});
  }
  void ConnectionClose() override { connection_.call(L"ConnectionClose"); }
  std::string ConnectionText() const override { return connection_.get(L"ConnectionText").displayText(); }
  platform::RawConnection& RawConnection() override {
    const Pointer<IDispatch> object = objectOf(connection_.call(L"RawConnection").get());
    if (!object) throw RunTimeError(RunTimeError::objectNotSet, "The connection has no connection of the client");
    if (!raw_ || !sameObject(rawObject_.get(), object.get())) {
      raw_ = rawConnectionOf(object);
      rawObject_ = object;
    }
    return *raw_;
  }
  void BeginTrans() override { connection_.call(L"BeginTrans"); }
  void CommitTrans() override { connection_.call(L"CommitTrans"); }
  void RollbackTrans() override { connection_.call(L"RollbackTrans"); }
  std::int64_t ExecuteSql(const std::string& sql) override {
    const Variant answer = connection_.call(L"ExecuteSql", {Argument(Value(sql))});
    if (isObject(answer.get())) return -1;
    const Value changed = valueOf(answer.get());
    return changed.kind() == Value::Kind::integer ? changed.asInteger() : -1;
  }
  std::unique_ptr<Recordset> OpenRecordset(const std::string& sql, int options, CursorLocation) override {
    const Variant rows = connection_.call(L"OpenRecordset", {Argument(Value(sql)), Argument(Value(options))});
    return recordsetOf(objectOf(rows.get()));
  }

private:
  Automation connection_;
  Pointer<IDispatch> rawObject_;
  std::unique_ptr<platform::RawConnection> raw_;
};

// What that wrapper is for others: the same operations over the database client itself.
class ClientConnection final : public Connection {
public:
  explicit ClientConnection(const Pointer<IDispatch>& object) : client_(object), raw_(object) {}

  void ConnectionOpen(const std::string& text) override { client_.call(L"Open", {Argument(Value(text))}); }
  void ConnectionClose() override {
    if (raw_.State() == stateOpen) client_.call(L"Close");
  }
  std::string ConnectionText() const override { return client_.get(L"ConnectionString").displayText(); }
  platform::RawConnection& RawConnection() override { return raw_; }
  void BeginTrans() override { client_.call(L"BeginTrans"); }
  void CommitTrans() override { client_.call(L"CommitTrans"); }
  void RollbackTrans() override { client_.call(L"RollbackTrans"); }
  // The client stops behind each answer of a batch; a failure further on shows when it is walked to.
  std::int64_t ExecuteSql(const std::string& sql) override {
    Variant changed{Value(-1)};
    Pointer<IDispatch> answer =
        objectOf(client_.call(L"Execute", {Argument(Value(sql)), Argument::reference(changed)}).get());
    try {
      while (answer) answer = objectOf(Automation(answer).call(L"NextRecordset").get());
    } catch (const RunTimeError& e) {
      if (e.number() != notOffered) throw;  // a provider that knows one answer only
    }
    return integerOf(changed);
  }
  std::unique_ptr<Recordset> OpenRecordset(const std::string& sql, int, CursorLocation location) override {
    const Pointer<IDispatch> object = createByProgramId("ADODB.Recordset");
    const Automation rows(object);
    const bool server = location == CursorLocation::server;
    rows.put(L"CursorLocation", Value(server ? useServer : useClient));
    rows.call(L"Open", {Argument(Value(sql)), Argument::object(client_.object()),
                        Argument(Value(server ? openForwardOnly : openStatic)), Argument(Value(lockOptimistic)),
                        Argument(Value(commandIsText))});
    return recordsetOf(object);
  }

private:
  Automation client_;
  AutomationRawConnection raw_;
};

}  // namespace

std::unique_ptr<Recordset> recordsetOf(const Pointer<IDispatch>& object) {
  if (!object) throw RunTimeError(RunTimeError::objectClosed, "The batch gave no result set");
  return std::make_unique<AutomationRecordset>(object);
}

std::unique_ptr<platform::RawConnection> rawConnectionOf(const Pointer<IDispatch>& object) {
  if (Native native = nativeOf(object.get()); native.connection)
    return std::make_unique<NativeRawConnection>(std::move(native.connection));
  return std::make_unique<AutomationRawConnection>(object);
}

std::shared_ptr<Connection> connectionOf(const Pointer<IDispatch>& object) {
  static LastAdapter<Connection, AutomationConnection> last;
  if (!object) return nullptr;
  if (const Native native = nativeOf(object.get()); native.connection) return native.connection;
  return last.of(object);
}

std::shared_ptr<Connection> clientConnection() {
  return std::make_shared<ClientConnection>(createByProgramId("ADODB.Connection"));
}

}  // namespace com
