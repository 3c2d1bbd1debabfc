#include "repository/ecore/model_fixture.h"

namespace repository::ecore {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// Whatever comes: an error with file, line and column, and a repository as it was.
class BadModel : public ModelTest {
protected:
    void SetUp() override { Take({{"p.ecore", metamodel}}); }

    const std::string metamodel = Metamodel(R"(
        <eClassifiers xsi:type='ecore:EClass' name='A'>
          <eStructuralFeatures xsi:type='ecore:EReference' name='in' upperBound='-1' eType='#//A' containment='true'/>
          <eStructuralFeatures xsi:type='ecore:EAttribute' name='x' eType='ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//EString'/>
        </eClassifiers>)");
};

TEST_F(BadModel, CutAtAnyPlaceItIsRefused) {
    const std::string text = Model("<p:A x='1'><in x='2'/><in><x>3</x></in></p:A>");
    for (std::size_t length = 0; length + 2 < text.size(); ++length) {
        EXPECT_THAT(ErrorOf({{"m.xmi", text.substr(0, length)}}), StartsWith("m.xmi:")) << length;
    }
    for (std::size_t length = 0; length + 2 < metamodel.size(); length += 7) {
        EXPECT_THAT(ErrorOf({{"q.ecore", metamodel.substr(0, length)}}), StartsWith("q.ecore:"));
    }
}

TEST_F(BadModel, AFaultInTheLastFileTakesBackAllFiles) {
    EXPECT_EQ(ErrorOf({{"m.xmi", Model("<p:A/>")}, {"n.xmi", Model("<p:A><in></p:A>")}}),
              "n.xmi:2:117: mismatched tag");
}

TEST_F(BadModel, NestedTooDeeply) {
    std::string deep = Model("<p:A>");
    for (int i = 0; i < 100'000; ++i) deep += "<in>";
    for (int i = 0; i < 100'000; ++i) deep += "</in>";
    EXPECT_THAT(ErrorOf({{"m.xmi", deep + "</p:A>"}}), HasSubstr("nested too deeply"));
    std::string packages;
    for (int i = 0; i < 100'000; ++i) packages += "<eSubpackages name='a'>";
    EXPECT_THAT(ErrorOf({{"q.ecore", Metamodel(packages)}}), HasSubstr("nested too deeply"));
}

TEST_F(BadModel, DeepButPossible) {
    std::string deep = Model("<p:A>");
    for (int i = 0; i < 1'000; ++i) deep += "<in>";
    for (int i = 0; i < 1'000; ++i) deep += "</in>";
    EXPECT_EQ(Take({{"m.xmi", deep + "</p:A>"}}).counts.objects, 1'001);
}

TEST_F(BadModel, EntityBombs) {
    std::string bomb = "<!DOCTYPE A [<!ENTITY e0 '0123456789'>";
    for (int i = 1; i < 10; ++i) {
        bomb += "<!ENTITY e" + std::to_string(i) + " '";
        for (int k = 0; k < 10; ++k) bomb += "&e" + std::to_string(i - 1) + ";";
        bomb += "'>";
    }
    bomb += "]><p:A xmlns:p='urn:p'><x>&e9;</x></p:A>";
    EXPECT_THAT(ErrorOf({{"m.xmi", bomb}}), HasSubstr("amplification"));
}

TEST_F(BadModel, WrongEncodings) {
    EXPECT_EQ(ErrorOf({{"m.xmi", "<p:A xmlns:p='urn:p' x='\xE9'/>"}}),
              "m.xmi:1:25: not well-formed (invalid token)");
    EXPECT_EQ(ErrorOf({{"m.xmi", "<?xml version='1.0' encoding='Klingon'?><p:A/>"}}),
              "m.xmi:1:31: unknown encoding");
    EXPECT_THAT(ErrorOf({{"m.xmi", std::string("\x00\x01\x02\x03", 4)}}),
                StartsWith("m.xmi:1:1: "));
}

TEST_F(BadModel, ClassesAboveThemselves) {
    EXPECT_EQ(
        ErrorOf({{"q.ecore",
                  Metamodel("<eClassifiers xsi:type='ecore:EClass' name='X' eSuperTypes='#//X'/>",
                            "name='q' nsURI='urn:q'")}}),
        "q.ecore:3:1: X is a supertype of itself");
    EXPECT_THAT(
        ErrorOf({{"q.ecore",
                  Metamodel("<eClassifiers xsi:type='ecore:EClass' name='X' eSuperTypes='#//Y'/>"
                            "<eClassifiers xsi:type='ecore:EClass' name='Y' eSuperTypes='#//Z'/>"
                            "<eClassifiers xsi:type='ecore:EClass' name='Z' eSuperTypes='#//X'/>",
                            "name='q' nsURI='urn:q'")}}),
        HasSubstr("is a supertype of itself"));
}

TEST_F(BadModel, AMissingMetamodelChangesNothing) {
    const auto before = ContentOf(*store);
    const auto result = Take({{"m.xmi", "<z:A xmlns:z='urn:z'><in/></z:A>"}});
    EXPECT_EQ(
        result.messages,
        std::vector<std::string>{"m.xmi:1:1: there is no metamodel with the namespace \"urn:z\""});
    EXPECT_EQ(ContentOf(*store), before);
}

TEST_F(BadModel, FilesThatCannotBeRead) {
    EXPECT_EQ(store::NumberOf([&] { Import(*store, {Path("none.xmi")}); }),
              store::Number::fileNotFound);
    EXPECT_EQ(store::NumberOf([&] { Import(*store, {Path("no/none.xmi")}); }),
              store::Number::pathNotFound);
    EXPECT_EQ(store::NumberOf([&] { Import(*store, {scratch.Folder()}); }),
              store::Number::pathFileAccess);
}

TEST_F(BadModel, ALongTextIsKeptWhole) {
    const std::string text(20'000'000, 'x');
    Take({{"m.xmi", Model("<p:A x='" + text + "'/>")}});
    EXPECT_EQ(Value("m~1", "x").size(), text.size());
}

TEST_F(BadModel, ManyEqualIdentifiersAndReferencesTakeTheirTimeOnlyOnce) {
    std::string text;
    std::string addresses;
    for (int i = 0; i < 3'000; ++i) {
        text += "<in xmi:id='same'/>";
        addresses += "same ";
    }
    Take({{"q.ecore", Metamodel("<eClassifiers xsi:type='ecore:EClass' name='Q'>"
                                "<eStructuralFeatures xsi:type='ecore:EReference' name='in' "
                                "upperBound='-1' eType='#//Q' containment='true'/>"
                                "<eStructuralFeatures xsi:type='ecore:EReference' name='all' "
                                "upperBound='-1' eType='#//Q'/></eClassifiers>",
                                "name='q' nsURI='urn:q'")},
          {"m.xmi", Model("<q:Q xmlns:q='urn:q' all='" + addresses + "'>" + text + "</q:Q>")}});
    EXPECT_EQ(Nodes().size(), 3'001u);
    EXPECT_EQ(Links().size(), 6'000u);
}

}  // namespace
}  // namespace repository::ecore
