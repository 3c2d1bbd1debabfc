#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "repository/store/scratch.h"
#include "repository/store/search.h"

namespace repository::store {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class SearchTest : public testing::Test {
protected:
    std::vector<std::string> Found(const std::string& text) {
        std::vector<std::string> identifiers;
        for (const Id id : store->Search(text)) {
            identifiers.push_back(store->Get(id)->identifier);
        }
        return identifiers;
    }

    const Scratch scratch;
    const std::string file = scratch.File("a.orv");
    const std::unique_ptr<Store> store = Store::Create(file);
    const Small small = Small(*store);
    const MetaPropertyRef note =
        store->MakeProperty(small.house, "Note", store->Meta().types.Find("NOTE"), "");
};

TEST_F(SearchTest, NodesAndLinksAreFoundByTheirNamesAndTexts) {
    store->SetValue(small.cottage, *note, std::string("A roof of thatch\r\nand a garden"));
    store->Describe(small.ben, "Likes gardening");
    EXPECT_THAT(Found("anna"), ElementsAre("p1"));
    EXPECT_THAT(Found("1990"), ElementsAre("l1"));
    EXPECT_THAT(Found("thatch roof"), ElementsAre("h1"));
    EXPECT_THAT(Found("gardening"), ElementsAre("p2"));
    EXPECT_THAT(Found("thatch gardening"), IsEmpty());
    EXPECT_THAT(Found(""), IsEmpty());
}

TEST_F(SearchTest, TheLastWordMayBeTheBeginningOfOne) {
    store->SetValue(small.cottage, *note, std::string("A roof of thatch"));
    EXPECT_THAT(Found("roof tha"), ElementsAre("h1"));
    EXPECT_THAT(Found("roo thatch"), IsEmpty());
    EXPECT_THAT(Found("cot"), ElementsAre("h1"));
}

TEST_F(SearchTest, CaseAndAccentsDoNotCount) {
    store->Rename(small.anna, "\u00C4nne M\u00DCLLER");
    EXPECT_THAT(Found("anne m\u00FCller"), ElementsAre("p1"));
    EXPECT_THAT(Found("MULL"), ElementsAre("p1"));
}

TEST_F(SearchTest, NamesComeBeforeOtherTexts) {
    store->SetValue(small.cottage, *note, std::string("rosebud"));
    store->MakeNode(small.house, "h2", "Rosebud");
    store->MakeNode(small.house, "h3", "Rosebud and many more words in a long name of a house");
    EXPECT_THAT(Found("rosebud"), ElementsAre("h2", "h3", "h1"));
}

TEST_F(SearchTest, ChangesShowAtOnce) {
    EXPECT_THAT(Found("ben"), ElementsAre("p2"));
    store->Rename(small.ben, "Benno");
    EXPECT_THAT(Found("ben"), ElementsAre("p2"));
    EXPECT_THAT(Found("benno"), ElementsAre("p2"));
    store->SetValue(small.cottage, *note, std::string("first"));
    store->SetValue(small.cottage, *note, std::string("second"));
    EXPECT_THAT(Found("first"), IsEmpty());
    EXPECT_THAT(Found("second"), ElementsAre("h1"));
    store->SetValue(small.cottage, *note, Empty());
    EXPECT_THAT(Found("second"), IsEmpty());
    store->Remove(small.anna);
    EXPECT_THAT(Found("anna"), IsEmpty());
    EXPECT_THAT(Found("1990"), IsEmpty());
    store->Undo();
    EXPECT_THAT(Found("anna"), ElementsAre("p1"));
    EXPECT_THAT(Found("1990"), ElementsAre("l1"));
}

TEST_F(SearchTest, SoDoChangesOfTheMetaModel) {
    store->SetValue(small.cottage, *note, std::string("thatch"));
    store->Remove(note);
    EXPECT_THAT(Found("thatch"), IsEmpty());
    store->Undo();
    EXPECT_THAT(Found("thatch"), ElementsAre("h1"));
    store->Remove(small.house);
    EXPECT_THAT(Found("thatch"), IsEmpty());
}

TEST_F(SearchTest, ChangesInTheMiddleOfAChangeShowAndGo) {
    store->BeginChange("Work");
    store->MakeNode(small.house, "h2", "Villa");
    EXPECT_THAT(Found("villa"), ElementsAre("h2"));
    store->CancelChange();
    EXPECT_THAT(Found("villa"), IsEmpty());
}

TEST_F(SearchTest, WhatAnotherProgramChangedIsFound) {
    {
        Database other(file, Database::Mode::readWrite);
        other.Execute("UPDATE object SET name = 'Susanna' WHERE identifier = 'p1'");
    }
    EXPECT_THAT(Found("susanna"), ElementsAre("p1"));
    const auto second = Store::Open(file);
    second->Rename(second->Find("p1"), "Hanna");
    EXPECT_THAT(Found("hanna"), ElementsAre("p1"));
}

TEST_F(SearchTest, NothingInATextIsMoreThanText) {
    store->MakeNode(small.house, "h2", "a AND b OR (c) NOT \"d\" NEAR/2 name:e* ^f + g-h {i}");
    EXPECT_THAT(Found("AND"), ElementsAre("h2"));
    EXPECT_THAT(Found("b OR"), ElementsAre("h2"));
    EXPECT_THAT(Found("name:e*"), ElementsAre("h2"));
    EXPECT_THAT(Found("\"d\""), ElementsAre("h2"));
    EXPECT_THAT(Found("(c) ^f {i}"), ElementsAre("h2"));
    EXPECT_THAT(Found("anna OR ben"), IsEmpty());
    EXPECT_THAT(Found("nam:anna"), IsEmpty());
    for (const std::string text : {"\"", "\"\"\"", "*", "-", "' OR 1=1 --", "(((", "a\"b", "^", "+",
                                   ":", "\\", "\xFF\xFE", "NEAR(", "{x} :", "\x01\x02"}) {
        EXPECT_NO_THROW(store->Search(text)) << text;
    }
    EXPECT_NO_THROW(store->Search(std::string("an\0na", 5)));
    EXPECT_THAT(Found("anna ..."), ElementsAre("p1"));
    EXPECT_THAT(Found("... anna"), ElementsAre("p1"));
    EXPECT_NO_THROW(store->Search(std::string(100000, 'y')));
    std::string words;
    for (int i = 0; i < 5000; ++i) words += "anna ";
    EXPECT_THAT(Found(words), ElementsAre("p1"));
}

TEST_F(SearchTest, TheIndexIsThatOfAllTexts) {
    store->Change([&] {
        for (int i = 0; i < 300; ++i) {
            store->MakeNode(small.house, "x" + std::to_string(i), "Common " + std::to_string(i));
        }
    });
    EXPECT_EQ(store->Search("common").size(), 300u);
    Database database(file, Database::Mode::readWrite);
    EXPECT_NO_THROW(database.Execute("INSERT INTO search(search) VALUES('integrity-check')"));
    EXPECT_EQ(database.ReadInteger("SELECT count(*) FROM search"), 304);
    EXPECT_EQ(database.ReadInteger("SELECT count(*) FROM search_pending"), 0);
}

}  // namespace
}  // namespace repository::store
