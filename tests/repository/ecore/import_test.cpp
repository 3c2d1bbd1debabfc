#include "repository/ecore/model_fixture.h"

namespace repository::ecore {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class EcoreImport : public ModelTest {};

/// A box with parts, parts with a name and a next part.
const std::string boxes = Metamodel(R"(
  <eClassifiers xsi:type='ecore:EClass' name='Box'>
    <eStructuralFeatures xsi:type='ecore:EReference' name='parts' upperBound='-1' eType='#//Part'
        containment='true'/>
    <eStructuralFeatures xsi:type='ecore:EReference' name='first' eType='#//Part'/>
    <eStructuralFeatures xsi:type='ecore:EReference' name='some' upperBound='-1' eType='#//Part'/>
  </eClassifiers>
  <eClassifiers xsi:type='ecore:EClass' name='Part'>
    <eStructuralFeatures xsi:type='ecore:EAttribute' name='name'
        eType='ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//EString'/>
    <eStructuralFeatures xsi:type='ecore:EAttribute' name='code' iD='true'
        eType='ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//EString'/>
    <eStructuralFeatures xsi:type='ecore:EReference' name='next' eType='#//Part'/>
    <eStructuralFeatures xsi:type='ecore:EReference' name='inner' upperBound='-1' eType='#//Part'
        containment='true'/>
  </eClassifiers>
  <eClassifiers xsi:type='ecore:EClass' name='BigPart' eSuperTypes='#//Part'/>
)");

std::string Attribute(const std::string& name, const std::string& type,
                      const std::string& further = "") {
    return "<eStructuralFeatures xsi:type='ecore:EAttribute' name='" + name +
           "' eType='ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//" + type + "' " +
           further + "/>";
}

std::string ClassWith(const std::string& features, const std::string& further = "") {
    return "<eClassifiers xsi:type='ecore:EClass' name='A' " + further + ">" + features +
           "</eClassifiers>";
}

TEST_F(EcoreImport, ClassesBecomeMetaNodesAndObjectsNodes) {
    const auto result = Take(boxes, Model("<p:Box><parts code='a' name='Axle'/>"
                                          "<parts xsi:type='p:BigPart' code='b'/></p:Box>"));
    EXPECT_THAT(result.messages, IsEmpty());
    EXPECT_EQ(result.counts.classes, 3);
    EXPECT_EQ(result.counts.attributes, 2);
    EXPECT_EQ(result.counts.references, 5);
    EXPECT_EQ(result.counts.objects, 3);
    EXPECT_EQ(result.counts.values, 3);
    EXPECT_EQ(result.counts.containments, 2);
    EXPECT_THAT(Nodes(), ElementsAre("m~1: Box (Box 1)", "a: Part (Axle)", "b: BigPart (b)"));
    EXPECT_THAT(Links(), ElementsAre("m~1 parts a", "m~1 parts b"));
    const auto link = store->Meta().links.Find("Box.parts");
    ASSERT_TRUE(link);
    EXPECT_EQ(link->linkName, "parts");
    EXPECT_EQ(link->source->name, "Box");
    EXPECT_EQ(link->target->name, "Part");
}

TEST_F(EcoreImport, InheritedAttributesAreMetaPropertiesOfEachClass) {
    Take(boxes, Model("<p:Box><parts xsi:type='p:BigPart' code='b'/></p:Box>"));
    const auto big = store->Meta().nodes.Find("BigPart");
    ASSERT_TRUE(big->properties.Find("code"));
    EXPECT_EQ(Value("b", "code"), "b");
    EXPECT_TRUE(big->IsKindOf(*store->Meta().nodes.Find("Part")));
    EXPECT_TRUE(big->outgoing.Find("Part.next"));
}

TEST_F(EcoreImport, ReferencesAreWrittenInManyWays) {
    const auto result =
        Take(boxes, Model(R"(<p:Box first='//@parts.1' some='//@parts.0 b //@parts.1/@inner.0'>
        <parts code='a' next='b'/>
        <parts code='b' next='#//@parts.0'><inner code='c' next='/'/><inner xmi:id='x' code='d'/></parts>
        <parts code='e'><next href='#x'/></parts>
        <parts code='f'><next xmi:idref='d'/></parts>
        <parts code='g'><next>a</next></parts>
        <parts code='h' next='m.xmi#a'/></p:Box>)"));
    EXPECT_THAT(
        result.messages,
        ElementsAre("m.xmi:4:44: the reference \"/\" of Part.next leads to a Box, not to a Part"));
    EXPECT_EQ(result.counts.links, 10);
    EXPECT_THAT(Links(), testing::IsSupersetOf({"m~1 first b", "m~1 some a", "m~1 some b",
                                                "m~1 some c", "a next b", "b next a", "e next x",
                                                "f next x", "g next a", "h next a"}));
}

TEST_F(EcoreImport, TheOrderOfReferencesAndOfChildrenIsKept) {
    Take(boxes,
         Model("<p:Box some='c a b'><parts code='b'/><parts code='c'/><parts code='a'/></p:Box>"));
    EXPECT_THAT(Links(), ElementsAre("m~1 parts b", "m~1 parts c", "m~1 parts a", "m~1 some c",
                                     "m~1 some a", "m~1 some b"));
}

TEST_F(EcoreImport, SeveralRootsInOneFile) {
    const auto result = Take(boxes, Model("<xmi:XMI><p:Part code='a' next='/1'/><p:Part code='b'/>"
                                          "<p:Box first='/0'/></xmi:XMI>"));
    EXPECT_THAT(result.messages, IsEmpty());
    EXPECT_THAT(Links(), ElementsAre("a next b", "m~3 first a"));
}

TEST_F(EcoreImport, MetamodelAndModelInOneFile) {
    const auto result = Take(
        {{"all.xmi", Model(R"(<xmi:XMI xmlns:ecore='http://www.eclipse.org/emf/2002/Ecore'>
        <p:A x='1'/>
        <ecore:EPackage name='p' nsURI='urn:p'>)" +
                           ClassWith(Attribute("x", "EInt")) + "</ecore:EPackage></xmi:XMI>")}});
    EXPECT_THAT(result.messages, IsEmpty());
    EXPECT_EQ(Value("all~1", "x"), "1");
}

TEST_F(EcoreImport, SeveralPackagesInOneFileAndPackagesInPackages) {
    const auto result = Take({{"p.ecore", R"(<xmi:XMI xmlns:xmi='http://www.omg.org/XMI'
        xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xmlns:ecore='http://www.eclipse.org/emf/2002/Ecore'>
        <ecore:EPackage name='one' nsURI='urn:one'>
          <eClassifiers xsi:type='ecore:EClass' name='A'/>
          <eSubpackages name='in' nsURI='urn:in'>
            <eClassifiers xsi:type='ecore:EClass' name='B' eSuperTypes='//A'/>
          </eSubpackages>
        </ecore:EPackage>
        <ecore:EPackage name='two' nsURI='urn:two'>
          <eClassifiers xsi:type='ecore:EClass' name='C' eSuperTypes='/0/A'>
            <eStructuralFeatures xsi:type='ecore:EReference' name='b' eType='#/0/in/B'/>
          </eClassifiers>
          <eClassifiers xsi:type='ecore:EClass' name='A' eSuperTypes='urn:one#//in/B'/>
        </ecore:EPackage></xmi:XMI>)"}});
    EXPECT_THAT(result.messages, IsEmpty());
    const auto& nodes = store->Meta().nodes;
    EXPECT_TRUE(nodes.Find("B")->IsKindOf(*nodes.Find("A")));
    EXPECT_TRUE(nodes.Find("C")->IsKindOf(*nodes.Find("A")));
    ASSERT_TRUE(nodes.Find("two.A"));
    EXPECT_TRUE(nodes.Find("two.A")->IsKindOf(*nodes.Find("B")));
    EXPECT_EQ(store->Meta().links.Find("C.b")->target->name, "B");
}

TEST_F(EcoreImport, TypesInOtherFilesAreFoundInTheListAndBesideTheFile) {
    const std::string other =
        "<eClassifiers xsi:type='ecore:EClass' name='C' "
        "eSuperTypes='../models/p.ecore#//Part q.ecore#//Q'/>";
    Write("q.ecore",
          Metamodel("<eClassifiers xsi:type='ecore:EClass' name='Q'/>", "name='q' nsURI='urn:q'"));
    const auto result =
        Take({{"r.ecore", Metamodel(other, "name='r' nsURI='urn:r'")}, {"p.ecore", boxes}});
    EXPECT_THAT(result.messages, IsEmpty());
    const auto& nodes = store->Meta().nodes;
    EXPECT_TRUE(nodes.Find("C")->IsKindOf(*nodes.Find("Part")));
    EXPECT_TRUE(nodes.Find("C")->IsKindOf(*nodes.Find("Q")));
}

TEST_F(EcoreImport, AModelFindsItsMetamodelWhereItNamesIt) {
    Write("p.ecore", boxes);
    const auto result = Take(
        {{"m.xmi", Model("<p:Box xsi:schemaLocation='urn:p p.ecore'><parts code='a'/></p:Box>")}});
    EXPECT_THAT(result.messages, IsEmpty());
    EXPECT_THAT(Nodes(), SizeIs(2));
}

TEST_F(EcoreImport, AModelFindsItsMetamodelInTheRepository) {
    Take({{"p.ecore", boxes}});
    const auto result =
        Take({{"m.xmi", Model("<p:Box first='a'><parts code='a' name='Axle'/></p:Box>")}});
    EXPECT_THAT(result.messages, IsEmpty());
    EXPECT_THAT(Nodes(), ElementsAre("m~1: Box (Box 1)", "a: Part (Axle)"));
    EXPECT_EQ(Value("a", "code"), "a");
    EXPECT_THAT(Links(), ElementsAre("m~1 parts a", "m~1 first a"));
    EXPECT_EQ(result.counts.classes, 0);
}

TEST_F(EcoreImport, APackageWithoutNamespaceIsFoundByItsName) {
    const auto result = Take(Metamodel(ClassWith(Attribute("x", "EInt")), "name='plain'"),
                             "<a:A xmlns:a='plain' x='1'/>");
    EXPECT_THAT(result.messages, IsEmpty());
    EXPECT_EQ(Take({{"n.xmi", "<A x='2'/>"}}).messages, std::vector<std::string>());
    EXPECT_EQ(Value("m~1", "x"), "1");
    EXPECT_EQ(Value("n~1", "x"), "2");
}

TEST_F(EcoreImport, ReferencesAcrossFilesOfOneImport) {
    const auto result = Take({{"p.ecore", boxes},
                              {"m.xmi", Model("<p:Part code='a' next='p:Part n.xmi#b'/>")},
                              {"n.xmi", Model("<p:Part code='b'><next href='m.xmi#//'/></p:Part>")},
                              {"o.xmi", Model("<p:Part code='c' next='elsewhere.xmi#b'/>")}});
    EXPECT_THAT(Links(), ElementsAre("a next b", "b next a"));
    EXPECT_THAT(result.messages,
                ElementsAre("o.xmi:2:1: the reference \"elsewhere.xmi#b\" of Part.next leads to a "
                            "file that is not imported with it"));
}

TEST_F(EcoreImport, ValuesHaveTheTypesOfTheirAttributes) {
    const auto result =
        Take(Metamodel(ClassWith(Attribute("i", "EInt") + Attribute("l", "ELong") +
                                 Attribute("s", "EShort") + Attribute("d", "EDouble") +
                                 Attribute("f", "EFloat") + Attribute("b", "EBoolean") +
                                 Attribute("t", "EDate") + Attribute("x", "EByteArray") +
                                 Attribute("big", "EBigInteger"))),
             Model("<p:A i='-7' l='9007199254740993' s='12' d='0.1' f='1.5' b='true' "
                   "t='2010-02-01T05:12:32' x='00FF' big='123456789012345678901234567890'/>"));
    EXPECT_THAT(result.messages, IsEmpty());
    const auto object = Object("m~1");
    const auto value = [&](const char* name) {
        return store->GetValue(*object, *object->meta->properties.Find(name));
    };
    EXPECT_EQ(value("i"), store::Value(std::int32_t{-7}));
    EXPECT_EQ(value("l"), store::Value(std::int64_t{9007199254740993}));
    EXPECT_EQ(value("s"), store::Value(std::int16_t{12}));
    EXPECT_EQ(value("d"), store::Value(0.1));
    EXPECT_EQ(value("f"), store::Value(1.5f));
    EXPECT_EQ(value("b"), store::Value(true));
    EXPECT_EQ(Value("m~1", "t"), "2010-02-01T05:12:32.000");
    EXPECT_EQ(value("x"), store::Value(store::Bytes{0, 255}));
    EXPECT_EQ(Value("m~1", "big"), "123456789012345678901234567890");
}

TEST_F(EcoreImport, ValuesAreOfThePresentTypesOfTheirProperties) {
    const std::string attribute = "<eStructuralFeatures xsi:type='ecore:EAttribute' ";
    const std::string ecore = " eType='ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//";
    Take({{"p.ecore",
           Metamodel("<eClassifiers xsi:type='ecore:EClass' name='A'>" + attribute + "name='size'" +
                     ecore + "EString'/>" + attribute + "name='count'" + ecore + "EInt'/>" +
                     attribute + "name='words' upperBound='-1'" + ecore + "EString'/>" + attribute +
                     "name='kind' eType='#//Kind'/></eClassifiers>"
                     "<eClassifiers xsi:type='ecore:EEnum' name='Kind'>"
                     "<eLiterals name='k'/></eClassifiers>")}});
    const auto& properties = store->Meta().nodes.Find("A")->properties;
    const auto& types = store->Meta().types;
    store->Retype(properties.Find("size"), types.Find("Long"));
    store->Retype(properties.Find("count"), types.Find("Kind"));
    store->Retype(properties.Find("words"), types.Find("Currency"));
    store->Retype(properties.Find("kind"), types.Find("String"));
    const ImportResult result =
        Take({{"m.xmi", Model("<xmi:XMI><p:A xmi:id='a' size='7' kind='k' words='1.5'/>\n"
                              "<p:A xmi:id='b' size='big' count='8' words='x y'/></xmi:XMI>")}});
    EXPECT_EQ(store->GetValue(*Object("a"), *properties.Find("size")),
              store::Value(std::int32_t{7}));
    EXPECT_EQ(store->GetValue(*Object("a"), *properties.Find("words")),
              store::Value(store::Currency{15'000}));
    EXPECT_EQ(Value("a", "kind"), "k");
    EXPECT_FALSE(store->HasValue(*Object("b"), *properties.Find("size")));
    EXPECT_THAT(result.messages, ElementsAre(HasSubstr("m.xmi:3:1: \"big\" is no value of A.size"),
                                             HasSubstr("m.xmi:3:1: \"8\" is no value of A.count"),
                                             HasSubstr("\"x\ny\" is no value of A.words")));
}

TEST_F(EcoreImport, WhatEveryObjectHasMayBeCalledOtherwise) {
    Take({{"p.ecore", Metamodel("<eClassifiers xsi:type='ecore:EClass' name='A'/>")}});
    store->Rename(store->Meta().nodes.Find("A")->properties.Find("Description"), "About");
    Take({{"m.xmi", Model("<p:A xmlns:o='urn:orvane:repository' o:description='red'/>")}});
    EXPECT_EQ(Value("m~1", "About"), "red");
}

TEST_F(EcoreImport, OmittedValuesReadAsTheirDefaults) {
    Take(Metamodel(
             ClassWith(Attribute("a", "EInt") + Attribute("b", "EInt", "defaultValueLiteral='5'") +
                       Attribute("c", "EIntegerObject") + Attribute("d", "EBoolean") +
                       Attribute("e", "EString") +
                       "<eStructuralFeatures xsi:type='ecore:EAttribute' name='g' eType='#//E'/>") +
             "<eClassifiers xsi:type='ecore:EEnum' name='E'><eLiterals name='one'/>"
             "<eLiterals name='two'/></eClassifiers>"),
         Model("<p:A/>"));
    EXPECT_EQ(Value("m~1", "a"), "0");
    EXPECT_EQ(Value("m~1", "b"), "5");
    EXPECT_EQ(Value("m~1", "c"), "-");
    EXPECT_EQ(Value("m~1", "d"), "false");
    EXPECT_EQ(Value("m~1", "e"), "-");
    EXPECT_EQ(Value("m~1", "g"), "one");
    EXPECT_FALSE(store->HasValue(*Object("m~1"), *Object("m~1")->meta->properties.Find("a")));
}

TEST_F(EcoreImport, EnumerationsHaveTheLiteralsThatModelsWrite) {
    const auto result = Take(
        Metamodel(
            ClassWith(
                "<eStructuralFeatures xsi:type='ecore:EAttribute' name='e' eType='#//Font'/>") +
            "<eClassifiers xsi:type='ecore:EEnum' name='Font'>"
            "<eLiterals name='READ_WRITE' literal='Read / Write'/>"
            "<eLiterals name='none' value='1'/></eClassifiers>"),
        Model("<xmi:XMI><p:A e='Read / Write'/><p:A e='READ_WRITE'/><p:A e='none'/><p:A "
              "e='x'/></xmi:XMI>"));
    EXPECT_THAT(result.messages, ElementsAre("m.xmi:2:174: \"x\" is no value of A.e"));
    EXPECT_EQ(Value("m~1", "e"), "Read / Write");
    EXPECT_EQ(Value("m~2", "e"), "Read / Write");
    EXPECT_EQ(Value("m~3", "e"), "none");
    // The built-in meta type FONT has the name already.
    const auto type = store->Meta().types.Find("p.Font");
    ASSERT_TRUE(type);
    EXPECT_EQ(type->enumeration->atoms.front()->name, "Read / Write");
}

TEST_F(EcoreImport, AttributesMayBeElementsAndHaveSeveralValues) {
    const auto result = Take(
        Metamodel(ClassWith(Attribute("s", "EString") +
                            Attribute("m", "EString", "upperBound='-1'") + Attribute("n", "EInt"))),
        Model("<p:A n='1'><s>line 1\nline 2</s><m>one</m><m>a\\b&#xA;c</m><m></m><n>2</n></p:A>"));
    EXPECT_THAT(result.messages, ElementsAre(HasSubstr("a second value of A.n")));
    EXPECT_EQ(Value("m~1", "s"), "line 1\nline 2");
    EXPECT_EQ(Value("m~1", "m"), "one\na\\\\b\\nc\n");
    EXPECT_EQ(Value("m~1", "n"), "1");
    EXPECT_EQ(result.counts.values, 5);
}

TEST_F(EcoreImport, EmptyTextsLineFeedsAndNil) {
    const auto result =
        Take(Metamodel(ClassWith(Attribute("a", "EString") + Attribute("b", "EString") +
                                 Attribute("c", "EString"))),
             Model("<p:A a='' b='one&#xA;two'><c xsi:nil='true'/></p:A>"));
    EXPECT_THAT(result.messages, IsEmpty());
    EXPECT_EQ(Value("m~1", "a"), "");
    EXPECT_EQ(Value("m~1", "b"), "one\ntwo");
    EXPECT_EQ(Value("m~1", "c"), "-");
    EXPECT_EQ(result.counts.values, 2);
}

TEST_F(EcoreImport, NamesInXmlMayDifferFromThoseOfTheMetamodel) {
    const std::string annotation =
        "<eAnnotations source='http:///org/eclipse/emf/ecore/util/ExtendedMetaData'>"
        "<details key='name' value='";
    const auto result = Take(
        Metamodel("<eClassifiers xsi:type='ecore:EClass' name='A'>" + annotation +
                  "model'/></eAnnotations>"
                  "<eStructuralFeatures xsi:type='ecore:EReference' name='folders' upperBound='-1' "
                  "containment='true' eType='#//A'>" +
                  annotation +
                  "folder'/></eAnnotations>"
                  "</eStructuralFeatures></eClassifiers>"),
        Model("<p:model><folder/><folders/></p:model>"));
    EXPECT_THAT(result.messages, IsEmpty());
    EXPECT_THAT(Nodes(), SizeIs(3));
    EXPECT_TRUE(store->Meta().links.Find("A.folders"));
}

TEST_F(EcoreImport, TheTextOfAnElementMayBeAnAttribute) {
    const auto result =
        Take(Metamodel("<eClassifiers xsi:type='ecore:EClass' name='A'>"
                       "<eStructuralFeatures xsi:type='ecore:EAttribute' name='value' eType='//X'>"
                       "<eAnnotations source='http:///org/eclipse/emf/ecore/util/ExtendedMetaData'>"
                       "<details key='kind' "
                       "value='simple'/></eAnnotations></eStructuralFeatures></eClassifiers>"
                       "<eClassifiers xsi:type='ecore:EDataType' name='X' "
                       "instanceClassName='java.lang.String'/>"),
             Model("<p:A>some text</p:A>"));
    EXPECT_THAT(result.messages, IsEmpty());
    EXPECT_EQ(Value("m~1", "value"), "some text");
}

TEST_F(EcoreImport, XmiTypeCountsAsMuchAsXsiType) {
    const auto result = Take(boxes, Model("<p:Box><parts xmi:type='p:BigPart' code='a'/></p:Box>"));
    EXPECT_THAT(result.messages, IsEmpty());
    EXPECT_EQ(Object("a")->meta->name, "BigPart");
}

TEST_F(EcoreImport, AnXmiIdentifierComesBeforeAnIdentifyingAttribute) {
    Take(boxes, Model("<p:Box some='x a'><parts xmi:id='x' code='a'/><parts code='x2'/></p:Box>"));
    EXPECT_THAT(Nodes(), ElementsAre("m~1: Box (Box 1)", "x: Part (x)", "x2: Part (x2)"));
    EXPECT_THAT(Links(), ElementsAre("m~1 parts x", "m~1 parts x2", "m~1 some x", "m~1 some x"));
}

TEST_F(EcoreImport, IdentifiersThatAreInUseGetANumber) {
    Take(boxes, Model("<p:Box><parts code='a'/><parts code='a'/></p:Box>"));
    Take({{"m.xmi", Model("<p:Box first='a'><parts code='a'/></p:Box>")}});
    EXPECT_THAT(Nodes(), ElementsAre("m~1: Box (Box 1)", "a: Part (a)", "a_2: Part (a_2)",
                                     "m~1_2: Box (m~1_2)", "a_3: Part (a_3)"));
    EXPECT_THAT(Links(), testing::Contains("m~1_2 first a_3"));
}

TEST_F(EcoreImport, DescriptionsComeFromTheDocumentation) {
    const std::string documentation =
        "<eAnnotations source='http://www.eclipse.org/emf/2002/GenModel'>"
        "<details key='documentation' value='What it is'/></eAnnotations>";
    Take({{"p.ecore",
           Metamodel(
               ClassWith(documentation +
                         "<eStructuralFeatures xsi:type='ecore:EAttribute' name='x' eType='//X'>" +
                         documentation +
                         "</eStructuralFeatures><eStructuralFeatures xsi:type='ecore:EReference' "
                         "name='r' eType='//A'>" +
                         documentation + "</eStructuralFeatures>") +
               "<eClassifiers xsi:type='ecore:EDataType' name='X' instanceClassName='int'/>")}});
    EXPECT_EQ(store->Meta().nodes.Find("A")->description, "What it is");
    EXPECT_EQ(store->Meta().nodes.Find("A")->properties.Find("x")->description, "What it is");
    EXPECT_EQ(store->Meta().links.Find("A.r")->description, "What it is");
}

TEST_F(EcoreImport, AttributesThatAreCalledLikeWhatEveryObjectHas) {
    Take(Metamodel(ClassWith(Attribute("Name", "EString") + Attribute("description", "EString") +
                             Attribute("identifier", "EString"))),
         Model("<p:A Name='n' description='d' identifier='i'/>"));
    EXPECT_EQ(Object("m~1")->name, "n");
    EXPECT_EQ(Object("m~1")->description, "d");
    EXPECT_EQ(Value("m~1", "A.identifier"), "i");
    EXPECT_EQ(Value("m~1", "Identifier"), "m~1");
}

TEST_F(EcoreImport, OneFeatureInheritedTwiceIsThereOnce) {
    Take(Metamodel(ClassWith(Attribute("x", "EInt")) +
                   "<eClassifiers xsi:type='ecore:EClass' name='B' eSuperTypes='#//A'/>"
                   "<eClassifiers xsi:type='ecore:EClass' name='C' eSuperTypes='#//A'/>"
                   "<eClassifiers xsi:type='ecore:EClass' name='D' eSuperTypes='#//B #//C #//A'/>"),
         Model("<p:D x='3'/>"));
    EXPECT_EQ(Value("m~1", "x"), "3");
    EXPECT_EQ(store->Meta().nodes.Find("D")->properties.Count(), 4u);
}

TEST_F(EcoreImport, GenericTypesAndSupertypes) {
    const auto result = Take({{"p.ecore", Metamodel(R"(
        <eClassifiers xsi:type='ecore:EClass' name='A'><eTypeParameters name='T'/>
          <eStructuralFeatures xsi:type='ecore:EReference' name='any'><eGenericType eTypeParameter='#//A/T'/></eStructuralFeatures>
          <eStructuralFeatures xsi:type='ecore:EReference' name='a'><eGenericType eClassifier='#//A'/></eStructuralFeatures>
        </eClassifiers>
        <eClassifiers xsi:type='ecore:EClass' name='B'><eGenericSuperTypes eClassifier='#//A'/></eClassifiers>)")}});
    EXPECT_THAT(result.messages, IsEmpty());
    EXPECT_TRUE(store->Meta().nodes.Find("B")->IsKindOf(*store->Meta().nodes.Find("A")));
    EXPECT_EQ(store->Meta().links.Find("A.a")->target->name, "A");
    EXPECT_EQ(store->Meta().links.Find("A.any")->target->name, "EObject");
}

TEST_F(EcoreImport, AReferenceToAnythingLeadsToNodesOfAllMetamodels) {
    Take({{"p.ecore", boxes}});
    const auto result = Take(
        {{"q.ecore", Metamodel("<eClassifiers xsi:type='ecore:EClass' name='Any'>"
                               "<eStructuralFeatures xsi:type='ecore:EReference' name='contents' "
                               "upperBound='-1' containment='true' "
                               "eType='ecore:EClass "
                               "http://www.eclipse.org/emf/2002/Ecore#//EObject'/></eClassifiers>",
                               "name='q' nsURI='urn:q'")},
         {"m.xmi", Model("<q:Any xmlns:q='urn:q'><contents xsi:type='p:Part' code='a'/><contents "
                         "xsi:type='q:Any'/>"
                         "<contents/></q:Any>")}});
    EXPECT_THAT(result.messages, ElementsAre(HasSubstr("an object without a type")));
    EXPECT_THAT(Links(), ElementsAre("m~1 contents a", "m~1 contents m~3"));
    const auto any = store->Meta().nodes.Find("EObject");
    ASSERT_TRUE(any);
    EXPECT_TRUE(any->abstract);
    EXPECT_TRUE(store->Meta().nodes.Find("BigPart")->IsKindOf(*any));
}

TEST_F(EcoreImport, TypesAndSupertypesByXmiIdentifierAndAsElements) {
    const auto result = Take({{"p.ecore", Metamodel(R"(
        <eClassifiers xsi:type='ecore:EClass' xmi:id='_1' name='A' eSuperTypes='_2'>
          <eStructuralFeatures xmi:type='ecore:EAttribute' name='x'>
            <eType xsi:type='ecore:EDataType' href='http://www.eclipse.org/emf/2002/Ecore#//EBoolean'/>
          </eStructuralFeatures>
        </eClassifiers>
        <eClassifiers xmi:type='ecore:EClass' xmi:id='_2' name='B'/>)")}});
    EXPECT_THAT(result.messages, IsEmpty());
    EXPECT_TRUE(store->Meta().nodes.Find("A")->IsKindOf(*store->Meta().nodes.Find("B")));
    EXPECT_EQ(store->Meta().nodes.Find("A")->properties.Find("x")->type->name, "Boolean");
}

TEST_F(EcoreImport, WhatIsNotUnderstoodIsReportedOnceAndLeftOut) {
    const auto result =
        Take(boxes, Model("<p:Box what='1'>\n<parts code='a' what='2'/>\n<parts code='b' "
                          "what='3'/>\n<other><deep/></other>\n"
                          "<parts xsi:type='p:Box'/>\n<parts xsi:type='p:None'/>\n<parts code='c' "
                          "next='z'/>text</p:Box>"));
    EXPECT_THAT(
        result.messages,
        ElementsAre("m.xmi:2:1: Box has no feature \"what\"",
                    "m.xmi:3:1: Part has no feature \"what\" (2 times)",
                    "m.xmi:5:1: Box has no feature \"other\"",
                    "m.xmi:6:1: a Box where a Part belongs",
                    "m.xmi:7:1: the type \"p:None\" is not known", "m.xmi:8:31: a text in a Box",
                    "m.xmi:8:1: the reference \"z\" of Part.next leads nowhere"));
    EXPECT_THAT(Nodes(), SizeIs(4));
}

TEST_F(EcoreImport, FaultyMetamodelsAreReportedAndImportedAsFarAsTheyGo) {
    const auto result = Take({{"p.ecore", Metamodel(R"(
<eClassif xsi:type='ecore:EClass' name='X'/>
<eClassifiers xsi:type='ecore:EClass' name='A' eSuperTypes='#//Missing'>
<eStructuralFeatures xsi:type='ecore:EReference' name='r' eType='#//Missing'/>
<eStructuralFeatures xsi:type='ecore:EAttribute' name='a' eType='#//Missing'/>
<eStructuralFeatures xsi:type='ecore:EAttribute' name='b' eType='//I' defaultValueLiteral='one'/>
<eStructuralFeatures name='c'/>
</eClassifiers>
<eClassifiers xsi:type='ecore:EDataType' name='I' instanceClassName='int'/>
<eClassifiers xsi:type='ecore:EClass' name='A'/>)")}});
    EXPECT_THAT(result.messages,
                ElementsAre("p.ecore:4:1: a package has no \"eClassif\"",
                            "p.ecore:9:1: a feature of A without name or of no known kind",
                            "p.ecore:12:1: a second \"A\" in its package",
                            "p.ecore:5:1: the supertype \"#//Missing\" of A was not found",
                            "p.ecore:6:1: the type \"#//Missing\" of A.r was not found",
                            "p.ecore:7:1: the type \"#//Missing\" of A.a was not found",
                            "p.ecore:8:1: \"one\" is no value of A.b"));
    EXPECT_TRUE(store->Meta().nodes.Find("A"));
}

TEST_F(EcoreImport, ASecondMetamodelWithTheSameNamespaceIsLeftOut) {
    Take({{"p.ecore", boxes}});
    const auto result = Take({{"q.ecore", Metamodel(ClassWith(""))}});
    EXPECT_THAT(result.messages,
                ElementsAre("q.ecore:2:1: the metamodel \"urn:p\" is there already: "
                            "this one is left out"));
    EXPECT_FALSE(store->Meta().nodes.Find("A"));
}

TEST_F(EcoreImport, AnImportIsOneChangeAndCanBeCancelled) {
    const std::string metamodel = Write("p.ecore", boxes);
    const std::string model = Write("m.xmi", Model("<p:Box><parts code='a'/></p:Box>"));
    std::uint64_t last = 0;
    int calls = 0;
    Import(*store, {metamodel, model}, [&](std::uint64_t done, std::uint64_t total) {
        // It can be cancelled while the metamodels are read already.
        EXPECT_TRUE(calls > 1 || done == 0);
        EXPECT_LE(last, done);
        EXPECT_LE(done, total);
        last = done;
        return ++calls > 0;
    });
    EXPECT_GT(calls, 1);
    store = store::Store::Create(store::inMemory);
    const auto before = ContentOf(*store);
    for (int stopAt = 1; stopAt <= calls; ++stopAt) {
        int call = 0;
        EXPECT_EQ(store::NumberOf([&] {
                      Import(*store, {metamodel, model},
                             [&](std::uint64_t, std::uint64_t) { return ++call < stopAt; });
                  }),
                  store::Number::interrupted);
        EXPECT_EQ(ContentOf(*store), before);
    }
}

}  // namespace
}  // namespace repository::ecore
