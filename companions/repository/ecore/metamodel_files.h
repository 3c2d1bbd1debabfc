#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "repository/ecore/messages.h"
#include "repository/ecore/metamodel.h"
#include "repository/xml/tree.h"

namespace repository::ecore {

/// The Ecore content of one file: a package, or several in an XMI element.
struct MetamodelFile {
    /// The path that it was read from, absolute.
    std::string path;
    /// The path as messages say it.
    std::string shown;
    xml::Tree tree;
    std::vector<std::size_t> packages;

    /// The elements by their XMI ids, and by the place of the parent and their names: "7/name".
    TextMap<std::size_t> byId;
    TextMap<std::size_t> byName;
};

/// Makes roots of the packages of files: looks up where their references lead, across files, and
/// writes each as "uri#//path".
class RootMaker {
public:
    RootMaker(Metamodels& metamodels, Messages& messages)
        : metamodels_(metamodels), messages_(messages) {}

    /// The paths, relative to the file's folder, that its references name.
    static std::vector<std::string> FilesNamedIn(const MetamodelFile& file);

    /// Adds the roots of all files. A package whose namespace is taken is left out.
    void Make(std::deque<MetamodelFile>& files);

private:
    /// A package that becomes a root, and where it lies in its file.
    struct Origin {
        const MetamodelFile* file;
        std::size_t place;
        Root* root;
    };

    void Normalize(const Origin& origin);
    std::string Normalized(const Origin& origin, std::string_view value);
    std::string NormalizedToken(const Origin& origin, std::string_view token);
    const MetamodelFile* FileNamed(const MetamodelFile& from, std::string_view name) const;
    /// Where a fragment leads in a file, 0 for nowhere.
    std::size_t Follow(const MetamodelFile& file, std::string_view fragment) const;
    /// "uri#//path" of a place in a file; empty where it has no name.
    std::string NameOf(const MetamodelFile& file, std::size_t place) const;

    Metamodels& metamodels_;
    Messages& messages_;
    std::deque<MetamodelFile>* files_ = nullptr;
    std::vector<Origin> origins_;
    std::map<std::pair<const MetamodelFile*, std::size_t>, const Root*> rootAt_;
};

}  // namespace repository::ecore
