#include "repository/store/scratch.h"

#include <cstdlib>

namespace repository::store {

std::string Scratch::File(const std::string& name) const {
    const auto text = (folder_ / PathOf(name)).u8string();
    return {text.begin(), text.end()};
}

std::string Scratch::Folder() const {
    const auto text = folder_.Path().u8string();
    return {text.begin(), text.end()};
}

bool IsLongRun() {
    return std::getenv("ORVANE_TEST_LONG") != nullptr;
}

std::string ReadFile(const std::string& path) {
    return support::ReadFile(PathOf(path));
}

void WriteFile(const std::string& path, const std::string& content) {
    support::WriteFile(PathOf(path), content);
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
