#include "repository/ecore/file_scan.h"

#include "repository/ecore/file.h"
#include "repository/ecore/text.h"
#include "repository/ecore/uri.h"

namespace repository::ecore {

void FileScan::Read(const std::string& path, const std::function<void()>& advance) {
    ReadFile(path, [&](std::string_view piece, bool last) {
        reader_.Read(piece, last);
        advance();
        return !isDone_;
    });
}

MetamodelFile FileScan::TakeMetamodel(const std::string& path, const std::string& shown) {
    MetamodelFile file;
    file.path = path;
    file.shown = shown;
    file.tree = std::move(tree_);
    file.packages = std::move(packages_);
    return file;
}

void FileScan::Start(const xml::Name& name, std::span<const xml::Attribute> attributes) {
    ++depth_;
    if (isDone_) return;
    if (builder_.IsOpen()) return builder_.Start(name, attributes, reader_.Where());
    if (depth_ <= 2) {
        for (const xml::Attribute& each : attributes) {
            if (each.name.uri != uri::xsi || each.name.local != "schemaLocation") continue;
            const auto words = Words(each.value);
            for (std::size_t i = 0; i + 1 < words.size(); i += 2) {
                locations_.emplace_back(words[i], words[i + 1]);
            }
        }
    }
    if (depth_ == 1 && name.local == "XMI" && IsXmi(name.uri)) {
        hasSeveral_ = true;
    } else if (depth_ == 1 || (depth_ == 2 && hasSeveral_)) {
        if (name.uri == uri::ecore && name.local == "EPackage") {
            packages_.push_back(tree_.End());
            builder_.Start(name, attributes, reader_.Where());
        } else {
            hasInstances_ = true;
            isDone_ = !hasSeveral_;
        }
    }
}

void FileScan::Text(std::string_view text) {
    if (builder_.IsOpen()) builder_.Text(text);
}

void FileScan::End() {
    --depth_;
    if (builder_.IsOpen()) builder_.End();
}

}  // namespace repository::ecore
