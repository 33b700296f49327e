#pragma once
// Handle: one ODBC handle that is freed with its owner.

#include <new>
#include <utility>

#include "odbc/api.h"

namespace odbc {

template <SQLSMALLINT Type>
class Handle {
public:
  static constexpr SQLSMALLINT type = Type;

  Handle() = default;
  // parent: SQL_NULL_HANDLE for an environment, else its handle. std::bad_alloc when the driver manager gives none;
  // what it says about that stands in the parent's diagnostics.
  explicit Handle(SQLHANDLE parent) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(Type, parent, &handle_))) throw std::bad_alloc();
  }
  ~Handle() { reset(); }
  Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Handle& operator=(Handle&& other) noexcept {
    if (this != &other) {
      reset();
      handle_ = std::exchange(other.handle_, nullptr);
    }
    return *this;
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  void reset() noexcept {
    if (handle_ != nullptr) SQLFreeHandle(Type, std::exchange(handle_, nullptr));
  }
  SQLHANDLE get() const { return handle_; }
  explicit operator bool() const { return handle_ != nullptr; }

private:
  SQLHANDLE handle_ = nullptr;
};

using EnvironmentHandle = Handle<SQL_HANDLE_ENV>;
using ConnectionHandle = Handle<SQL_HANDLE_DBC>;
using StatementHandle = Handle<SQL_HANDLE_STMT>;

}  // namespace odbc
