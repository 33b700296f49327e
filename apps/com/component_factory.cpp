#include "component_factory.h"

#include <utility>

#include "adapter_support.h"
#include "adapters.h"
#include "core/run_state.h"
#include "failure.h"
#include "host/clearing_component.h"
#include "host/journal.h"
#include "windows/wide_text.h"

namespace com {
namespace {

using platform::Component;
using platform::RunTimeError;
using platform::Value;

constexpr const char* clearing = "OrvoGLWLClear.clsInterface";

// The objects that the system passes are its connections and its services; they go as automation objects by reference,
// and what comes back takes their place.
class AutomationComponent final : public Component {
public:
  explicit AutomationComponent(const Pointer<IDispatch>& object) : component_(object) {}

  Value Call(const std::string& operation, std::vector<Argument>& arguments) override {
    std::vector<Variant> variables;
    variables.reserve(arguments.size());
    for (const Argument& argument : arguments) variables.push_back(variableOf(argument));
    const std::vector<Kind> kinds = kindsOf(arguments);
    Arguments passed;
    for (Variant& variable : variables) passed.push_back(com::Argument::reference(variable));
    const Variant answer = component_.call(windows::wide(operation).c_str(), passed);
    for (std::size_t i = 0; i < arguments.size(); ++i) takeBack(arguments[i], kinds[i], variables[i]);
    return read(answer);
  }

private:
  enum class Kind { value, connection, services };

  // What no value stands for, an object or an array, is Null to the system.
  static Value read(const Variant& variable) {
    if (isObject(variable.get())) return {};
    try {
      return valueOf(variable.get());
    } catch (const RunTimeError&) {
      return {};
    }
  }
  // The system hands out its own objects only: they are known by where they are.
  static Kind kindOf(const Argument& argument) {
    if (!argument.object) return Kind::value;
    if (argument.object.get() == gljz::run.m_pubCls.get()) return Kind::services;
    if (argument.object.get() == gljz::run.m_conn.get()) return Kind::connection;
    throw RunTimeError(RunTimeError::invalidCall, "An object that is no part of the run cannot be passed on");
  }
  static std::vector<Kind> kindsOf(const std::vector<Argument>& arguments) {
    std::vector<Kind> kinds;
    for (const Argument& argument : arguments) kinds.push_back(kindOf(argument));
    return kinds;
  }
  static Variant variableOf(const Argument& argument) {
    switch (kindOf(argument)) {
      case Kind::connection:
        return Variant(automationOf(gljz::run.m_conn).get());
      case Kind::services:
        return Variant(automationOf(gljz::run.m_pubCls).get());
      default:
        return Variant(argument.value);
    }
  }
  static void takeBack(Argument& argument, Kind kind, const Variant& variable) {
    if (kind == Kind::connection)
      argument.object = connectionOf(objectOf(variable.get()));
    else if (kind == Kind::services)
      argument.object = servicesOf(objectOf(variable.get()));
    else
      argument.value = read(variable);
  }

  Automation component_;
};

class Components final : public platform::ComponentFactory {
public:
  std::shared_ptr<Component> Create(const std::string& programId) override {
    try {
      return std::make_shared<AutomationComponent>(createByProgramId(programId));
    } catch (const RunTimeError& e) {
      const bool own = dynamic_cast<Adapted*>(gljz::run.m_pubCls.get()) == nullptr;
      if (e.number() != RunTimeError::cannotCreate || !own || !platform::equalsIgnoreCase(programId, clearing)) throw;
      return host::makeClearingComponent(std::make_shared<host::Journal>());
    }
  }
};

}  // namespace

Pointer<IDispatch> createByProgramId(const std::string& programId) {
  CLSID id{};
  Pointer<IDispatch> object;
  HRESULT code = CLSIDFromProgID(windows::wide(programId).c_str(), &id);
  if (SUCCEEDED(code))
    code = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                            reinterpret_cast<void**>(object.receive()));
  if (FAILED(code)) throw RunTimeError(RunTimeError::cannotCreate, "Component cannot be created: " + programId);
  return object;
}

std::shared_ptr<platform::ComponentFactory> makeComponentFactory() {
  return std::make_shared<Components>();
}

}  // namespace com
