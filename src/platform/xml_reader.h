#pragma once
// XmlReader: load a small document, select nodes by path, read attributes, build elements.

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

class XmlElement {
public:
  virtual ~XmlElement() = default;
  virtual std::string Name() const = 0;
  virtual std::optional<std::string> Attribute(std::string_view name) const = 0;  // nullopt when missing
  virtual void SetAttribute(std::string_view name, std::string_view value) = 0;
  // Elements under this one by a path of element names ("Parameters/Parameter"), in document order.
  virtual std::vector<std::unique_ptr<XmlElement>> Select(std::string_view path) const = 0;
  virtual std::unique_ptr<XmlElement> AppendChild(std::string_view name) = 0;
  virtual std::string Xml() const = 0;  // this element and what it holds, without a declaration
};

class XmlDocument {
public:
  virtual ~XmlDocument() = default;
  // False when the text is empty or not well-formed; Root is then null, ParseError says what and where.
  virtual bool LoadText(std::string_view text) = 0;
  virtual bool LoadFile(const std::string& path) = 0;
  virtual std::string ParseError() const = 0;
  virtual std::unique_ptr<XmlElement> Root() const = 0;  // null without a document
  virtual std::unique_ptr<XmlElement> CreateRoot(std::string_view name) = 0;
};

class XmlReader {
public:
  virtual ~XmlReader() = default;
  virtual std::unique_ptr<XmlDocument> NewDocument() = 0;
};

}  // namespace platform
