#include "repository/tool/commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <sstream>
#include <thread>

#include "repository/store/database.h"
#include "repository/store/scratch.h"

namespace repository::tool {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class Commands : public testing::Test {
protected:
    void SetUp() override {
        store::WriteFile(
            metamodel,
            "<ecore:EPackage xmlns:ecore='http://www.eclipse.org/emf/2002/Ecore' "
            "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' name='p' nsURI='urn:p'>"
            "<eClassifiers xsi:type='ecore:EClass' name='Box'>"
            "<eStructuralFeatures xsi:type='ecore:EReference' name='in' upperBound='-1' "
            "containment='true' eType='#//Box'/></eClassifiers></ecore:EPackage>");
        store::WriteFile(model, "<p:Box xmlns:p='urn:p'><in/><in size='3'/></p:Box>");
    }

    int Call(const std::vector<std::string>& arguments) {
        std::ostringstream out;
        std::ostringstream err;
        const int result = tool::Run(arguments, out, err);
        output = out.str();
        errors = err.str();
        return result;
    }

    store::Scratch scratch;
    const std::string file = scratch.File("a.orvane");
    const std::string metamodel = scratch.File("p.ecore");
    const std::string model = scratch.File("m.xmi");
    std::string output;
    std::string errors;
};

TEST_F(Commands, ImportPrintsMessagesAndCounts) {
    EXPECT_EQ(Call({"import", file, metamodel, model}), 0);
    EXPECT_THAT(errors, IsEmpty());
    EXPECT_THAT(output, StartsWith("m.xmi:1:29: Box has no feature \"size\"\n"
                                   "packages 1, classes 1, attributes 0, references 1, "
                                   "enumerations 0\n"
                                   "objects 3, values 0, links 0, containments 2\n"
                                   "messages 1, seconds "));
    EXPECT_EQ(Call({"import", file, model}), 0);
    EXPECT_THAT(output, HasSubstr("classes 0"));
}

TEST_F(Commands, InfoPrintsWhatThereIs) {
    Call({"import", file, metamodel, model});
    EXPECT_EQ(Call({"info", file}), 0);
    EXPECT_EQ(output,
              "Box 3\nBox.in 2\nmeta nodes 1, meta links 1, enumerations 0\nnodes 3, links 2\n"
              "metamodel urn:p from p.ecore\n");
}

TEST_F(Commands, ExportWritesBothFiles) {
    Call({"import", file, metamodel, model});
    EXPECT_EQ(Call({"export", file, scratch.File("out.xmi")}), 0);
    EXPECT_THAT(output, HasSubstr("out.ecore\n"));
    EXPECT_THAT(output, HasSubstr("messages 0\n"));
    EXPECT_EQ(Call({"import", scratch.File("b.orvane"), scratch.File("out.xmi")}), 0);
    EXPECT_THAT(output, HasSubstr("objects 3"));
}

TEST_F(Commands, QueryPrintsRowsAndChangesNothing) {
    Call({"import", file, metamodel, model});
    EXPECT_EQ(Call({"query", file, "SELECT meta_node, identifier FROM node ORDER BY id"}), 0);
    EXPECT_EQ(output, "Box\tm~1\nBox\tm~2\nBox\tm~3\n");
    EXPECT_EQ(Call({"query", file, "DELETE FROM object"}), 1);
    EXPECT_EQ(Call({"query", file, "SELECT x FROM nothing"}), 1);
    EXPECT_THAT(errors, StartsWith("orvane-repository: "));
    Call({"info", file});
    EXPECT_THAT(output, HasSubstr("nodes 3"));
}

TEST_F(Commands, CheckFindsDamage) {
    Call({"import", file, metamodel, model});
    EXPECT_EQ(Call({"check", file}), 0);
    EXPECT_EQ(output, "no damage\n");
    std::string content = store::ReadFile(file);
    for (std::size_t at = 3 * 4096; at < content.size(); at += 97) content[at] ^= 0x55;
    store::WriteFile(file, content);
    EXPECT_EQ(Call({"check", file}), 1);
}

TEST_F(Commands, AFileWhoseWriterWasKilledIsCheckedAndRead) {
    Call({"import", file, metamodel, model});
    const std::string copy = scratch.File("b.orvane");
    {
        // So little memory that the file is written in the middle of the change.
        store::Database writer(file, store::Database::Mode::readWrite);
        writer.Execute("PRAGMA cache_size = 1");
        writer.Execute("BEGIN");
        writer.Execute(
            "WITH RECURSIVE number(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM number LIMIT 2000) "
            "INSERT INTO object(meta, identifier, name, name_key) SELECT "
            "(SELECT max(meta) FROM object WHERE source IS NULL), 'x' || n, 'x', 'x' FROM number");
        writer.Execute("UPDATE object SET name = 'y'");
        std::filesystem::copy_file(store::PathOf(file), store::PathOf(copy));
        std::filesystem::copy_file(store::PathOf(file + "-journal"),
                                   store::PathOf(copy + "-journal"));
    }
    EXPECT_EQ(Call({"check", copy}), 0) << errors;
    EXPECT_EQ(output, "no damage\n");
    EXPECT_EQ(Call({"query", copy, "SELECT identifier FROM node WHERE name = 'y'"}), 0);
    EXPECT_EQ(output, "");
}

TEST_F(Commands, AFileInUseIsWaitedFor) {
    Call({"import", file, metamodel, model});
    store::Database writer(file, store::Database::Mode::readWrite);
    writer.Execute("BEGIN EXCLUSIVE");
    std::thread later([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        writer.Execute("COMMIT");
    });
    const int result = Call({"query", file, "SELECT count(*) FROM node"});
    later.join();
    EXPECT_EQ(result, 0) << errors;
    EXPECT_EQ(output, "3\n");
}

TEST_F(Commands, NoQueryCanChangeTheFile) {
    Call({"import", file, metamodel, model});
    const std::string before = store::ReadFile(file);
    for (const std::string& sql :
         std::vector<std::string>{"PRAGMA query_only = OFF; DELETE FROM object",
                                  "PRAGMA journal_mode = WAL", "PRAGMA user_version = 9", "VACUUM",
                                  "ATTACH '" + scratch.File("c.orvane") + "' AS c"}) {
        EXPECT_EQ(Call({"query", file, sql}), 1) << sql;
    }
    EXPECT_EQ(store::ReadFile(file), before);
    EXPECT_FALSE(std::filesystem::exists(store::PathOf(scratch.File("c.orvane"))));
}

TEST_F(Commands, AFaultyModelLeavesNoRepositoryBehind) {
    store::WriteFile(model, "<p:Box xmlns:p='urn:p'>");
    EXPECT_EQ(Call({"import", file, metamodel, model}), 1);
    EXPECT_FALSE(std::filesystem::exists(store::PathOf(file)));
    EXPECT_EQ(Call({"import", file, metamodel}), 0);
    EXPECT_EQ(Call({"import", file, model}), 1);
    EXPECT_EQ(Call({"check", file}), 0);
}

TEST_F(Commands, FailuresEndWithOne) {
    EXPECT_EQ(Call({"info", scratch.File("none.orvane")}), 1);
    EXPECT_THAT(errors, HasSubstr("was not found"));
    EXPECT_EQ(Call({"import", file, scratch.File("none.xmi")}), 1);
    EXPECT_EQ(Call({"check", metamodel}), 1);
    EXPECT_THAT(errors, HasSubstr("is no repository file"));
}

TEST_F(Commands, WrongCommandLinesEndWithTwo) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{},
                                                      {"what"},
                                                      {"import"},
                                                      {"import", file},
                                                      {"export", file},
                                                      {"info"},
                                                      {"info", file, "more"},
                                                      {"query", file},
                                                      {"check"}}) {
        EXPECT_EQ(Call(arguments), 2);
        EXPECT_THAT(errors, StartsWith("Usage: orvane-repository"));
    }
    EXPECT_EQ(Call({"--help"}), 0);
    EXPECT_THAT(output, StartsWith("Usage: "));
}

}  // namespace
}  // namespace repository::tool
