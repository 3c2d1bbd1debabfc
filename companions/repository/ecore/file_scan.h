#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "repository/ecore/metamodel_files.h"
#include "repository/xml/reader.h"
#include "repository/xml/tree.h"

namespace repository::ecore {

/// Finds out what a file contains, and takes its metamodel. A file without one is read no further
/// than to where that is known.
class FileScan final : public xml::Handler {
public:
    FileScan() : builder_(tree_), reader_(*this) {}

    /// Calls `advance` now and then.
    void Read(const std::string& path, const std::function<void()>& advance);

    bool HasMetamodel() const { return !packages_.empty(); }
    bool HasInstances() const { return hasInstances_; }

    MetamodelFile TakeMetamodel(const std::string& path, const std::string& shown);

    /// The places of metamodels that the file names: namespaces and paths.
    const std::vector<std::pair<std::string, std::string>>& Locations() const { return locations_; }

private:
    void Start(const xml::Name& name, std::span<const xml::Attribute> attributes) override;
    void Text(std::string_view text) override;
    void End() override;

    xml::Tree tree_;
    xml::TreeBuilder builder_;
    xml::Reader reader_;
    std::vector<std::size_t> packages_;
    std::vector<std::pair<std::string, std::string>> locations_;
    bool hasInstances_ = false;
    bool isDone_ = false;
    int depth_ = 0;
    /// Whether the root element is one of XMI, with the real ones in it.
    bool hasSeveral_ = false;
};

}  // namespace repository::ecore
