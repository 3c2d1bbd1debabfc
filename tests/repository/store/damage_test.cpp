#include <gtest/gtest.h>

#include "repository/store/scratch.h"

namespace repository::store {
namespace {

#ifdef _WIN32
constexpr std::size_t placesInShort = 40;
#else
constexpr std::size_t placesInShort = 200;
#endif

/// The number of places at which a file is damaged.
std::size_t Places() {
    return IsLongRun() ? 1000 : placesInShort;
}

class DamagedFile : public testing::Test {
protected:
    void SetUp() override {
        const auto store = Store::Create(file);
        const Small small(*store);
        store->Change([&] {
            for (int i = 0; i < 500; ++i) {
                const auto node =
                    store->MakeNode(small.person, "x" + std::to_string(i), "Somebody");
                store->SetValue(node, *small.age, std::int32_t{i});
            }
        });
        whole = ReadFile(file);
        ASSERT_GT(whole.size(), 40000u);
    }

    /// Opens the file and reads all of it; true when nothing was refused.
    bool ReadsCompletely() {
        try {
            const auto store = Store::Open(file);
            for (const MetaNodeRef& meta : store->Meta().nodes) ReadAll(*store, *meta);
            for (const MetaLinkRef& meta : store->Meta().links) {
                for (const ObjectRef& link : ReadAll(*store, *meta)) {
                    store->Source(*link);
                    store->Target(*link);
                }
            }
            return true;
        } catch (const Error&) {
            return false;
        }
    }

    static std::vector<ObjectRef> ReadAll(Store& store, const MetaObject& meta) {
        const auto objects = store.Read(ObjectSet::Instances(meta), 0, 1000);
        for (const ObjectRef& object : objects) {
            for (const auto& property : meta.properties) store.GetValue(*object, *property);
        }
        return objects;
    }

    const Scratch scratch;
    const std::string file = scratch.File("a.orv");
    std::string whole;
};

TEST_F(DamagedFile, CutAnywhereItIsRefusedAndLeftAsItIs) {
    for (std::size_t place = 1; place <= Places(); ++place) {
        const std::string cut = whole.substr(0, place * (whole.size() - 1) / Places());
        WriteFile(file, cut);
        EXPECT_EQ(NumberOf([&] { Store::Open(file); }), Number::invalidFileFormat) << cut.size();
        EXPECT_EQ(ReadFile(file), cut) << cut.size();
    }
}

TEST_F(DamagedFile, FlippedBytesNeverDoMoreThanAnError) {
    int refused = 0;
    for (std::size_t place = 0; place < Places(); ++place) {
        std::string flipped = whole;
        char& byte = flipped[place * whole.size() / Places()];
        byte = static_cast<char>(byte ^ 0x5A);
        WriteFile(file, flipped);
        if (!ReadsCompletely()) ++refused;
    }
    RecordProperty("refused", refused);
    EXPECT_GT(refused, 0);
    WriteFile(file, whole);
    EXPECT_TRUE(ReadsCompletely());
}

TEST_F(DamagedFile, AMissingTableIsNamed) {
    {
        Database database(file, Database::Mode::readWrite);
        database.Execute("PRAGMA foreign_keys = OFF");
        database.Execute("DROP VIEW value");
        database.Execute("DROP TABLE property_value");
    }
    const std::string text = TextOf([&] { Store::Open(file); });
    EXPECT_NE(text.find("property_value"), std::string::npos) << text;
}

}  // namespace
}  // namespace repository::store
