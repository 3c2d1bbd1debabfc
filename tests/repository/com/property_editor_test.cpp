#include "repository/com/repository_fixture.h"

namespace repository {
namespace {

using testing::ElementsAre;

// The calls that a property editor makes, one after the other.

class PropertyEditorTest : public RepositoryTest {
protected:
    LateBound Properties() { return ObjectIn(person.Call("Properties")); }
    LateBound Property(const char* name) { return ObjectIn(person.Call("Properties", name)); }
    LateBound Dynamic(const LateBound& node) { return ObjectIn(node.Call("GetDynamicProperties")); }

    /// Makes a property as an editor does it with the text of its type box.
    LateBound MakeNew(const char* name, const char* type) {
        EXPECT_EQ(Result(Properties().Call("Search", name)), Value(false));
        const LateBound parent = ObjectIn(person.Call("parent"));
        ObjectIn(parent.Call("MetaTypes", type));
        const LateBound made =
            ObjectIn(parent.Call("MakeProperty", person.Get(), name, type, "", type));
        EXPECT_TRUE(made.Put("IsDynamic", true));
        EXPECT_TRUE(made.Put("IsPersistent", true));
        return made;
    }
};

TEST_F(PropertyEditorTest, TheKindOfEditorFollowsFromTypeWords) {
    const LateBound property = MakeNew("Portrait", "PICTURE");
    EXPECT_EQ(TextOf(property, "DataType"), "String");
    const LateBound type = ObjectIn(property.Call("MetaType"));
    EXPECT_EQ(Result(type.Call("MetaEnum")), support::Nothing());
    EXPECT_EQ(TextOf(type, "name"), "PICTURE");
    ASSERT_TRUE(anna.Do("SetProperty", "Portrait", "anna.png"));
    const LateBound ofAnna = ObjectIn(anna.Call("Properties", "Portrait"));
    EXPECT_EQ(TextOf(ObjectIn(ofAnna.Call("parent")), "DataType"), "String");
}

TEST_F(PropertyEditorTest, ANewAttributeIsDynamicAndHasNoValueAnywhere) {
    MakeNew("Shoe size", "Integer");
    EXPECT_EQ(Result(anna.Call("GetProperty", "Shoe size")), support::Empty());
    EXPECT_THAT(Texts(Dynamic(anna)), ElementsAre());
    ASSERT_TRUE(anna.Do("SetProperty", "Shoe size", 39));
    EXPECT_THAT(Texts(Dynamic(anna)), ElementsAre("Shoe size"));
    EXPECT_EQ(Result(Dynamic(anna).Call("Search", "SHOE SIZE")), Value(true));
    EXPECT_EQ(Result(Dynamic(ben).Call("Search", "Shoe size")), Value(false));
    EXPECT_EQ(Result(ObjectIn(Dynamic(anna).Default("Shoe size")).Call("Value")), Value(short{39}));
}

TEST_F(PropertyEditorTest, ABlobAttributeTellsItsKindInItsDescription) {
    const LateBound icon = MakeNew("Icon", "BLOB");
    ASSERT_TRUE(icon.Put("Description", "[BLOB] ICON"));
    EXPECT_EQ(Result(icon.Call("GetProperty", "Description")), Value("[BLOB] ICON"));
}

TEST_F(PropertyEditorTest, PersistenceIsToggled) {
    const LateBound property = MakeNew("Nickname", "String");
    ASSERT_TRUE(anna.Do("SetProperty", "Nickname", "Annie"));
    for (const bool persistent : {false, true}) {
        ASSERT_TRUE(property.Put("IsPersistent", persistent));
        EXPECT_EQ(Result(property.Call("IsPersistent")), Value(persistent));
        EXPECT_EQ(Result(anna.Call("GetProperty", "Nickname")), Value("Annie"));
    }
}

TEST_F(PropertyEditorTest, ADynamicAttributeIsDeleted) {
    MakeNew("Nickname", "String");
    ASSERT_TRUE(anna.Do("SetProperty", "Nickname", "Annie"));
    ASSERT_TRUE(Properties().Do("Remove", "Nickname"));
    for (const Value& node : ObjectIn(person.Call("Extension")).Elements()) {
        EXPECT_EQ(ErrorOf(Dynamic(LateBound(node)).Do("Remove", "Nickname")), 5);
    }
    EXPECT_EQ(Result(Properties().Call("Search", "Nickname")), Value(false));
    EXPECT_EQ(ErrorOf(anna.Call("GetProperty", "Nickname")), 5);
}

TEST_F(PropertyEditorTest, AnAttributeIsRenamedWithItsValues) {
    ASSERT_TRUE(rep.Call("MakeMetaEnum", "Kind", "A | B"));
    const LateBound old =
        ObjectIn(rep.Call("MakeProperty", person.Get(), "Sort", "String", "Kind::{A | B}", "Kind"));
    ASSERT_TRUE(old.Put("IsDynamic", true));
    ASSERT_TRUE(old.Put("IsPersistent", false));
    ASSERT_TRUE(anna.Do("SetProperty", "Sort", "B"));

    const LateBound renamed =
        ObjectIn(ObjectIn(person.Call("parent"))
                     .Call("MakeProperty", person.Get(), "Category", Result(old.Call("DataType")),
                           Result(old.Call("Description")),
                           Result(ObjectIn(old.Call("MetaType")).Call("name"))));
    ASSERT_TRUE(renamed.Put("IsDynamic", Result(old.Call("IsDynamic"))));
    ASSERT_TRUE(renamed.Put("IsPersistent", Result(old.Call("IsPersistent"))));
    for (const Value& node : ObjectIn(person.Call("Extension")).Elements()) {
        const LateBound object(node);
        ASSERT_TRUE(
            object.Do("SetProperty", "Category", Result(object.Call("GetProperty", "Sort"))));
    }
    int refused = 0;
    for (const Value& node : ObjectIn(person.Call("Extension")).Elements()) {
        if (!Dynamic(LateBound(node)).Do("Remove", "Sort")) ++refused;
    }
    EXPECT_EQ(refused, 1);
    EXPECT_EQ(Result(anna.Call("GetProperty", "Sort")), support::Empty());
    ASSERT_TRUE(Properties().Do("Remove", "Sort"));

    EXPECT_EQ(Result(anna.Call("GetProperty", "Category")), Value("B"));
    EXPECT_EQ(Result(ben.Call("GetProperty", "Category")), support::Empty());
    EXPECT_THAT(Texts(Properties()),
                ElementsAre("Name", "Identifier", "Description", "Age", "Category"));
    EXPECT_EQ(TextOf(old, "name"), "Sort");
    EXPECT_EQ(ErrorOf(old.Call("MetaType")), 35601);
}

TEST_F(PropertyEditorTest, WritingBackWhatIsShownChangesNothing) {
    for (const char* type : {"String", "Long", "Double", "Date", "NOTE", "COLOR", "FONT"}) {
        MakeNew(type, type);
    }
    ASSERT_TRUE(anna.Do("SetProperty", "Double", 0.25));
    for (const Value& property : Properties().Elements()) {
        const std::string name = TextOf(LateBound(property), "name");
        if (name == "Identifier") continue;
        const Value before = Result(anna.Call("GetProperty", name));
        const std::string shown = before.Type() == VT_EMPTY ? "" : before.Text();
        ASSERT_TRUE(anna.Do("SetProperty", name, shown)) << name;
        EXPECT_EQ(Result(anna.Call("GetProperty", name)), before) << name;
    }
    EXPECT_THAT(Texts(Dynamic(anna)), ElementsAre("Double"));
}

TEST_F(PropertyEditorTest, TheTypeIsChangedToTheObjectThatWasPicked) {
    const LateBound property = MakeNew("Colour", "String");
    const LateBound color = ObjectIn(rep.Call("MetaTypes", "COLOR"));
    EXPECT_FALSE(Same(ObjectIn(property.Call("MetaType")), color));
    ASSERT_TRUE(property.PutRef("MetaType", color.Get()));
    EXPECT_TRUE(Same(ObjectIn(property.Call("MetaType")), color));
    EXPECT_EQ(ErrorOf(property.PutRef("MetaType", person.Get())), 13);
    EXPECT_EQ(ErrorOf(property.PutRef("MetaType", support::Nothing())), 91);
    EXPECT_EQ(ErrorOf(property.Put("MetaType", "Quaternion")), 5);
    EXPECT_TRUE(Same(ObjectIn(property.Call("MetaType")), color));
}

}  // namespace
}  // namespace repository
