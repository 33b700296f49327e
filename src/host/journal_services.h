#pragma once
// A services object that tells the journal of message texts, prompts and failures, and changes nothing.

#include <memory>

#include "host/journal.h"
#include "platform/services.h"

namespace host {

std::shared_ptr<platform::ZwPubCls> journalServices(std::shared_ptr<Journal> journal,
                                                    std::shared_ptr<platform::ZwPubCls> inner);

}  // namespace host
