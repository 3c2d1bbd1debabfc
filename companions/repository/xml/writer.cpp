#include "repository/xml/writer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace repository::xml {

namespace {

constexpr std::size_t pieceSize = 1 << 16;
constexpr std::size_t deepestIndentation = 40;

}  // namespace

void Writer::Declare(std::string_view uri, std::string_view prefix) {
    if (uri.empty()) return;
    const auto isTaken = [&](std::string_view name) {
        for (const Namespace& each : namespaces_) {
            if (each.prefix == name) return true;
        }
        return false;
    };
    for (const Namespace& each : namespaces_) {
        if (each.uri == uri) return;
    }
    std::string unique(prefix.empty() ? "ns" : prefix);
    for (int i = 2; isTaken(unique); ++i) {
        unique = std::string(prefix.empty() ? "ns" : prefix) + std::to_string(i);
    }
    namespaces_.push_back({std::string(uri), unique});
}

std::string_view Writer::PrefixOf(std::string_view uri) const {
    for (const Namespace& each : namespaces_) {
        if (each.uri == uri) return each.prefix;
    }
    return {};
}

void Writer::Start(std::string_view uri, std::string_view local) {
    const bool first = !std::exchange(begun_, true);
    if (tagIsOpen_) Append(">");
    if (first) Append("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    NewLine();
    Append("<");
    const std::size_t begin = pending_.size();
    AppendName(uri, local);
    open_.push_back(pending_.substr(begin));
    tagIsOpen_ = true;
    hasText_ = false;
    if (!first) return;
    for (const Namespace& each : namespaces_) {
        Append(" xmlns:" + each.prefix + "=\"");
        Escape(each.uri, true);
        Append("\"");
    }
}

void Writer::Attribute(std::string_view uri, std::string_view local, std::string_view value) {
    Append(" ");
    AppendName(uri, local);
    Append("=\"");
    Escape(value, true);
    Append("\"");
}

void Writer::Text(std::string_view text) {
    if (tagIsOpen_) Append(">");
    tagIsOpen_ = false;
    hasText_ = true;
    Escape(text, false);
}

void Writer::End() {
    const std::string name = std::move(open_.back());
    open_.pop_back();
    if (tagIsOpen_) {
        Append("/>");
    } else {
        if (!hasText_) NewLine();
        Append("</" + name + ">");
    }
    tagIsOpen_ = false;
    hasText_ = false;
    if (pending_.size() < pieceSize) return;
    sink_(pending_);
    pending_.clear();
}

void Writer::Finish() {
    Append("\n");
    sink_(pending_);
    pending_.clear();
}

void Writer::AppendName(std::string_view uri, std::string_view local) {
    const std::string_view prefix = PrefixOf(uri);
    if (!prefix.empty()) {
        Append(prefix);
        Append(":");
    }
    Append(local);
}

void Writer::Escape(std::string_view text, bool inAttribute) {
    for (const char letter : text) {
        switch (letter) {
            case '&':
                Append("&amp;");
                break;
            case '<':
                Append("&lt;");
                break;
            case '>':
                Append("&gt;");
                break;
            case '\r':
                Append("&#xD;");
                break;
            case '"':
                Append(inAttribute ? "&quot;" : "\"");
                break;
            case '\n':
                Append(inAttribute ? "&#xA;" : "\n");
                break;
            case '\t':
                Append(inAttribute ? "&#x9;" : "\t");
                break;
            default:
                pending_ += letter;
        }
    }
}

void Writer::NewLine() {
    Append("\n");
    pending_.append(2 * std::min(open_.size(), deepestIndentation), ' ');
}

bool CanExpress(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<unsigned char>(text[at]);
        const std::size_t length = lead < 0x80                   ? 1
                                   : lead >= 0xC2 && lead < 0xE0 ? 2
                                   : lead >= 0xE0 && lead < 0xF0 ? 3
                                   : lead >= 0xF0 && lead < 0xF5 ? 4
                                                                 : 0;
        if (length == 0 || at + length > text.size()) return false;
        std::uint32_t character = length == 1 ? lead : lead & (0x7Fu >> length);
        for (std::size_t i = 1; i < length; ++i) {
            const auto byte = static_cast<unsigned char>(text[at + i]);
            if ((byte & 0xC0) != 0x80) return false;
            character = character << 6 | (byte & 0x3Fu);
        }
        constexpr std::array<std::uint32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
        const bool isControl =
            character < 0x20 && character != '\t' && character != '\n' && character != '\r';
        const bool isSurrogate = character >= 0xD800 && character < 0xE000;
        if (character < smallest[length] || character > 0x10FFFF || isControl || isSurrogate ||
            character == 0xFFFE || character == 0xFFFF) {
            return false;
        }
        at += length;
    }
    return true;
}

}  // namespace repository::xml
