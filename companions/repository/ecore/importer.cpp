#include "repository/ecore/importer.h"

#include <algorithm>
#include <array>
#include <deque>
#include <unordered_set>

#include "repository/ecore/binding.h"
#include "repository/ecore/file.h"
#include "repository/ecore/file_scan.h"
#include "repository/ecore/metamodel_files.h"
#include "repository/ecore/metamodel_reader.h"
#include "repository/ecore/names.h"
#include "repository/ecore/text.h"
#include "repository/ecore/uri.h"
#include "repository/store/error.h"

namespace repository::ecore {

namespace {

using store::Error;
using store::Number;

/// Runs what reads a file; what is wrong with its XML becomes an error with the place.
template <class Work>
void Reading(const std::string& shown, Work&& work) {
    try {
        work();
    } catch (const xml::SyntaxError& error) {
        throw Error(Number::invalidFileFormat, At(shown, error.Where(), error.what()));
    }
}

class Importer {
public:
    Importer(store::Store& store, const Progress& progress) : store_(store), progress_(progress) {}

    ImportResult Run(const std::vector<std::string>& files) {
        for (const std::string& file : files) {
            const std::string path = Normal(file);
            total_ += SizeOf(path) + 1;
            paths_.push_back(path);
        }
        store_.Change("Import", [&] {
            Binding binding(store_, metamodels_, messages_);
            binding.Load();
            Scan();
            MakeMetamodels(binding);
            ReadInstances();
            for (Document& document : documents_) MakeLinks(document);
        });
        return {messages_.Texts(), counts_};
    }

private:
    /// Reads the metamodels of the files, and of those that they name.
    void Scan() {
        for (const std::string& path : paths_) known_.insert(path);
        for (const std::string& path : paths_) Scan(path, true);
        // What is named is added behind.
        for (std::size_t i = 0; i < metamodelFiles_.size(); ++i) {
            const std::string path = metamodelFiles_[i].path;
            for (const std::string& name : RootMaker::FilesNamedIn(metamodelFiles_[i])) {
                ScanBeside(path, name);
            }
        }
    }

    void Scan(const std::string& path, bool isWanted) {
        FileScan scan;
        const std::string shown(FileName(path));
        Reading(shown, [&] { scan.Read(path, [&] { Advance(0); }); });
        const std::size_t place = metamodelFiles_.size();
        if (scan.HasMetamodel()) metamodelFiles_.push_back(scan.TakeMetamodel(path, shown));
        if (!isWanted) return;
        if (scan.HasInstances()) {
            Document& document = documents_.emplace_back();
            document.path = path;
            document.shown = shown;
        }
        for (const auto& [uri, location] : scan.Locations()) {
            if (metamodels_.FindPackage(uri) != nullptr || IsRead(uri, place)) continue;
            ScanBeside(path, std::string(location.substr(0, location.find('#'))));
        }
    }

    /// Whether one of the files that were read has a package with that namespace.
    bool IsRead(std::string_view uri, std::size_t) const {
        for (const MetamodelFile& file : metamodelFiles_) {
            for (const std::size_t package : file.packages) {
                if (file.tree[package].Get("nsURI") == uri) return true;
            }
        }
        return false;
    }

    /// Reads a metamodel that a file names, where it is: at that place, or beside the file.
    void ScanBeside(const std::string& from, const std::string& name) {
        if (name.empty() || name.find("://") != std::string::npos) return;
        const std::string folder(Folder(from));
        for (const std::string& path :
             {folder + "/" + name, folder + "/" + std::string(FileName(name))}) {
            const std::string absolute = Normal(path);
            if (known_.contains(absolute)) return;
            if (!IsFile(absolute)) continue;
            known_.insert(absolute);
            if (!IsXml(absolute)) return;
            return Scan(absolute, false);
        }
    }

    void MakeMetamodels(Binding& binding) {
        const std::size_t before = metamodels_.Roots().size();
        RootMaker(metamodels_, messages_).Make(metamodelFiles_);
        MetamodelReader reader(metamodels_, messages_);
        const auto forEachNew = [&](auto&& work) {
            for (std::size_t i = before; i < metamodels_.Roots().size(); ++i) {
                work(metamodels_.Roots()[i]);
            }
        };
        forEachNew([&](Root& root) { reader.Declare(root); });
        forEachNew([&](Root& root) { reader.Resolve(root); });
        binding.Make();
        forEachNew([&](const Root& root) { Count(root); });
    }

    void Count(const Root& root) {
        counts_.packages += static_cast<std::int64_t>(root.packages.size());
        counts_.classes += static_cast<std::int64_t>(root.classes.size());
        for (const auto& [path, dataType] : root.dataTypes) {
            if (dataType->isEnumeration) ++counts_.enumerations;
        }
        for (const auto& [path, feature] : root.features) {
            ++(feature->isReference ? counts_.references : counts_.attributes);
        }
    }

    void ReadInstances() {
        store::Loader loader(store_);
        std::unordered_set<std::string> instances;
        for (Document& document : documents_) instances.insert(document.path);
        for (const std::string& path : paths_) {
            if (!instances.contains(path)) Advance(SizeOf(path));
        }
        for (Document& document : documents_) {
            InstanceReader reader(document, metamodels_, loader, messages_, counts_);
            Reading(document.shown, [&] {
                ReadFile(document.path, [&](std::string_view piece, bool last) {
                    reader.Read(piece, last);
                    Advance(piece.size());
                    return true;
                });
            });
        }
    }

    void MakeLinks(Document& document) {
        store::Loader loader(store_);
        const ObjectIndex& objects = document.objects;
        for (ObjectIndex::Number i = 0; i < objects.Count(); ++i) {
            const ObjectIndex::Object& object = objects[i];
            if (object.parent == ObjectIndex::none) continue;
            if (i % 4096 == 0) Advance(0);
            const ObjectIndex::Object& parent = objects[object.parent];
            if (!HasMetaLink(document, *object.containment, {})) continue;
            loader.AddLink(*object.containment->metaLink, parent.id, object.id);
            ++counts_.containments;
        }
        std::size_t done = 0;
        document.references.ForEach([&](const References::Reference& reference) {
            if (++done % 4096 == 0) Advance(0);
            const ObjectIndex::Object* target = Follow(document, reference);
            if (target == nullptr || !HasMetaLink(document, *reference.feature, reference.where)) {
                return;
            }
            loader.AddLink(*reference.feature->metaLink, objects[reference.source].id, target->id);
            ++counts_.links;
        });
    }

    bool HasMetaLink(const Document& document, const Feature& feature, xml::Position where) {
        if (feature.metaLink && !feature.metaLink->removed) return true;
        messages_.Add(
            document.shown, where,
            "the meta link " + LabelOf(feature) + " has been removed from the repository");
        return false;
    }

    /// The object that a reference leads to; null, with a message, where it leads to none.
    const ObjectIndex::Object* Follow(Document& document, const References::Reference& reference) {
        const auto report = [&](const std::string& text) {
            messages_.Add(document.shown, reference.where,
                          "the reference \"" + std::string(reference.address) + "\" of " +
                              LabelOf(*reference.feature) + text);
            return nullptr;
        };
        Document* file = &document;
        ObjectIndex::Number number = ObjectIndex::none;
        if (reference.isIdentifier) number = document.objects.Find(reference.address);
        if (number == ObjectIndex::none) {
            const auto hash = reference.address.find('#');
            std::string_view fragment = reference.address;
            if (hash != std::string_view::npos) {
                fragment = reference.address.substr(hash + 1);
                file = FileNamed(document, reference.address.substr(0, hash));
                if (file == nullptr) return report(" leads to a file that is not imported with it");
            }
            number = file->objects.Follow(fragment);
        }
        if (number == ObjectIndex::none) return report(" leads nowhere");
        const ObjectIndex::Object& target = file->objects[number];
        const Class* wanted = reference.feature->target;
        if (wanted != nullptr && !target.type->IsKindOf(*wanted)) {
            return report(" leads to a " + target.type->name + ", not to a " + wanted->name);
        }
        return &target;
    }

    Document* FileNamed(Document& from, std::string_view name) {
        if (name.empty()) return &from;
        const std::string path = Normal(std::string(Folder(from.path)) + "/" + std::string(name));
        for (Document& document : documents_) {
            if (document.path == path || document.path == name) return &document;
        }
        return nullptr;
    }

    void Advance(std::uint64_t bytes) {
        done_ += bytes;
        if (progress_ && !progress_(done_, total_)) {
            throw Error(Number::interrupted, "The import was cancelled");
        }
    }

    store::Store& store_;
    const Progress& progress_;
    Messages messages_;
    Counts counts_;
    Metamodels metamodels_;
    std::vector<std::string> paths_;
    /// The files that have been read, or will be.
    std::unordered_set<std::string> known_;
    std::deque<MetamodelFile> metamodelFiles_;
    std::deque<Document> documents_;
    std::uint64_t done_ = 0;
    std::uint64_t total_ = 0;
};

}  // namespace

bool IsXml(const std::string& file) {
    SizeOf(file);
    std::string front;
    ReadFile(file, [&](std::string_view piece, bool) {
        front += piece;
        return front.size() < 512 && !piece.empty();
    });
    // The texts of all encodings that are read begin with "<" after a mark and white space; in
    // UTF-16 a zero byte stands beside it.
    for (const std::string_view mark : {"\xEF\xBB\xBF", "\xFE\xFF", "\xFF\xFE"}) {
        if (front.starts_with(mark)) {
            front.erase(0, mark.size());
            break;
        }
    }
    const auto first = std::find_if(front.begin(), front.end(), [](char letter) {
        return letter != ' ' && letter != '\t' && letter != '\r' && letter != '\n' &&
               letter != '\0';
    });
    return first != front.end() && *first == '<';
}

ImportResult Import(store::Store& store, const std::vector<std::string>& files,
                    const Progress& progress) {
    return Importer(store, progress).Run(files);
}

}  // namespace repository::ecore
