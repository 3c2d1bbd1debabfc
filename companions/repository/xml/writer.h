#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace repository::xml {

/// Writes an XML text in UTF-8, one element a line. Namespaces are declared beforehand: they stand
/// at the first element.
class Writer {
public:
    using Sink = std::function<void(std::string_view)>;

    explicit Writer(Sink sink) : sink_(std::move(sink)) {}

    /// Declares the prefix of a namespace; the one that is there already stays.
    void Declare(std::string_view uri, std::string_view prefix);
    /// The prefix of a namespace. One that was not declared has the empty prefix.
    std::string_view PrefixOf(std::string_view uri) const;

    void Start(std::string_view uri, std::string_view local);
    void Attribute(std::string_view uri, std::string_view local, std::string_view value);
    void Text(std::string_view text);
    void End();

    /// Hands on what is still kept.
    void Finish();

private:
    struct Namespace {
        std::string uri;
        std::string prefix;
    };

    void Append(std::string_view text) { pending_ += text; }
    void AppendName(std::string_view uri, std::string_view local);
    void Escape(std::string_view text, bool inAttribute);
    void NewLine();

    Sink sink_;
    std::string pending_;
    std::vector<Namespace> namespaces_;
    std::vector<std::string> open_;
    bool begun_ = false;
    bool tagIsOpen_ = false;
    bool hasText_ = false;
};

/// The text of something that is written.
template <class Work>
std::string TextOf(Work&& work) {
    std::string text;
    Writer writer([&](std::string_view part) { text += part; });
    work(writer);
    writer.Finish();
    return text;
}

/// Whether XML can express a text: it is UTF-8 without control characters but tab and line ends.
bool CanExpress(std::string_view text);

}  // namespace repository::xml
