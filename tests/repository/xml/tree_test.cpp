#include "repository/xml/tree.h"

#include <gtest/gtest.h>

#include <string>

#include "repository/xml/writer.h"

namespace repository::xml {
namespace {

std::string Written(const Tree& tree) {
    return TextOf([&](Writer& writer) {
        writer.Declare("one", "p");
        tree.Write(writer, 1);
    });
}

TEST(XmlTree, WritesWhatItRead) {
    const std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<p:a xmlns:p=\"one\" p:x=\"&lt;&quot;&amp;&#xA;\">\n"
        "  <b/>\n"
        "  <c>\n"
        "    <d>text &lt; &amp;</d>\n"
        "  </c>\n"
        "</p:a>\n";
    EXPECT_EQ(Written(Parse(text)), text);
}

TEST(XmlTree, KeepsLineEndsAndControlCharactersThatXmlHas) {
    const Tree tree = Parse("<a x='1&#xA;2&#xD;3&#x9;4'>5&#xD;&#xA;6</a>");
    EXPECT_EQ(tree[1].Get("x"), "1\n2\r3\t4");
    EXPECT_EQ(tree[1].text, "5\r\n6");
    EXPECT_EQ(Parse(Written(tree))[1].Get("x"), "1\n2\r3\t4");
    EXPECT_EQ(Parse(Written(tree))[1].text, "5\r\n6");
}

TEST(XmlTree, CopiesAnElementWithAllThatItContains) {
    const Tree from = Parse("<r><a x='1'><b><c/></b><d>t</d></a><e/></r>");
    Tree to = Parse("<r><z/></r>");
    to.Copy(from, from.Children(1, "a").at(0), 1);
    EXPECT_EQ(Written(to), Written(Parse("<r><z/><a x='1'><b><c/></b><d>t</d></a></r>")));
}

TEST(XmlTree, LetsGoOfElements) {
    Tree tree = Parse("<r><a/><b/><c/></r>");
    tree.Detach(tree.Children(1, "b").at(0));
    EXPECT_EQ(Written(tree), Written(Parse("<r><a/><c/></r>")));
    tree.Detach(tree.Children(1, "c").at(0));
    tree.Add(1, "", "d");
    EXPECT_EQ(Written(tree), Written(Parse("<r><a/><d/></r>")));
    tree.Detach(tree.Children(1, "a").at(0));
    EXPECT_EQ(Written(tree), Written(Parse("<r><d/></r>")));
}

TEST(XmlTree, TakesAnyDepth) {
    Tree tree;
    std::size_t at = 0;
    for (int i = 0; i < 100'000; ++i) at = tree.Add(at, "", "a");
    Tree copy;
    copy.Copy(tree, 1, 0);
    EXPECT_EQ(copy.End(), tree.End());
    EXPECT_GT(Written(copy).size(), 700'000u);
}

TEST(XmlWriter, GivesEachNamespaceAPrefixOfItsOwn) {
    Writer writer([](std::string_view) {});
    writer.Declare("one", "p");
    writer.Declare("two", "p");
    writer.Declare("three", "");
    writer.Declare("one", "q");
    EXPECT_EQ(writer.PrefixOf("one"), "p");
    EXPECT_EQ(writer.PrefixOf("two"), "p2");
    EXPECT_EQ(writer.PrefixOf("three"), "ns");
    EXPECT_EQ(writer.PrefixOf("four"), "");
}

TEST(XmlWriter, KnowsWhatXmlCannotExpress) {
    EXPECT_TRUE(CanExpress("a\tb\r\nc \xC3\xA9 \xF0\x9F\x98\x80"));
    EXPECT_FALSE(CanExpress(std::string_view("a\0b", 3)));
    EXPECT_FALSE(CanExpress("\x01"));
    EXPECT_FALSE(CanExpress("\xC3"));
    EXPECT_FALSE(CanExpress("\xC0\x80"));
    EXPECT_FALSE(CanExpress("\xED\xA0\x80"));
    EXPECT_FALSE(CanExpress("\xEF\xBF\xBF"));
}

}  // namespace
}  // namespace repository::xml
