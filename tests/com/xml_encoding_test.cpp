// The XML library of this build takes its encodings from ICU: a file in the Chinese code page has to load as it does on
// Linux.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "xml/xml_reader.h"

namespace com::test {
namespace {

TEST(XmlEncodingTest, ReadsFilesInTheChineseCodePages) {
  const auto file = std::filesystem::temp_directory_path() / "gljz-xml-encoding-test.xml";
  for (const std::string encoding : {"gb2312", "GBK", "gb18030"}) {
    std::ofstream(file, std::ios::binary)
        << "<?xml version=\"1.0\" encoding=\"" << encoding << "\"?><Account Text=\"\xBD\xE1\xD7\xAA\"/>";
    const auto document = xml::newXmlReader()->NewDocument();
    ASSERT_TRUE(document->LoadFile(file.generic_string())) << encoding << ": " << document->ParseError();
    EXPECT_EQ(document->Root()->Attribute("Text"), "结转") << encoding;
  }
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace com::test
