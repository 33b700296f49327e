#include "fuzz/fuzz.h"

#include <cstdio>
#include <cstdlib>

namespace fuzz {

void fail(std::string_view promise, std::string_view details) {
  std::fprintf(stderr, "\nbroken promise: %.*s\n%.*s\n", static_cast<int>(promise.size()), promise.data(),
               static_cast<int>(details.size()), details.data());
  std::abort();
}

}  // namespace fuzz
