#include "repository/store/scratch.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace repository::store {

namespace fs = std::filesystem;

Scratch::Scratch() {
    static std::atomic<int> next = 0;
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    folder_ = fs::temp_directory_path() /
              ("orvane-store-" + std::to_string(now) + "-" + std::to_string(++next));
    fs::create_directories(folder_);
}

Scratch::~Scratch() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

std::string Scratch::File(const std::string& name) const {
    const auto text = (folder_ / PathOf(name)).u8string();
    return {text.begin(), text.end()};
}

std::string Scratch::Folder() const {
    const auto text = folder_.u8string();
    return {text.begin(), text.end()};
}

bool IsLongRun() {
    return std::getenv("ORVANE_TEST_LONG") != nullptr;
}

fs::path PathOf(const std::string& text) {
    return fs::path(std::u8string(text.begin(), text.end()));
}

std::string ReadFile(const std::string& path) {
    std::ifstream stream(PathOf(path), std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

void WriteFile(const std::string& path, const std::string& content) {
    std::ofstream stream(PathOf(path), std::ios::binary | std::ios::trunc);
    stream << content;
}

Small::Small(Store& store) {
    person = store.MakeMetaNode("Person", "Somebody");
    house = store.MakeMetaNode("House", "");
    livesIn = store.MakeMetaLink("Person lives in House", "lives in", person, house, "");
    age = store.MakeProperty(person, "Age", store.Meta().types.Find("Long"), "In years");
    anna = store.MakeNode(person, "p1", "Anna");
    ben = store.MakeNode(person, "p2", "Ben");
    cottage = store.MakeNode(house, "h1", "Cottage");
    annaInCottage = store.MakeLink(livesIn, anna, cottage, "l1", "since 1990");
}

}  // namespace repository::store
