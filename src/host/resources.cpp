#include "host/resources.h"

namespace host {

std::optional<std::string_view> resource(std::string_view name) {
  for (const Resource& r : resources())
    if (r.name == name) return r.text;
  return std::nullopt;
}

std::vector<Resource> resourcesUnder(std::string_view prefix) {
  std::vector<Resource> found;
  for (const Resource& r : resources())
    if (r.name.starts_with(prefix)) found.push_back(r);
  return found;
}

}  // namespace host
