#include <gtest/gtest.h>

#include <array>
#include <string>

#include "component_entries.h"
#include "component_host.h"
#include "windows/wide_text.h"

namespace com::test {
namespace {

std::wstring classesValue(const std::wstring& key, const wchar_t* name = nullptr) {
  std::array<wchar_t, 512> text{};
  DWORD size = sizeof text;
  const LSTATUS status = RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), name, RRF_RT_REG_SZ, nullptr, text.data(), &size);
  return status == ERROR_SUCCESS ? text.data() : L"";
}

bool classesKeyExists(const std::wstring& key) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return false;
  RegCloseKey(opened);
  return true;
}

bool typeLibraryIsRegistered() {
  Pointer<ITypeLib> library;
  return SUCCEEDED(LoadRegTypeLib(LIBID_TqGLJZ, 1, 0, LOCALE_NEUTRAL, library.receive()));
}

std::wstring textOfId(REFGUID id) {
  std::array<wchar_t, 40> text{};
  StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  return text.data();
}

// The file of the DLL as the system names it.
std::wstring moduleFile(const ComponentEntries& entries) {
  std::array<wchar_t, 1024> name{};
  GetModuleFileNameW(entries.module(), name.data(), static_cast<DWORD>(name.size()));
  return name.data();
}

struct RegisteredClass {
  const wchar_t* programId;
  const CLSID& id;
};
const std::array<RegisteredClass, 2> registeredClasses = {
    {{L"TqGLJZ.clsGLJZ", CLSID_clsGLJZ}, {L"TqGLJZ.ReferenceHost", CLSID_ReferenceHost}}};

// All that the registry has to hold, and nothing of it when the component is taken back.
std::vector<std::wstring> registeredKeys() {
  const std::wstring library = L"TypeLib\\" + textOfId(LIBID_TqGLJZ);
  std::vector<std::wstring> keys = {library, library + L"\\1.0", library + L"\\1.0\\0\\win64",
                                    L"Interface\\" + textOfId(IID__clsGLJZ)};
  for (const RegisteredClass& c : registeredClasses) {
    keys.emplace_back(c.programId);
    keys.push_back(L"CLSID\\" + textOfId(c.id));
  }
  return keys;
}

TEST(RegistrationTest, EntersClassesProgramIdsAndTypeLibrary) {
  const ComponentEntries entries;
  const std::wstring file = moduleFile(entries), library = textOfId(LIBID_TqGLJZ);
  ASSERT_TRUE(file.ends_with(L"\\TqGLJZ.dll"));
  for (const RegisteredClass& c : registeredClasses) {
    const std::wstring id = classesValue(std::wstring(c.programId) + L"\\CLSID");
    EXPECT_EQ(id, textOfId(c.id));
    const std::wstring key = L"CLSID\\" + id;
    EXPECT_EQ(classesValue(key + L"\\ProgID"), c.programId);
    EXPECT_EQ(classesValue(key + L"\\InprocServer32"), file);
    EXPECT_EQ(classesValue(key + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
    EXPECT_EQ(classesValue(key + L"\\TypeLib"), library);
    EXPECT_EQ(classesValue(key + L"\\Version"), L"1.0");
    EXPECT_TRUE(create(c.programId));
  }
  EXPECT_TRUE(typeLibraryIsRegistered());
  // A system may write the path in its long form, with a prefix.
  EXPECT_TRUE(classesValue(L"TypeLib\\" + library + L"\\1.0\\0\\win64").ends_with(file));
  EXPECT_EQ(classesValue(L"Interface\\" + textOfId(IID__clsGLJZ) + L"\\TypeLib"), library);
  for (const std::wstring& key : registeredKeys()) EXPECT_TRUE(classesKeyExists(key)) << windows::narrow(key);
}

TEST(RegistrationTest, TakesAllOfItBack) {
  const ComponentEntries entries;
  ASSERT_EQ(entries.unregisterServer(), S_OK);
  for (const std::wstring& key : registeredKeys()) EXPECT_FALSE(classesKeyExists(key)) << windows::narrow(key);
  EXPECT_FALSE(typeLibraryIsRegistered());
  CLSID found{};
  for (const RegisteredClass& c : registeredClasses) EXPECT_TRUE(FAILED(CLSIDFromProgID(c.programId, &found)));
  EXPECT_EQ(entries.unregisterServer(), S_OK) << "what is not there need not be taken back";
  ASSERT_EQ(entries.registerServer(), S_OK);
  for (const std::wstring& key : registeredKeys()) EXPECT_TRUE(classesKeyExists(key)) << windows::narrow(key);
  EXPECT_TRUE(typeLibraryIsRegistered());
}

TEST(RegistrationTest, SaysItsVersion) {
  const std::wstring file = componentFile();
  DWORD ignored = 0;
  const DWORD size = GetFileVersionInfoSizeW(file.c_str(), &ignored);
  ASSERT_GT(size, 0u);
  std::vector<char> block(size);
  ASSERT_TRUE(GetFileVersionInfoW(file.c_str(), 0, size, block.data()));
  VS_FIXEDFILEINFO* fixed = nullptr;
  UINT length = 0;
  ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&fixed), &length));
  EXPECT_EQ(HIWORD(fixed->dwFileVersionMS), 1);
  EXPECT_EQ(fixed->dwFileType, static_cast<DWORD>(VFT_DLL));
}

TEST(RegistrationTest, CannotBeUnloadedWhileAnObjectLives) {
  const ComponentEntries entries;
  const Pointer<IDispatch> host = create(L"TqGLJZ.ReferenceHost");
  ASSERT_TRUE(host);
  EXPECT_EQ(entries.canUnloadNow(), S_FALSE);
}

// ---- the type library

struct Described {
  std::wstring name;
  INVOKEKIND kind;
  DISPID id;
  SHORT offset;
  std::vector<std::wstring> parameters;
  SHORT optional;
};

std::vector<Described> membersOf(ITypeInfo* information) {
  std::vector<Described> members;
  TYPEATTR* attributes = nullptr;
  if (FAILED(information->GetTypeAttr(&attributes))) return members;
  for (UINT i = 0; i < attributes->cFuncs; ++i) {
    FUNCDESC* function = nullptr;
    if (FAILED(information->GetFuncDesc(i, &function))) continue;
    std::array<BSTR, 16> names{};
    UINT count = 0;
    information->GetNames(function->memid, names.data(), static_cast<UINT>(names.size()), &count);
    Described d{count > 0 ? names[0] : L"", function->invkind, function->memid, function->oVft, {}, 0};
    for (SHORT p = 0; p < function->cParams; ++p)
      if ((function->lprgelemdescParam[p].paramdesc.wParamFlags & PARAMFLAG_FOPT) != 0) ++d.optional;
    for (UINT n = 0; n < count; ++n) {
      if (n > 0) d.parameters.emplace_back(names[n]);
      SysFreeString(names[n]);
    }
    members.push_back(std::move(d));
    information->ReleaseFuncDesc(function);
  }
  information->ReleaseTypeAttr(attributes);
  return members;
}

TEST(TypeLibraryTest, HasTheMembersInTheirSlots) {
  Pointer<ITypeLib> library;
  ASSERT_EQ(LoadRegTypeLib(LIBID_TqGLJZ, 1, 0, LOCALE_NEUTRAL, library.receive()), S_OK);
  Pointer<ITypeInfo> information;
  ASSERT_EQ(library->GetTypeInfoOfGuid(IID__clsGLJZ, information.receive()), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(information->GetTypeAttr(&attributes), S_OK);
  // A dual interface describes itself as what scripts see; its slots are behind it.
  const WORD flags = attributes->wTypeFlags;
  information->ReleaseTypeAttr(attributes);
  EXPECT_NE(flags & TYPEFLAG_FDUAL, 0);
  HREFTYPE reference = 0;
  Pointer<ITypeInfo> slots;
  ASSERT_EQ(information->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
  ASSERT_EQ(information->GetRefTypeInfo(reference, slots.receive()), S_OK);

  const std::vector<Described> members = membersOf(slots.get());
  struct Wanted {
    const wchar_t* name;
    INVOKEKIND kind;
  };
  const std::vector<Wanted> wanted = {{L"ZwPubCls", INVOKE_PROPERTYGET},   {L"ZwPubCls", INVOKE_PROPERTYPUTREF},
                                      {L"m_loginCls", INVOKE_PROPERTYGET}, {L"m_loginCls", INVOKE_PROPERTYPUTREF},
                                      {L"StartJz", INVOKE_FUNC},           {L"Transfer", INVOKE_FUNC},
                                      {L"TransGL", INVOKE_FUNC},           {L"getTransferMsg", INVOKE_FUNC}};
  ASSERT_EQ(members.size(), wanted.size());
  constexpr SHORT slotsOfDispatch = 7;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    EXPECT_EQ(members[i].name, wanted[i].name);
    EXPECT_EQ(members[i].kind, wanted[i].kind);
    EXPECT_EQ(members[i].offset, static_cast<SHORT>((slotsOfDispatch + i) * sizeof(void*)));
  }
  const std::vector<std::wstring> transfer = {L"cAccID", L"cLastYear", L"cCurrentYear", L"cParameterInfo",
                                              L"oLogin", L"cErrMsg",   L"oView"};
  ASSERT_GE(members[5].parameters.size(), transfer.size());
  EXPECT_TRUE(std::equal(transfer.begin(), transfer.end(), members[5].parameters.begin()));
  EXPECT_EQ(members[5].optional, 0);
  EXPECT_EQ(members[6].optional, 2) << "the two account ids";
}

TEST(TypeLibraryTest, IdsByNameAreThoseOfTheLibrary) {
  const Pointer<_clsGLJZ> gljz = newGljz();
  ASSERT_TRUE(gljz);
  Pointer<ITypeInfo> information;
  ASSERT_EQ(gljz->GetTypeInfo(0, LOCALE_NEUTRAL, information.receive()), S_OK);
  for (const Described& member : membersOf(information.get())) {
    if (member.offset < static_cast<SHORT>(7 * sizeof(void*))) continue;  // those of IDispatch itself
    std::wstring lower = member.name;
    for (wchar_t& c : lower) c = static_cast<wchar_t>(towlower(c));
    LPOLESTR name = lower.data();
    DISPID id = DISPID_UNKNOWN;
    EXPECT_EQ(gljz->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_NEUTRAL, &id), S_OK) << "without regard to case";
    EXPECT_EQ(id, member.id);
  }
  wchar_t wrong[] = L"Transferred";
  LPOLESTR name = wrong;
  DISPID id = 0;
  EXPECT_EQ(gljz->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_NEUTRAL, &id), DISP_E_UNKNOWNNAME);
}

}  // namespace
}  // namespace com::test
