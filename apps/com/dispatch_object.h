#pragma once
// DispatchObject: an object of ours that others call by name.
//
//   class Field final : public TableObject<Field> {
//     static const MemberTable<Field>& members() {
//       static const MemberTable<Field> table = {{L"Value", DISPID_VALUE, property, {}, 0, &Field::value}};
//       return table;
//     }
//     Variant value(const Invocation& call);
//   };
//
// A derived class lists its members in one table: name, id, kind, parameters, and the procedure that answers it. Names
// are found without regard to case. Failures leave as COM errors with description and source. The object belongs to the
// thread that made it and lives by its reference count.

#include <oaidl.h>
#include <windows.h>

#include <atomic>
#include <functional>
#include <initializer_list>
#include <vector>

#include "failure.h"
#include "invocation.h"

namespace com {

// Objects of this component that are alive; the DLL may be unloaded when there are none.
extern std::atomic<long> livingObjects;

// IDispatch over a list of members, for whoever implements it. answer gives the member at a place of the list; what it
// throws leaves as a COM error.
HRESULT idsOfNames(const std::vector<MemberShape>& members, LPOLESTR* names, UINT count, DISPID* ids);
HRESULT invokeMember(const std::vector<MemberShape>& members, DISPID id, REFIID interfaceId, WORD flags,
                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* failure, UINT* wrongArgument,
                     const std::function<Variant(std::size_t member, const Invocation& call)>& answer);

class DispatchObject : public IDispatch, public ISupportErrorInfo {
public:
  DispatchObject(const DispatchObject&) = delete;
  DispatchObject& operator=(const DispatchObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** information) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                   EXCEPINFO* failure, UINT* wrongArgument) override;
  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID) override { return S_OK; }

protected:
  DispatchObject() { ++livingObjects; }
  virtual ~DispatchObject() { --livingObjects; }

  virtual const std::vector<MemberShape>& shapes() const = 0;
  // The member at this place of the table. result is a VT_EMPTY when there is none.
  virtual Variant answer(std::size_t member, const Invocation& call) = 0;
  // A further interface of the object, counted; null when it has none of this id.
  virtual void* interfaceOf(REFIID) { return nullptr; }

private:
  std::atomic<ULONG> references_{1};
};

// The table of a class: shapes beside the procedures that answer.
template <class T>
class MemberTable {
public:
  struct Member {
    const wchar_t* name;
    DISPID id;
    WORD kinds;
    std::vector<const wchar_t*> parameters;
    std::size_t required;
    Variant (T::*answer)(const Invocation&);
  };
  MemberTable(std::initializer_list<Member> members) {
    for (const Member& m : members) {
      shapes.push_back({m.name, m.id, m.kinds, m.parameters, m.required});
      answers.push_back(m.answer);
    }
  }
  std::vector<MemberShape> shapes;
  std::vector<Variant (T::*)(const Invocation&)> answers;
};

// A DispatchObject whose members stand in T::members().
template <class T>
class TableObject : public DispatchObject {
protected:
  const std::vector<MemberShape>& shapes() const override { return T::members().shapes; }
  Variant answer(std::size_t member, const Invocation& call) override {
    return (static_cast<T*>(this)->*T::members().answers[member])(call);
  }
};

inline constexpr WORD method = DISPATCH_METHOD, propertyGet = DISPATCH_PROPERTYGET,
                      propertyPut = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF,
                      property = propertyGet | propertyPut;

}  // namespace com
