#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "xml/xml_reader.h"

namespace {

class XmlTest : public testing::Test {
protected:
  std::unique_ptr<platform::XmlReader> reader = xml::newXmlReader();
  std::unique_ptr<platform::XmlDocument> document = reader->NewDocument();
};

TEST_F(XmlTest, SelectsByPathInDocumentOrder) {
  ASSERT_TRUE(document->LoadText("<T><P><i k='1'/></P><x/><P><i k='2'/><i k='3'/></P><i k='4'/></T>"));
  std::string keys;
  for (const auto& e : document->Root()->Select("P/i")) keys += e->Attribute("k").value_or("?");
  EXPECT_EQ(keys, "123");
  EXPECT_TRUE(document->Root()->Select("P/none").empty());
}

TEST_F(XmlTest, MissingAndEmptyAttributesDiffer) {
  ASSERT_TRUE(document->LoadText("<a x=''/>"));
  EXPECT_EQ(document->Root()->Attribute("x"), "");
  EXPECT_EQ(document->Root()->Attribute("X"), std::nullopt);
}

TEST_F(XmlTest, ReadsUtf8WhateverTheDeclarationSays) {
  ASSERT_TRUE(document->LoadText("<?xml version=\"1.0\" encoding=\"gb2312\"?><a t='结转 &amp; &lt;'/>"));
  EXPECT_EQ(document->Root()->Attribute("t"), "结转 & <");
}

TEST_F(XmlTest, TextThatIsNoDocumentLeavesNoRootAndSaysWhy) {
  EXPECT_FALSE(document->LoadText(""));
  EXPECT_EQ(document->Root(), nullptr);
  EXPECT_FALSE(document->LoadText("<a>\n<b></a>"));
  EXPECT_EQ(document->Root(), nullptr);
  EXPECT_NE(document->ParseError().find("line 2"), std::string::npos) << document->ParseError();
}

TEST_F(XmlTest, AFailedLoadDropsTheDocumentBefore) {
  ASSERT_TRUE(document->LoadText("<a/>"));
  EXPECT_EQ(document->ParseError(), "");
  EXPECT_FALSE(document->LoadText("<a"));
  EXPECT_EQ(document->Root(), nullptr);
}

TEST_F(XmlTest, BuildsElementsAndEscapesWhatItWrites) {
  auto root = document->CreateRoot("Account");
  auto child = root->AppendChild("Parameter");
  child->SetAttribute("ID", "GL*Clear");
  child->SetAttribute("text", "清零 <\"&\">");
  child->SetAttribute("ID", "GL*Other");
  EXPECT_EQ(root->Xml(), "<Account><Parameter ID=\"GL*Other\" text=\"清零 &lt;&quot;&amp;&quot;&gt;\"/></Account>");
  EXPECT_EQ(child->Name(), "Parameter");

  auto again = reader->NewDocument();
  ASSERT_TRUE(again->LoadText(root->Xml()));
  EXPECT_EQ(again->Root()->Select("Parameter").front()->Attribute("text"), "清零 <\"&\">");
}

TEST_F(XmlTest, ElementsOutliveTheirDocumentObject) {
  ASSERT_TRUE(document->LoadText("<a k='v'/>"));
  auto root = document->Root();
  document.reset();
  EXPECT_EQ(root->Attribute("k"), "v");
}

TEST_F(XmlTest, EmptyRootHasItsShortForm) {
  EXPECT_EQ(document->CreateRoot("Account")->Xml(), "<Account/>");
}

TEST_F(XmlTest, NothingOutsideTheTextIsRead) {
  const auto secret = std::filesystem::temp_directory_path() / "gljz_xml_test_secret.txt";
  std::ofstream(secret) << "secret";
  const std::string text =
      "<!DOCTYPE a [<!ENTITY e SYSTEM \"file://" + secret.generic_string() + "\">]><a><b>&e;</b></a>";
  EXPECT_TRUE(document->LoadText(text));
  std::filesystem::remove(secret);
  EXPECT_EQ(document->Root()->Xml(), "<a><b>&e;</b></a>");
}

TEST_F(XmlTest, LoadsFiles) {
  const auto path = std::filesystem::temp_directory_path() / "gljz_xml_test.xml";
  std::ofstream(path) << "<Transfer><Parameters/></Transfer>";
  EXPECT_TRUE(document->LoadFile(path.string()));
  EXPECT_EQ(document->Root()->Name(), "Transfer");
  std::filesystem::remove(path);
  EXPECT_FALSE(document->LoadFile(path.string()));
  EXPECT_EQ(document->Root(), nullptr);
  EXPECT_NE(document->ParseError(), "");
}

}  // namespace
