#pragma once
// What an automation object of this component stands for, so that it is itself again when a host hands it back: a call
// then goes straight to it instead of by name.

#include <windows.h>

#include <memory>

#include "platform/services.h"

namespace com {

// One of these is set.
struct Native {
  std::shared_ptr<platform::Connection> connection;
  std::shared_ptr<platform::ZwPubCls> services;
  std::shared_ptr<platform::Login> login;
};

// QueryInterface with this answers a Native* that lives as long as the object, and counts the object. It works inside
// the apartment that the object was made in, and only there.
inline constexpr GUID nativeInterface = {0x63f6d6c9, 0xeef5, 0x495a, {0xb9, 0x1a, 0x84, 0xcd, 0x47, 0x94, 0xd3, 0xc3}};

// Empty for an object of somebody else's, and for none.
Native nativeOf(IUnknown* object);

}  // namespace com
