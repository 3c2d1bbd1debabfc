#include <gtest/gtest.h>

#include "repository/store/scratch.h"

namespace repository::store {
namespace {

// Every file is written and synchronised; some systems take their time for that.
#ifdef _WIN32
constexpr std::size_t stride = 20;
#else
constexpr std::size_t stride = 1;
#endif

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
            for (const MetaNodeRef& meta : store->Meta().nodes) {
                Id after = 0;
                for (;;) {
                    const auto nodes = store->Read(ObjectSet::Instances(*meta), after, 100);
                    if (nodes.empty()) break;
                    for (const ObjectRef& node : nodes) {
                        for (const auto& property : meta->properties) {
                            store->GetValue(*node, *property);
                        }
                        store->Count(ObjectSet::Outgoing(*node));
                    }
                    after = nodes.back()->id;
                }
            }
            return true;
        } catch (const Error&) {
            return false;
        }
    }

    const Scratch scratch;
    const std::string file = scratch.File("a.orv");
    std::string whole;
};

TEST_F(DamagedFile, CutAnywhereItIsRefusedAndLeftAsItIs) {
    for (std::size_t length = whole.size() - 1; length > 0;
         length -= std::min(length, 977 * stride)) {
        const std::string cut = whole.substr(0, length);
        WriteFile(file, cut);
        EXPECT_EQ(NumberOf([&] { Store::Open(file); }), Number::invalidFileFormat) << length;
        EXPECT_EQ(ReadFile(file), cut) << length;
    }
}

TEST_F(DamagedFile, FlippedBytesNeverDoMoreThanAnError) {
    int refused = 0;
    for (std::size_t at = 0; at < whole.size(); at += 331 * stride) {
        std::string flipped = whole;
        flipped[at] = static_cast<char>(flipped[at] ^ 0x5A);
        WriteFile(file, flipped);
        if (!ReadsCompletely()) ++refused;
    }
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
