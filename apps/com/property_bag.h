#pragma once
// PropertyBag: an automation object of named values, as records and options go across the border.

#include <string>
#include <utility>
#include <vector>

#include "automation.h"
#include "dispatch_object.h"
#include "platform/records.h"

namespace com {

class PropertyBag final : public DispatchObject {
public:
  // Names are literals. All of them can be read and set.
  explicit PropertyBag(std::vector<std::pair<const wchar_t*, platform::Value>> values);

  const platform::Value& value(std::size_t i) const { return values_.at(i); }

protected:
  const std::vector<MemberShape>& shapes() const override { return shapes_; }
  Variant answer(std::size_t member, const Invocation& call) override;

private:
  std::vector<MemberShape> shapes_;
  std::vector<platform::Value> values_;
};

// Records as bags, with the fields' own names, and back from any object that has them. A field that the object does not
// have stays as it is.
Pointer<PropertyBag> bagOf(const platform::CodeRecord& record);
Pointer<PropertyBag> bagOf(const platform::SignRecord& record);
Pointer<PropertyBag> bagOf(const platform::AccountOptions& options);
void read(const Automation& object, platform::CodeRecord& record);
void read(const Automation& object, platform::SignRecord& record);
void read(const Automation& object, platform::AccountOptions& options);
// Sets the fields of any object that has them.
void write(const platform::CodeRecord& record, const Automation& object);
void write(const platform::SignRecord& record, const Automation& object);

}  // namespace com
