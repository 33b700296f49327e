#include "host/components.h"

#include <utility>

#include "host/clearing_component.h"

namespace host {
namespace {

using platform::Component;
using platform::RunTimeError;

constexpr const char* clearing = "OrvoGLWLClear.clsInterface";
constexpr const char* sibling = "TsGFJZ.clsGFJZ";

class Components final : public platform::ComponentFactory {
public:
  explicit Components(std::shared_ptr<Journal> journal) : journal_(std::move(journal)) {}

  std::shared_ptr<Component> Create(const std::string& programId) override {
    if (platform::equalsIgnoreCase(programId, clearing)) return makeClearingComponent(journal_);
    if (platform::equalsIgnoreCase(programId, sibling)) journal_->siblingAsked();
    journal_->note("component " + programId + " is not installed");
    const RunTimeError failure(RunTimeError::cannotCreate, "Component cannot be created: " + programId);
    journal_->expected(failure);
    throw failure;
  }

private:
  std::shared_ptr<Journal> journal_;
};

}  // namespace

std::shared_ptr<platform::ComponentFactory> makeComponents(std::shared_ptr<Journal> journal) {
  return std::make_shared<Components>(std::move(journal));
}

}  // namespace host
