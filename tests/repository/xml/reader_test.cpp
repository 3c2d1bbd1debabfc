#include "repository/xml/reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace repository::xml {
namespace {

/// Writes down what it gets: "<name a=b", "text", ">".
class Record final : public Handler {
public:
    Record() : reader(*this) {}

    void Read(std::string_view text) { reader.Read(text, true); }

    std::string events;
    std::vector<std::string> places;
    Reader reader;

private:
    void Start(const Name& name, std::span<const Attribute> attributes) override {
        events += "<";
        events += name.uri.empty() ? "" : "{" + std::string(name.uri) + "}";
        events += name.local;
        for (const Attribute& each : attributes) {
            events += " " + std::string(each.name.local) + "=" + std::string(each.value);
        }
        const Position where = reader.Where();
        places.push_back(std::to_string(where.line) + ":" + std::to_string(where.column));
    }
    void Text(std::string_view text) override { events += text; }
    void End() override { events += ">"; }
};

std::string EventsOf(std::string_view text) {
    Record record;
    record.Read(text);
    return record.events;
}

/// "line:column: message" of the error in a text.
std::string ErrorOf(std::string_view text) {
    Record record;
    try {
        record.Read(text);
    } catch (const SyntaxError& error) {
        return std::to_string(error.Where().line) + ":" + std::to_string(error.Where().column) +
               ": " + error.what();
    }
    return "no error";
}

std::string Utf16(std::string_view ascii, bool bigEndian) {
    std::string text = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char letter : ascii) {
        if (bigEndian) text += '\0';
        text += letter;
        if (!bigEndian) text += '\0';
    }
    return text;
}

TEST(XmlReader, TellsElementsAttributesAndTextsInTheirOrder) {
    EXPECT_EQ(EventsOf("<a x='1' y=\"2\">one<b/>two</a>"), "<a x=1 y=2one<b>two>");
}

TEST(XmlReader, KnowsLineAndColumnOfEachElement) {
    Record record;
    record.Read("<a>\n  <b/>\r\n    <c/></a>");
    EXPECT_THAT(record.places, testing::ElementsAre("1:1", "2:3", "3:5"));
}

TEST(XmlReader, ResolvesNamespacesAlsoOfPrefixesInValues) {
    class Asking final : public Handler {
    public:
        Asking() : reader(*this) {}
        std::vector<std::string> answers;
        Reader reader;

    private:
        void Start(const Name& name, std::span<const Attribute>) override {
            answers.push_back(std::string(name.prefix) + "|" + std::string(name.uri) + "|" +
                              std::string(reader.NamespaceOf("p")) + "|" +
                              std::string(reader.NamespaceOf("")));
        }
        void Text(std::string_view) override {}
        void End() override {}
    };
    Asking asking;
    asking.reader.Read("<p:a xmlns:p='one' xmlns='two'><b xmlns:p='three' xmlns=''/><p:c/></p:a>",
                       true);
    EXPECT_THAT(asking.answers, testing::ElementsAre("p|one|one|two", "||three|", "p|one|one|two"));
}

TEST(XmlReader, ReadsEveryEncodingToUtf8) {
    EXPECT_EQ(EventsOf("\xEF\xBB\xBF<a>\xC3\xA9</a>"), "<a\xC3\xA9>");
    EXPECT_EQ(EventsOf("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>"), "<a\xC3\xA9>");
    EXPECT_EQ(EventsOf("<?xml version='1.0' encoding='US-ASCII'?><a>e</a>"), "<ae>");
    EXPECT_EQ(EventsOf("<?xml version='1.0' encoding='Windows-1252'?><a>\x80\xE9</a>"),
              "<a\xE2\x82\xAC\xC3\xA9>");
    EXPECT_EQ(EventsOf("<?xml version='1.0' encoding='ASCII'?><a>e</a>"), "<ae>");
    EXPECT_EQ(EventsOf("<?xml version='1.0' encoding='latin1'?><a>\xE9</a>"), "<a\xC3\xA9>");
    EXPECT_EQ(EventsOf(Utf16("<a>x</a>", true)), "<ax>");
    EXPECT_EQ(EventsOf(Utf16("<?xml version='1.0' encoding='UTF-16'?><a>x</a>", false)), "<ax>");
}

TEST(XmlReader, RefusesBytesThatTheirEncodingDoesNotHave) {
    EXPECT_EQ(ErrorOf("<a>\xE9</a>"), "1:4: not well-formed (invalid token)");
    EXPECT_EQ(ErrorOf("<?xml version='1.0' encoding='US-ASCII'?><a>\xE9</a>"),
              "1:45: not well-formed (invalid token)");
    EXPECT_EQ(ErrorOf("<?xml version='1.0' encoding='ASCII'?><a>\xE9</a>"),
              "1:42: not well-formed (invalid token)");
    EXPECT_EQ(ErrorOf("<?xml version='1.0' encoding='windows-1252'?><a>\x81</a>"),
              "1:49: not well-formed (invalid token)");
    EXPECT_EQ(ErrorOf("<?xml version='1.0' encoding='EBCDIC'?><a/>"), "1:31: unknown encoding");
}

TEST(XmlReader, SaysWhereATextIsCutOrBroken) {
    EXPECT_EQ(ErrorOf(""), "1:1: no element found");
    EXPECT_EQ(ErrorOf("<a>\n  <b>"), "2:6: no element found");
    EXPECT_EQ(ErrorOf("<a>\n  <b></a>"), "2:8: mismatched tag");
    EXPECT_EQ(ErrorOf("<a><p:b/></a>"), "1:4: unbound prefix");
    EXPECT_EQ(ErrorOf("<a/>\n<b/>"), "2:1: junk after document element");
}

TEST(XmlReader, RefusesEntitiesThatGrowBeyondMeasure) {
    std::string bomb = "<!DOCTYPE a [<!ENTITY e0 '0123456789'>";
    for (int i = 1; i < 10; ++i) {
        bomb += "<!ENTITY e" + std::to_string(i) + " '";
        for (int k = 0; k < 10; ++k) bomb += "&e" + std::to_string(i - 1) + ";";
        bomb += "'>";
    }
    bomb += "]><a>&e9;</a>";
    EXPECT_THAT(ErrorOf(bomb), testing::HasSubstr("amplification"));
    EXPECT_EQ(EventsOf("<!DOCTYPE a [<!ENTITY e 'text'>]><a>&e;</a>"), "<atext>");
}

TEST(XmlReader, ReadsNothingOutsideTheText) {
    EXPECT_EQ(EventsOf("<!DOCTYPE a SYSTEM 'file:///etc/passwd' [<!ENTITY e SYSTEM "
                       "'file:///etc/passwd'>]><a>&e;</a>"),
              "<a>");
}

TEST(XmlReader, RefusesElementsThatAreNestedTooDeeply) {
    std::string deep;
    for (int i = 0; i < 100'000; ++i) deep += "<a>";
    EXPECT_EQ(ErrorOf(deep), "1:6001: elements are nested too deeply");
}

TEST(XmlReader, PassesOnWhatTheHandlerThrows) {
    class Throwing final : public Handler {
    public:
        int started = 0;

    private:
        void Start(const Name&, std::span<const Attribute>) override {
            ++started;
            throw std::logic_error("enough");
        }
        void Text(std::string_view) override {}
        void End() override {}
    };
    Throwing handler;
    Reader reader(handler);
    EXPECT_THROW(reader.Read("<a><b/></a>", true), std::logic_error);
    EXPECT_EQ(handler.started, 1);
}

TEST(XmlReader, ReadsATextInPiecesOfAnySize) {
    const std::string text = "<a x='\xC3\xA9'>\xE2\x82\xAC<b/></a>";
    for (std::size_t size = 1; size < text.size(); ++size) {
        Record record;
        for (std::size_t at = 0; at < text.size(); at += size) {
            record.reader.Read(std::string_view(text).substr(at, size), false);
        }
        record.reader.Read("", true);
        EXPECT_EQ(record.events, "<a x=\xC3\xA9\xE2\x82\xAC<b>>");
    }
}

}  // namespace
}  // namespace repository::xml
