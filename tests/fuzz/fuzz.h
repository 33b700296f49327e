#pragma once
// What the fuzz targets share. A target is one file with one function,
//
//   extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
//
// that is given any bytes and calls fail() when a promise does not hold. README.md tells how targets are built and run.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

// Ends the process with the broken promise and what shows it.
[[noreturn]] void fail(std::string_view promise, std::string_view details);

inline std::string textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace fuzz
