#pragma once
// Data files that are built into the program: message texts, table definitions, the demo account set,
// TransferParameter.xml.

#include <optional>
#include <string_view>
#include <vector>

namespace host {

struct Resource {
  std::string_view name;  // "messages/zh-CN.json", "schema/account.sql", "TransferParameter.xml"
  std::string_view text;
};

// All resources, sorted by name.
const std::vector<Resource>& resources();
std::optional<std::string_view> resource(std::string_view name);
// Those whose name begins with prefix, in the order of their names.
std::vector<Resource> resourcesUnder(std::string_view prefix);

}  // namespace host
