#include "xml/xml_reader.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>

#include <limits>

namespace xml {
namespace {

using platform::XmlDocument;
using platform::XmlElement;
using platform::XmlReader;

using DocumentPtr = std::shared_ptr<xmlDoc>;  // elements keep their document alive

// Never reaches out: no network, no external entities, and the parser's own limits on size and depth stay on.
constexpr int parseOptions = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
constexpr const char* encoding = "UTF-8";

const xmlChar* chars(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

std::string taken(xmlChar* text) {
  std::string result(reinterpret_cast<const char*>(text));
  xmlFree(text);
  return result;
}

bool isNamed(const xmlNode* node, std::string_view name) {
  return node->type == XML_ELEMENT_NODE && node->ns == nullptr && reinterpret_cast<const char*>(node->name) == name;
}

class Element : public XmlElement {
public:
  Element(DocumentPtr document, xmlNode* node) : document_(std::move(document)), node_(node) {}

  std::string Name() const override { return reinterpret_cast<const char*>(node_->name); }

  std::optional<std::string> Attribute(std::string_view name) const override {
    xmlChar* value = xmlGetNoNsProp(node_, chars(std::string(name)));
    if (value == nullptr) return std::nullopt;
    return taken(value);
  }

  void SetAttribute(std::string_view name, std::string_view value) override {
    xmlSetProp(node_, chars(std::string(name)), chars(std::string(value)));
  }

  std::vector<std::unique_ptr<XmlElement>> Select(std::string_view path) const override {
    std::vector<std::unique_ptr<XmlElement>> found;
    collect(node_, path, found);
    return found;
  }

  std::unique_ptr<XmlElement> AppendChild(std::string_view name) override {
    return std::make_unique<Element>(document_, xmlNewChild(node_, nullptr, chars(std::string(name)), nullptr));
  }

  std::string Xml() const override {
    std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> buffer(xmlBufferCreate(), xmlBufferFree);
    xmlSaveCtxt* save = xmlSaveToBuffer(buffer.get(), encoding, XML_SAVE_NO_DECL);
    xmlSaveTree(save, node_);
    xmlSaveClose(save);
    return reinterpret_cast<const char*>(xmlBufferContent(buffer.get()));
  }

private:
  void collect(xmlNode* from, std::string_view path, std::vector<std::unique_ptr<XmlElement>>& found) const {
    const auto slash = path.find('/');
    const std::string_view name = path.substr(0, slash);
    for (xmlNode* child = from->children; child != nullptr; child = child->next) {
      if (!isNamed(child, name)) continue;
      if (slash == std::string_view::npos) {
        found.push_back(std::make_unique<Element>(document_, child));
      } else {
        collect(child, path.substr(slash + 1), found);
      }
    }
  }

  DocumentPtr document_;
  xmlNode* node_;
};

class Document : public XmlDocument {
public:
  bool LoadText(std::string_view text) override {
    constexpr std::size_t longest = std::numeric_limits<int>::max();
    if (text.size() > longest) {
      document_ = nullptr;
      parseError_ = "the text is too long";
      return false;
    }
    // The text is UTF-8, whatever a declaration in it says.
    return load([&](xmlParserCtxt* context) {
      return xmlCtxtReadMemory(context, text.data(), static_cast<int>(text.size()), nullptr, encoding, parseOptions);
    });
  }

  bool LoadFile(const std::string& path) override {
    return load([&](xmlParserCtxt* context) {
      return xmlCtxtReadFile(context, path.c_str(), nullptr, parseOptions);  // path in UTF-8
    });
  }

  std::string ParseError() const override { return parseError_; }

  std::unique_ptr<XmlElement> Root() const override {
    xmlNode* root = document_ ? xmlDocGetRootElement(document_.get()) : nullptr;
    return root ? std::make_unique<Element>(document_, root) : nullptr;
  }

  std::unique_ptr<XmlElement> CreateRoot(std::string_view name) override {
    parseError_.clear();
    document_ = DocumentPtr(xmlNewDoc(nullptr), xmlFreeDoc);
    document_->encoding = xmlStrdup(chars(encoding));  // or attributes would be written as character references
    xmlNode* root = xmlNewDocNode(document_.get(), nullptr, chars(std::string(name)), nullptr);
    xmlDocSetRootElement(document_.get(), root);
    return std::make_unique<Element>(document_, root);
  }

private:
  template <class Parse>
  bool load(Parse parse) {
    parseError_.clear();
    std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> context(xmlNewParserCtxt(), xmlFreeParserCtxt);
    xmlCtxtUseOptions(context.get(), parseOptions);  // here too: a file is opened before the reader sets them
    xmlDoc* parsed = parse(context.get());
    document_ = parsed ? DocumentPtr(parsed, xmlFreeDoc) : nullptr;
    if (!parsed) describe(xmlCtxtGetLastError(context.get()));
    return parsed != nullptr;
  }

  void describe(const xmlError* error) {
    parseError_ = "the text is no XML document";
    if (error == nullptr || error->message == nullptr) return;
    parseError_ = error->message;
    while (parseError_.ends_with('\n')) parseError_.pop_back();
    if (error->line > 0) parseError_ += " (line " + std::to_string(error->line) + ")";
  }

  DocumentPtr document_;
  std::string parseError_;
};

class Reader : public XmlReader {
public:
  std::unique_ptr<XmlDocument> NewDocument() override { return std::make_unique<Document>(); }
};

}  // namespace

std::unique_ptr<XmlReader> newXmlReader() {
  return std::make_unique<Reader>();
}

}  // namespace xml
