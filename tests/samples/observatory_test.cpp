#include "hosting/late_bound.h"
#include "samples/sample_run.h"
#include "support/temporary_folder.h"
#include "support/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace {

using hosting::LateBound;
using support::ProgramResult;
using support::TemporaryFolder;
using testing::IsEmpty;
using testing::IsSupersetOf;

const std::filesystem::path sample = std::filesystem::absolute(L"samples/observatory");

ProgramResult RunScript(const std::vector<std::wstring>& arguments) {
    return support::RunHosted(sample / "observatory.vbs", arguments);
}

std::string TextOf(const _variant_t& value) {
    return value.vt == VT_EMPTY ? "" : support::Utf8(std::wstring(_bstr_t(value)));
}

/// The sample repository, made anew.
class ObservatorySample : public testing::Test {
protected:
    ObservatorySample() {
        const std::wstring file = folder.File(L"observatory.orvane");
        const ProgramResult made = RunScript({file});
        EXPECT_THAT(made.errors, IsEmpty());
        EXPECT_EQ(made.exitCode, 0);
        repository.Call(L"Open", file.c_str());
    }
    ~ObservatorySample() override { repository.Call(L"Close"); }

    LateBound MetaNode(const wchar_t* name) const {
        return LateBound(repository.Call(L"MetaNodes", name));
    }
    long NodesOf(const wchar_t* metaNode) const {
        return LateBound(MetaNode(metaNode).Call(L"Extension")).Get(L"Count");
    }
    std::string ValueOf(const wchar_t* node, const wchar_t* property) const {
        return TextOf(LateBound(repository.Call(L"Objects", node)).Call(L"GetProperty", property));
    }

    TemporaryFolder folder;
    LateBound repository = LateBound::Create(L"OrvaneRepository.Repository");
};

TEST_F(ObservatorySample, HasNodesAndLinksOfEachKind) {
    EXPECT_EQ(NodesOf(L"Instrument"), 3);
    EXPECT_EQ(NodesOf(L"Person"), 2);
    EXPECT_EQ(NodesOf(L"Target"), 3);
    EXPECT_EQ(NodesOf(L"Observation"), 4);
    const LateBound used(repository.Call(L"MetaLinks", L"Observation uses Instrument"));
    EXPECT_EQ(static_cast<long>(LateBound(used.Call(L"Extension")).Get(L"Count")), 4);
}

TEST_F(ObservatorySample, HasPropertiesOfEveryDataType) {
    std::set<std::string> words;
    std::set<std::string> types;
    for (const wchar_t* name : {L"Instrument", L"Person", L"Target", L"Observation"}) {
        const LateBound properties(MetaNode(name).Call(L"Properties"));
        const long count = properties.Get(L"Count");
        for (long i = 1; i <= count; ++i) {
            const LateBound property(properties.Call(L"Item", i));
            words.insert(TextOf(property.Get(L"DataType")));
            types.insert(TextOf(LateBound(property.Get(L"MetaType")).Get(L"name")));
        }
    }
    EXPECT_THAT(words, IsSupersetOf({"Boolean", "Byte", "Integer", "Long", "LongLong", "Single",
                                     "Double", "Currency", "Date", "String", "Blob", "Variant"}));
    EXPECT_THAT(types, IsSupersetOf({"FILE", "DIRECTORY", "PICTURE", "COLOR", "FONT", "TIMESTAMP",
                                     "NOTE", "BLOB", "Variant", "Sky condition", "Mount"}));
}

TEST_F(ObservatorySample, KeepsWhatTheScriptSaid) {
    EXPECT_EQ(ValueOf(L"camera", L"Filter"), "H-alpha");
    EXPECT_EQ(ValueOf(L"camera", L"Cooling"), "-15 °C");
    EXPECT_EQ(ValueOf(L"andromeda-galaxy", L"Distance"), "9223372036854775807");
    EXPECT_EQ(ValueOf(L"rings-of-saturn", L"Taken"), "2026/02/11-21:40:00-0000");
    EXPECT_EQ(ValueOf(L"\u4f50\u85e4-\u7d14", L"name"), "佐藤 純");
}

TEST_F(ObservatorySample, HasItsPicturesBesideTheScript) {
    for (const wchar_t* target : {L"moon", L"saturn", L"andromeda-galaxy"}) {
        const std::wstring picture = support::Wide(ValueOf(target, L"Picture"));
        EXPECT_TRUE(std::filesystem::exists(sample / picture)) << target;
    }
}

TEST(ObservatorySampleScript, WantsOneFile) {
    EXPECT_EQ(RunScript({}).exitCode, 2);
}

}  // namespace
