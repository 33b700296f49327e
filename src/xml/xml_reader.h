#pragma once
// The XML reader over libxml2.

#include <memory>

#include "platform/xml_reader.h"

namespace xml {

std::unique_ptr<platform::XmlReader> newXmlReader();

}  // namespace xml
