#include "vexor/config/element_access.h"

#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <string>

#include "vexor/config/reader.h"

namespace {

struct Parsed {
  explicit Parsed(const std::string& text) : document(true, tinyxml2::PRESERVE_WHITESPACE) {
    document.Parse(text.c_str());
  }
  [[nodiscard]] const tinyxml2::XMLElement* root() const { return document.RootElement(); }
  tinyxml2::XMLDocument document;
};

TEST(ElementAccess, ReadsTextFromTheFirstChildNodeOnly) {
  struct Case {
    const char* element;
    const char* text;   // GetXMLText
    const char* plain;  // getElementText
  };
  const Case cases[] = {
      {"<E>msec:80</E>", "msec:80", "msec:80"},
      {"<E> \t\r\nmsec:80 \n</E>", "msec:80", " \t\nmsec:80 \n"},
      {"<E>a b</E>", "a b", "a b"},
      {"<E>&lt;&amp;&#65;</E>", "<&A", "<&A"},
      {"<E><![CDATA[ <x> ]]></E>", "<x>", " <x> "},
      {"<E>first</E><E>second</E>", "first", "first"},
      {"<E>text<!-- c --></E>", "text", "text"},
      {"<E><!-- c -->text</E>", " default ", ""},
      {"<E><F/>text</E>", " default ", ""},
      {"<E/>", " default ", ""},
      {"<E></E>", " default ", ""},
      {"<E>   </E>", " default ", ""},
      {"<E>&#32;</E>", "", " "},
      {"<e>other case</e>", " default ", ""},
      {"<F><E>too deep</E></F>", " default ", ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.element);
    const Parsed parsed("<R>" + std::string(c.element) + "</R>");
    EXPECT_EQ(GetXMLText(parsed.root(), "E", " default "), c.text);
    EXPECT_EQ(getElementText(parsed.root()->FirstChildElement("E")), c.plain);
  }
  const Parsed parsed("<R/>");
  EXPECT_EQ(GetXMLText(nullptr, "E", " d "), " d ");
  EXPECT_EQ(GetXMLText(parsed.root(), nullptr, " d "), " d ");
}

TEST(ElementAccess, IsTrueForExactlyTrue) {
  struct Case {
    const char* element;
    bool with_false;
    bool with_true;
  };
  const Case cases[] = {
      {"<E>true</E>", true, true},
      {"<E>TRUE</E>", false, false},
      {"<E> true</E>", false, false},
      {"<E>true </E>", false, false},
      {"<E/>", false, true},
      {"", false, true},
      {"<E><!--x-->true</E>", false, false},
      {"<E>false</E>", false, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.element);
    const Parsed parsed("<R>" + std::string(c.element) + "</R>");
    EXPECT_EQ(GetXMLBOOL(parsed.root(), "E", false), c.with_false);
    EXPECT_EQ(GetXMLBOOL(parsed.root(), "E", true), c.with_true);
  }
  EXPECT_TRUE(GetXMLBOOL(nullptr, "E", true));
  EXPECT_TRUE(GetXMLBOOL(Parsed("<R><E>no</E></R>").root(), nullptr, true));
}

TEST(ElementAccess, ReturnsAttributesUntrimmed) {
  const Parsed parsed("<R a=' x '/>");
  EXPECT_EQ(getElementAttribute(parsed.root(), "a", "d"), " x ");
  EXPECT_EQ(getElementAttribute(parsed.root(), "b", " d "), " d ");
  EXPECT_EQ(getElementAttribute(parsed.root(), nullptr, "d"), "d");
  EXPECT_EQ(getElementAttribute(nullptr, "a", "d"), "d");
}

TEST(CreateXMLElement, AppendsAnElementOrDoesNothing) {
  Parsed parsed("<R><A/></R>");
  tinyxml2::XMLElement* const root = parsed.document.RootElement();
  VexorConfigParser parser;
  parser.CreateXMLElement(root, &parsed.document, "B", "a<b");
  parser.CreateXMLElement(nullptr, &parsed.document, "C", "x");
  parser.CreateXMLElement(root, &parsed.document, nullptr, "x");
  tinyxml2::XMLPrinter printer(nullptr, true);
  parsed.document.Print(&printer);
  EXPECT_STREQ(printer.CStr(), "<R><A/><B>a&lt;b</B></R>");
}

}  // namespace
