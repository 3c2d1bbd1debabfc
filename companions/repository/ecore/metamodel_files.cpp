#include "repository/ecore/metamodel_files.h"

#include <algorithm>
#include <unordered_map>

#include "repository/ecore/file.h"
#include "repository/ecore/text.h"
#include "repository/ecore/uri.h"

namespace repository::ecore {

namespace {

/// The attributes, or elements with an address, that lead to other elements.
constexpr std::string_view references[] = {"eType",       "eSuperTypes",    "eOpposite",
                                           "eClassifier", "eTypeParameter", "eKeys",
                                           "eExceptions", "eSubpackages",   "references"};

bool IsReference(std::string_view name) {
    return std::find(std::begin(references), std::end(references), name) != std::end(references);
}

/// Calls `use` with each address that an element's attributes name, without the type before it.
template <class Use>
void ForEachAddress(std::string_view value, Use&& use) {
    const auto words = Words(value);
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool isType = words[i].find_first_of("#/") == std::string_view::npos &&
                            words[i].find(':') != std::string_view::npos && i + 1 < words.size();
        if (!isType) use(words[i]);
    }
}

template <class Use>
void ForEachReference(const xml::TreeElement& element, Use&& use) {
    for (const xml::TreeAttribute& each : element.attributes) {
        const bool isAddress = each.local == "href" && IsReference(element.local);
        if (each.uri.empty() && (isAddress || IsReference(each.local))) {
            ForEachAddress(each.value, use);
        }
    }
}

void MakeIndex(MetamodelFile& file) {
    for (std::size_t place = 1; place < file.tree.End(); ++place) {
        const xml::TreeElement& element = file.tree[place];
        for (const xml::TreeAttribute& each : element.attributes) {
            if (each.local == "id" && IsXmi(each.uri)) file.byId.emplace(each.value, place);
        }
        const std::string_view name = element.Get("name");
        if (!name.empty()) {
            file.byName.emplace(std::to_string(element.parent) + "/" + std::string(name), place);
        }
    }
}

/// The namespace of the metamodels that are always there, by the name of their files.
std::string_view StandardNamespace(std::string_view file) {
    if (file == "Ecore.ecore") return uri::ecore;
    if (file == "XMLType.ecore") return uri::xmlType;
    return {};
}

bool IsFileName(std::string_view text) {
    return !text.empty() && text.find(':') == std::string_view::npos;
}

}  // namespace

std::vector<std::string> RootMaker::FilesNamedIn(const MetamodelFile& file) {
    std::vector<std::string> names;
    for (std::size_t place = 1; place < file.tree.End(); ++place) {
        ForEachReference(file.tree[place], [&](std::string_view address) {
            const auto hash = address.find('#');
            if (hash == std::string_view::npos) return;
            const std::string_view name = address.substr(0, hash);
            if (!IsFileName(name)) return;
            if (std::find(names.begin(), names.end(), name) == names.end()) {
                names.emplace_back(name);
            }
        });
    }
    return names;
}

void RootMaker::Make(std::deque<MetamodelFile>& files) {
    files_ = &files;
    for (MetamodelFile& file : files) {
        MakeIndex(file);
        for (std::size_t i = 0; i < file.packages.size(); ++i) {
            const xml::TreeElement& element = file.tree[file.packages[i]];
            std::string uri(element.Get("nsURI"));
            const std::string name(FileName(file.path));
            if (uri.empty()) uri = i == 0 ? name : name + "#/" + std::to_string(i);
            if (metamodels_.FindRoot(uri) != nullptr || metamodels_.FindPackage(uri) != nullptr) {
                messages_.Add(
                    file.shown, element.where,
                    "the metamodel \"" + uri + "\" is there already: this one is left out");
                continue;
            }
            Root& root = metamodels_.Add();
            root.uri = uri;
            root.file = name;
            root.tree.Copy(file.tree, file.packages[i], 0);
            origins_.push_back({&file, file.packages[i], &root});
            rootAt_[{&file, file.packages[i]}] = &root;
        }
    }
    for (const Origin& origin : origins_) Normalize(origin);
}

void RootMaker::Normalize(const Origin& origin) {
    xml::Tree& tree = origin.root->tree;
    for (std::size_t place = 1; place < tree.End(); ++place) {
        xml::TreeElement& element = tree[place];
        for (xml::TreeAttribute& each : element.attributes) {
            const bool isAddress = each.local == "href" && IsReference(element.local);
            if (each.uri.empty() && (isAddress || IsReference(each.local))) {
                each.value = Normalized(origin, each.value);
            } else if (each.local == "type" && !each.uri.empty()) {
                each.value = "ecore:" + std::string(AfterLast(each.value, ':'));
            }
        }
        // What is said of the whole file is not said of a package.
        std::erase_if(element.attributes, [](const xml::TreeAttribute& each) {
            return !each.uri.empty() && each.local != "type" && each.local != "id";
        });
    }
    // References that are written as elements become attributes of the element above.
    for (std::size_t place = tree.End(); place-- > 1;) {
        const xml::TreeElement& element = tree[place];
        const std::string address(element.Get("href"));
        if (address.empty() || element.local == "eSubpackages" || !IsReference(element.local)) {
            continue;
        }
        const std::size_t parent = element.parent;
        const std::string name = element.local;
        const std::string before(tree[parent].Get(name));
        tree[parent].Set(name, before.empty() ? address : address + " " + before);
        tree.Detach(place);
    }
}

std::string RootMaker::Normalized(const Origin& origin, std::string_view value) {
    std::string normalized;
    ForEachAddress(value, [&](std::string_view address) {
        if (!normalized.empty()) normalized += ' ';
        normalized += NormalizedToken(origin, address);
    });
    return normalized;
}

std::string RootMaker::NormalizedToken(const Origin& origin, std::string_view token) {
    const auto hash = token.find('#');
    const MetamodelFile* file = origin.file;
    std::string_view fragment = token;
    if (hash != std::string_view::npos) {
        fragment = token.substr(hash + 1);
        const std::string_view name = token.substr(0, hash);
        if (!name.empty()) {
            file = FileNamed(*origin.file, name);
            if (file == nullptr) {
                // A namespace, or a file that an earlier import brought.
                for (const Root& root : metamodels_.Roots()) {
                    if (root.uri == name) break;
                    if (IsFileName(name) && root.file == FileName(name)) {
                        return root.uri + "#" + std::string(fragment);
                    }
                }
                const auto standard = StandardNamespace(FileName(name));
                return standard.empty() ? std::string(token)
                                        : std::string(standard) + "#" + std::string(fragment);
            }
        }
    }
    const std::size_t place = Follow(*file, fragment);
    const std::string found = place != 0 ? NameOf(*file, place) : std::string();
    return found.empty() ? std::string(token) : found;
}

const MetamodelFile* RootMaker::FileNamed(const MetamodelFile& from, std::string_view name) const {
    if (!IsFileName(name) && !name.starts_with("platform:") && !name.starts_with("file:")) {
        return nullptr;
    }
    const MetamodelFile* sameName = nullptr;
    const std::string exact = Normal(std::string(Folder(from.path)) + "/" + std::string(name));
    for (const MetamodelFile& file : *files_) {
        if (file.path == exact || file.path == name) return &file;
        if (sameName == nullptr && FileName(file.path) == FileName(name)) sameName = &file;
    }
    return sameName;
}

std::size_t RootMaker::Follow(const MetamodelFile& file, std::string_view fragment) const {
    const xml::Tree& tree = file.tree;
    if (file.packages.empty()) return 0;
    std::size_t at = file.packages.front();
    if (!fragment.starts_with('/')) {
        if (const auto found = file.byId.find(fragment); found != file.byId.end()) {
            return found->second;
        }
        fragment = fragment.empty() ? "/" : fragment;
    }
    auto steps = Split(fragment, '/');
    // Before the first slash is nothing, after it the number of the root, nothing for the first.
    if (steps.size() >= 2 && steps[0].empty()) {
        std::size_t number = 0;
        if (ParseIndex(steps[1], number)) {
            if (number >= file.packages.size()) return 0;
            at = file.packages[number];
        } else if (!steps[1].empty()) {
            return 0;
        }
        steps.erase(steps.begin(), steps.begin() + 2);
    }
    for (const std::string_view step : steps) {
        if (step.empty()) continue;
        std::size_t next = 0;
        if (step.starts_with('@')) {
            const auto dot = step.rfind('.');
            std::size_t index = 0;
            if (dot != std::string_view::npos && !ParseIndex(step.substr(dot + 1), index)) return 0;
            const auto children =
                tree.Children(at, step.substr(1, dot == std::string_view::npos ? dot : dot - 1));
            next = index < children.size() ? children[index] : 0;
        } else {
            const auto found = file.byName.find(std::to_string(at) + "/" + std::string(step));
            next = found == file.byName.end() ? 0 : found->second;
        }
        if (next == 0) return 0;
        at = next;
    }
    return at;
}

std::string RootMaker::NameOf(const MetamodelFile& file, std::size_t place) const {
    std::vector<std::string_view> names;
    for (; place != 0; place = file.tree[place].parent) {
        if (const auto root = rootAt_.find({&file, place}); root != rootAt_.end()) {
            std::string path = root->second->uri + "#/";
            for (auto name = names.rbegin(); name != names.rend(); ++name) {
                path += "/" + std::string(*name);
            }
            return path;
        }
        const std::string_view name = file.tree[place].Get("name");
        if (name.empty()) return {};
        names.push_back(name);
    }
    return {};
}

}  // namespace repository::ecore
