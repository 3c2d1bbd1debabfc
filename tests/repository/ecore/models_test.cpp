#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "repository/ecore/exporter.h"
#include "repository/ecore/model_fixture.h"
#include "repository/ecore/text.h"

namespace repository::ecore {
namespace {

namespace fs = std::filesystem;

/// The folder of public models, beside the sources unless the environment says otherwise.
fs::path SharedModels() {
    const char* named = std::getenv("ORVANE_SHARED");
    return fs::path(named != nullptr ? named : "../shared") / "models";
}

std::string Trim(std::string_view text) {
    const auto words = Words(text);
    if (words.empty()) return {};
    return {words.front().data(), words.back().data() + words.back().size()};
}

/// One line of models.txt.
struct Model {
    std::string folder;
    std::vector<std::string> files;
    std::string metamodel;
    std::string content;
    std::size_t messages = 0;
};

std::vector<Model> Models() {
    std::ifstream stream("tests/repository/ecore/models.txt");
    std::vector<Model> models;
    std::string line;
    while (std::getline(stream, line)) {
        if (line.empty() || line.front() == '#') continue;
        const auto columns = Split(line, '|');
        Model& model = models.emplace_back();
        model.folder = Trim(columns.at(0));
        for (const std::string_view file : Words(columns.at(1))) model.files.emplace_back(file);
        model.metamodel = Trim(columns.at(2));
        model.content = Trim(columns.at(3));
        ParseIndex(Trim(columns.at(4)), model.messages);
    }
    return models;
}

/// Whether numbers are as expected; a question mark fits any number.
void ExpectCounts(const std::string& expected, const std::vector<std::int64_t>& numbers) {
    const auto parts = Split(expected, '/');
    for (std::size_t i = 0; i < parts.size() && i < numbers.size(); ++i) {
        if (parts[i] == "?") continue;
        EXPECT_EQ(std::string(parts[i]), std::to_string(numbers[i]));
    }
}

std::string Joined(const std::vector<std::int64_t>& numbers) {
    std::string text;
    for (const std::int64_t number : numbers) {
        text += (text.empty() ? "" : "/") + std::to_string(number);
    }
    return text;
}

/// Whether docs/models.md says the same of a model.
void ExpectInTable(const Model& model, const Counts& counts, std::size_t messages) {
    std::string files;
    for (const std::string& file : model.files) {
        files += (files.empty() ? "" : " ") + std::string(FileName(file));
    }
    const std::string row =
        "| " + model.folder + " | " + files + " | " + model.metamodel + " | " +
        Joined({counts.classes, counts.attributes, counts.references, counts.enumerations}) +
        " | " + model.content + " | " + Joined({counts.objects, counts.values, counts.links}) +
        " | " + std::to_string(messages) + " | ";
    std::ifstream stream("docs/models.md");
    std::stringstream page;
    page << stream.rdbuf();
    EXPECT_NE(page.str().find(row), std::string::npos) << "docs/models.md lacks the row\n"
                                                       << row << "\nRun script/models";
}

TEST(PublicModels, HaveTheNumbersThatTheyAreKnownToHave) {
    const fs::path shared = SharedModels();
    if (!fs::is_directory(shared)) {
        GTEST_SKIP() << "NOT TESTED: there is no folder " << shared << " (see ORVANE_SHARED)";
    }
    const auto models = Models();
    EXPECT_GE(models.size(), 10u);
    for (const Model& model : models) {
        SCOPED_TRACE(model.folder + " " + model.files.back());
        std::vector<std::string> paths;
        for (const std::string& file : model.files) {
            paths.push_back((shared / model.folder / file).generic_string());
        }
        const auto store = store::Store::Create(store::inMemory);
        const ImportResult result = Import(*store, paths);
        const Counts& counts = result.counts;
        ExpectCounts(model.metamodel,
                     {counts.classes, counts.attributes, counts.references, counts.enumerations});
        ExpectCounts(model.content, {counts.objects, counts.values, counts.links});
        EXPECT_EQ(result.messages.size(), model.messages)
            << testing::PrintToString(result.messages);
        ExpectInTable(model, counts, result.messages.size());
        // What is counted is there.
        std::int64_t nodes = 0;
        std::int64_t links = 0;
        for (const auto& each : store->Meta().nodes) {
            if (!each->builtIn) nodes += store->Count(store::ObjectSet::Instances(*each));
        }
        for (const auto& each : store->Meta().links) {
            links += store->Count(store::ObjectSet::Instances(*each));
        }
        EXPECT_EQ(nodes, counts.objects);
        EXPECT_EQ(links, counts.links + counts.containments);

        const store::Scratch scratch;
        EXPECT_THAT(Export(*store, scratch.File("again.xmi")), testing::IsEmpty());
        const auto again = store::Store::Create(store::inMemory);
        // A metamodel is kept as it came, with what is not understood in it.
        const auto messages = Import(*again, {scratch.File("again.xmi")}).messages;
        EXPECT_LE(messages.size(), model.messages) << testing::PrintToString(messages);
        ExpectSame(ContentOf(*store), ContentOf(*again));
    }
}

}  // namespace
}  // namespace repository::ecore
