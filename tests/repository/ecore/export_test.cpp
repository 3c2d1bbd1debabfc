#include <filesystem>
#include <iterator>

#include "repository/ecore/exporter.h"
#include "repository/ecore/file.h"
#include "repository/ecore/model_fixture.h"
#include "repository/store/loader.h"

namespace repository::ecore {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class EcoreExport : public ModelTest {
protected:
    std::size_t FileCount() const {
        using Iterator = std::filesystem::directory_iterator;
        return static_cast<std::size_t>(
            std::distance(Iterator(store::PathOf(scratch.Folder())), Iterator()));
    }

    /// Exports the repository, imports that into another one and compares the two.
    void ExpectSameAgain() {
        EXPECT_THAT(Export(*store, Path("out.xmi")), IsEmpty());
        const auto again = store::Store::Create(store::inMemory);
        const ImportResult result = Import(*again, {Path("out.xmi")});
        EXPECT_THAT(result.messages, IsEmpty());
        ExpectSame(ContentOf(*store), ContentOf(*again));
    }
};

const std::string library = Metamodel(R"(
  <eClassifiers xsi:type='ecore:EClass' name='Library' eSuperTypes='#//Named'>
    <eStructuralFeatures xsi:type='ecore:EReference' name='books' upperBound='-1' eType='#//Book'
        containment='true' eOpposite='#//Book/library'/>
    <eStructuralFeatures xsi:type='ecore:EReference' name='best' upperBound='-1' eType='#//Book'/>
    <eStructuralFeatures xsi:type='ecore:EReference' name='any' upperBound='-1' containment='true'
        eType='ecore:EClass http://www.eclipse.org/emf/2002/Ecore#//EObject'/>
  </eClassifiers>
  <eClassifiers xsi:type='ecore:EClass' name='Named' abstract='true'>
    <eStructuralFeatures xsi:type='ecore:EAttribute' name='name'
        eType='ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//EString'/>
  </eClassifiers>
  <eClassifiers xsi:type='ecore:EClass' name='Book' eSuperTypes='#//Named'>
    <eStructuralFeatures xsi:type='ecore:EReference' name='library' eType='#//Library' eOpposite='#//Library/books'/>
    <eStructuralFeatures xsi:type='ecore:EAttribute' name='isbn' iD='true' eType='ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//EString'/>
    <eStructuralFeatures xsi:type='ecore:EAttribute' name='words' upperBound='-1' eType='ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//EString'/>
    <eStructuralFeatures xsi:type='ecore:EAttribute' name='pages' defaultValueLiteral='1' eType='ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//EInt'/>
    <eStructuralFeatures xsi:type='ecore:EAttribute' name='day' eType='ecore:EDataType http://www.eclipse.org/emf/2002/Ecore#//EDate'/>
    <eStructuralFeatures xsi:type='ecore:EAttribute' name='kind' eType='#//Kind'/>
  </eClassifiers>
  <eClassifiers xsi:type='ecore:EClass' name='Note'/>
  <eClassifiers xsi:type='ecore:EEnum' name='Kind'><eLiterals name='novel'/><eLiterals name='sf' value='1' literal='Science fiction'/></eClassifiers>)");

const std::string shelves = Model(R"(<p:Library name='L' best='b a'>
  <books isbn='a' name='A &lt;&amp;&quot;&#xA;x' pages='7' day='2020-02-02T10:11:12.013' kind='Science fiction'><words>one</words><words></words></books>
  <books isbn='b'/><books xmi:id='x y#z' isbn='c' name=''/><books name='no id'/>
  <any xsi:type='p:Book' isbn='d'/><any xsi:type='p:Note'/></p:Library>)");

TEST_F(EcoreExport, WhatWasImportedComesOutAgain) {
    Take(library, shelves);
    ExpectSameAgain();
}

TEST_F(EcoreExport, SeveralMetamodelsGoIntoOneFile) {
    Take(
        {{"p.ecore", library},
         {"q.ecore",
          Metamodel(
              "<eClassifiers xsi:type='ecore:EClass' name='Book' eSuperTypes='p.ecore#//Book'/>"
              "<eClassifiers xsi:type='ecore:EClass' name='Box'>"
              "<eStructuralFeatures xsi:type='ecore:EReference' name='of' eType='p.ecore#//Book'/>"
              "</eClassifiers>",
              "name='q' nsURI='urn:q' nsPrefix='p'")},
         {"m.xmi", shelves},
         {"n.xmi", Model("<xmi:XMI xmlns:q='urn:q'><q:Box of='k'/><q:Book isbn='k'/></xmi:XMI>")}});
    ExpectSameAgain();
}

TEST_F(EcoreExport, WhatWasMadeInTheRepositoryComesOutToo) {
    Take(library, shelves);
    const auto book = store->Meta().nodes.Find("Book");
    const auto person = store->MakeMetaNode("Person & Co.", "");
    const auto author = store->MakeMetaNode("Author", "");
    store->AddSupertype(author, person);
    // As every class of an import is.
    store->AddSupertype(person, store->Meta().nodes.Find("EObject"));
    const auto wrote = store->MakeMetaLink("Author wrote Book", "wrote it", author, book, "");
    const auto& types = store->Meta().types;
    const auto colour = store->MakeProperty(author, "Colour 1", types.Find("COLOR"), "");
    const auto age = store->MakeProperty(author, "Age", types.Find("Long"), "");
    const auto mood =
        store->MakeProperty(author, "Mood",
                            store->MakeMetaType("Mood", store::DataType::string, "",
                                                store->MakeEnum("Mood", {"good", "not so good"})),
                            "");
    store->SetDefault(mood, std::string("not so good"));
    store->MakeProperty(author, "Other mood", mood->type, "");
    store->MakeMetaType("Unused", store::DataType::string, "What nothing has",
                        store->MakeEnum("Unused", {"a", "b"}));
    store->SetDefault(age, std::int32_t{18});
    const auto shelf = store->MakeProperty(book, "Shelf", types.Find("Long"), "");
    const auto anna = store->MakeNode(author, "anna 1", "Anna");
    store->MakeNode(person, "p", "P");
    store->Describe(anna, "writes");
    store->SetValue(anna, *colour, std::string("255"));
    store->SetValue(anna, *age, std::int32_t{40});
    store->SetValue(anna, *mood, std::string("not so good"));
    store->SetValue(store->Find("a"), *shelf, std::int32_t{3});
    store->MakeLink(wrote, anna, store->Find("b"), "anna 1 wrote it b", "b");
    store->Rename(store->Find("p"), "Renamed");
    store->Remove(store->Find("b"));
    const std::string name = store->Find("a")->name;
    store->MakeLink(wrote, anna, store->Find("a"), "anna 1 wrote it a", name);
    store->MakeLink(wrote, anna, store->Find("a"), "anna 1 wrote it a#2", name);
    Take({{"none.xmi", "<x/>"}});
    ExpectSameAgain();
}

TEST_F(EcoreExport, WhatWasRenamedAndDescribedComesOutAsItIsNow) {
    Take(library, shelves);
    const store::MetaModel& meta = store->Meta();
    const auto book = meta.nodes.Find("Book");
    store->Rename(book, "Volume");
    store->Describe(book, "Something to read");
    store->Rename(meta.links.Find("Library.best"), "Favourites");
    store->Describe(meta.links.Find("Favourites"), "In no order");
    const auto pages = book->properties.Find("pages");
    store->Rename(pages, "Number of pages");
    store->Describe(pages, "Without the covers");
    store->SetDynamic(pages, true);
    store->SetPersistent(book->properties.Find("day"), false);
    const auto added = store->MakeMetaNode("Shelf", "Holds books");
    store->AddSupertype(added, meta.nodes.Find("EObject"));
    store->MakeMetaLink("Shelf holds Volume", "holds", added, book, "From left to right");
    store->MakeProperty(added, "Height", meta.types.Find("Long"), "In millimetres");
    ExpectSameAgain();
    // Also what was exported and imported is known again.
    const std::string model = Path("out.xmi");
    store = store::Store::Create(store::inMemory);
    Import(*store, {model});
    store->Rename(store->Meta().nodes.Find("Volume"), "Tome");
    store->Describe(store->Meta().nodes.Find("Shelf"), "");
    ExpectSameAgain();
}

TEST_F(EcoreExport, PropertiesHaveTheTypesAndDefaultsOfNow) {
    Take(library, Model("<p:Library name='L'/>"));
    const store::MetaModel& meta = store->Meta();
    const auto& properties = meta.nodes.Find("Book")->properties;
    store->Retype(properties.Find("pages"), meta.types.Find("String"));
    store->SetDefault(properties.Find("pages"), std::string("many"));
    store->SetDefault(properties.Find("kind"), store::Empty());
    store->Retype(properties.Find("day"), meta.types.Find("Kind"));
    store->Retype(properties.Find("isbn"), meta.types.Find("COLOR"));
    store->Retype(properties.Find("words"), meta.types.Find("String"));
    const auto mood = store->MakeMetaType("Mood", store::DataType::string, "",
                                          store->MakeEnum("Mood", {"good", "bad"}));
    const auto own = store->MakeProperty(meta.nodes.Find("Book"), "Mood", mood, "");
    store->SetDefault(own, std::string("bad"));
    ExpectSameAgain();
    store->Retype(properties.Find("kind"), mood);
    ExpectSameAgain();
    store->SetDefault(properties.Find("kind"), std::string("bad"));
    ExpectSameAgain();
}

TEST_F(EcoreExport, ObjectsWithoutANameComeOutWithout) {
    Take(library, Model("<p:Library name='L'/>"));
    for (const char* meta : {"Book", "Note", "Library"}) {
        store->MakeNode(store->Meta().nodes.Find(meta), std::string("my ") + meta, "");
    }
    ExpectSameAgain();
}

TEST_F(EcoreExport, TypesThatEcoreDoesNotHaveAreReported) {
    Take(library, Model("<p:Library name='L'/>"));
    store->MakeMetaType("Length", store::DataType::doubleFloat, "In metres", nullptr);
    store->MakeMetaType("Mood", store::DataType::string, "", store->MakeEnum("Feeling", {"good"}));
    EXPECT_THAT(Export(*store, Path("out.xmi")),
                ElementsAre("the meta type Length is not exported",
                            "the enumeration Feeling is exported as Mood"));
}

/// A class with an attribute, and one that has it from the first.
constexpr const char* sizeOfAAndB =
    "<eClassifiers xsi:type='ecore:EClass' name='A'>"
    "<eStructuralFeatures xsi:type='ecore:EAttribute' name='size' eType='ecore:"
    "EDataType http://www.eclipse.org/emf/2002/Ecore#//EInt'/></eClassifiers>"
    "<eClassifiers xsi:type='ecore:EClass' name='B' eSuperTypes='#//A'/>";

TEST_F(EcoreExport, WhatOnlyOneClassHasOfAnotherTypeIsReported) {
    Take({{"p.ecore", Metamodel(sizeOfAAndB)}});
    const auto& types = store->Meta().types;
    store->Retype(store->Meta().nodes.Find("B")->properties.Find("size"), types.Find("String"));
    EXPECT_THAT(Export(*store, Path("out.xmi")),
                ElementsAre("the type of the property B.size is not exported as it is now"));
}

TEST_F(EcoreExport, LinksWithANameOrAnIdentifierOfTheirOwnAreReported) {
    Take(library, shelves);
    const auto best = store->Meta().links.Find("Library.best");
    const auto shelf = store->Find("m~1");
    store->MakeLink(best, shelf, store->Find("d"), "first", store->Find("d")->name);
    store->Describe(store->MakeLink(best, shelf, store->Find("d"), "second", "The second"),
                    "Not the first");
    store->Rename(store->Find("a"), "Another A");
    EXPECT_THAT(Export(*store, Path("out.xmi")),
                testing::UnorderedElementsAre(
                    "the identifiers, names or descriptions of 3 links of Library.best are not "
                    "exported",
                    "the identifiers, names or descriptions of 1 links of Library.books are not "
                    "exported"));
}

TEST_F(EcoreExport, WhatOnlyOneClassCallsOtherwiseIsReported) {
    Take({{"p.ecore", Metamodel(sizeOfAAndB)}});
    const auto size = store->Meta().nodes.Find("B")->properties.Find("size");
    store->Rename(size, "Length");
    EXPECT_THAT(Export(*store, Path("out.xmi")),
                ElementsAre("the name of the property B.Length is not exported as it is now"));
    store->Rename(store->Meta().nodes.Find("A")->properties.Find("size"), "Length");
    ExpectSameAgain();
}

TEST_F(EcoreExport, ARepositoryWithoutAnything) {
    ExpectSameAgain();
}

TEST_F(EcoreExport, WhatCannotBeExpressedIsReported) {
    Take(library, shelves);
    store->Rename(store->Find("a"), std::string("bell \x07"));
    const auto twice = store->Meta().links.Find("Library.any");
    store->MakeLink(twice, store->Find("m~1"), store->Find("a"), "second", "");
    EXPECT_THAT(Export(*store, Path("out.xmi")),
                testing::UnorderedElementsAre(
                    HasSubstr("is contained twice: the link \"second\""),
                    "\"a\" has a text with characters that XML does not have",
                    "the identifiers, names or descriptions of 1 links of Library.best are not "
                    "exported",
                    "the identifiers, names or descriptions of 1 links of Library.books are not "
                    "exported"));
}

TEST_F(EcoreExport, ObjectsThatContainEachOtherAreWrittenOnce) {
    Take(
        {{"p.ecore", Metamodel("<eClassifiers xsi:type='ecore:EClass' name='A'>"
                               "<eStructuralFeatures xsi:type='ecore:EReference' name='in' "
                               "upperBound='-1' eType='#//A' containment='true'/></eClassifiers>")},
         {"m.xmi", Model("<p:A><in><in/></in></p:A>")}});
    store->MakeLink(store->Meta().links.Find("A.in"), store->Find("m~3"), store->Find("m~1"),
                    "back", "");
    EXPECT_THAT(Export(*store, Path("out.xmi")),
                ElementsAre("\"m~1\" contains itself: the link \"back\" is not exported",
                            HasSubstr("1 links of A.in are not exported")));
    const auto again = store::Store::Create(store::inMemory);
    EXPECT_EQ(Import(*again, {Path("out.xmi")}).counts.objects, 3);
}

TEST_F(EcoreExport, ReferencesToUnusualIdentifiers) {
    Take(library, Model("<p:Library name='L'/>"));
    const auto best = store->Meta().links.Find("Library.best");
    const auto book = store->Meta().nodes.Find("Book");
    for (const std::string identifier :
         {"a#b", "#", "/", "/0", "//@books.0", "x y", "m.xmi#/0", "plain"}) {
        store->MakeNode(book, identifier, identifier);
        store->Change([&] {
            store::Loader(*store).AddLink(*best, store->Find("m~1")->id,
                                          store->Find(identifier)->id);
        });
    }
    ExpectSameAgain();
}

TEST_F(EcoreExport, BothFilesAreReplacedOrNone) {
    Write("out.ecore", "before");
    {
        NewFile metamodel(Path("out.ecore"));
        NewFile model(Path("out.xmi"));
        metamodel.Write("after");
        model.Write("after");
        std::filesystem::create_directories(store::PathOf(Path("out.xmi/in")));
        EXPECT_EQ(store::NumberOf([&] { metamodel.CommitWith(model); }),
                  store::Number::pathFileAccess);
        EXPECT_EQ(store::ReadFile(Path("out.ecore")), "before");
        std::filesystem::remove_all(store::PathOf(Path("out.xmi")));
    }
    EXPECT_EQ(FileCount(), 1u);
    NewFile metamodel(Path("out.ecore"));
    NewFile model(Path("out.xmi"));
    metamodel.Write("after");
    metamodel.CommitWith(model);
    EXPECT_EQ(store::ReadFile(Path("out.ecore")), "after");
    EXPECT_EQ(FileCount(), 2u);
}

TEST_F(EcoreExport, WhatAnotherProgramMadeIsExported) {
    Take(library, Model("<p:Library xmi:id='l'/>"));
    store->SaveAs(Path("a.orv"));
    const auto theirs = store::Store::Open(Path("a.orv"));
    const auto city = theirs->MakeMetaNode("City", "");
    theirs->MakeNode(city, "paris", "Paris");
    theirs->Remove(store::MetaObjectRef(theirs->Meta().nodes.Find("Note")));
    EXPECT_THAT(Export(*store, Path("out.xmi")), IsEmpty());
    EXPECT_THAT(store::ReadFile(Path("out.xmi")), HasSubstr("City xmi:id=\"paris\""));
    EXPECT_THAT(store::ReadFile(Path("out.ecore")), testing::Not(HasSubstr("Note")));
}

TEST_F(EcoreExport, TheFilesAreReplacedWhenTheyAreComplete) {
    Take(library, shelves);
    Write("out.ecore", "before");
    Export(*store, Path("out.ecore"));
    EXPECT_THAT(store::ReadFile(Path("out.ecore")), HasSubstr("<ecore:EPackage"));
    EXPECT_THAT(store::ReadFile(Path("out.xmi")), HasSubstr("schemaLocation=\"urn:p out.ecore\""));
    EXPECT_EQ(store::NumberOf([&] { Export(*store, Path("no/out.xmi")); }),
              store::Number::pathNotFound);
    EXPECT_EQ(store::NumberOf([&] { Export(*store, ""); }), store::Number::pathFileAccess);
    EXPECT_EQ(FileCount(), 4u);
}

}  // namespace
}  // namespace repository::ecore
