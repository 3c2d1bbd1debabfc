#include "repository/ecore/messages.h"

namespace repository::ecore {

std::string At(const std::string& file, xml::Position where, const std::string& text) {
    return file + ":" + std::to_string(where.line) + ":" + std::to_string(where.column) + ": " +
           text;
}

void Messages::Add(const std::string& file, xml::Position where, const std::string& text) {
    const std::string key = file + ":" + text;
    if (const auto known = known_.find(key); known != known_.end()) {
        ++entries_[known->second].times;
        return;
    }
    if (entries_.size() == most) {
        ++dropped_;
        return;
    }
    known_.emplace(key, entries_.size());
    entries_.push_back({file, where, text});
}

std::vector<std::string> Messages::Texts() const {
    std::vector<std::string> texts;
    for (const Entry& each : entries_) {
        std::string text = At(each.file, each.where, each.text);
        if (each.times > 1) text += " (" + std::to_string(each.times) + " times)";
        texts.push_back(std::move(text));
    }
    if (dropped_ > 0) texts.push_back("and " + std::to_string(dropped_) + " more");
    return texts;
}

}  // namespace repository::ecore
