#include "repository/xml/reader.h"

#include <expat.h>

#include <algorithm>
#include <exception>
#include <new>
#include <unordered_map>
#include <utility>
#include <vector>

#include "repository/xml/encoding.h"

namespace repository::xml {

namespace {

/// Stands between namespace, name and prefix; no XML text can contain it.
constexpr char separator = '\f';

/// How many times its own length a text may become through its entities, and from which length on
/// that is looked at.
constexpr float maximumGrowth = 10;
constexpr unsigned long long smallText = 1 << 20;

Name Split(const XML_Char* text) {
    const std::string_view whole = text;
    const auto first = whole.find(separator);
    if (first == std::string_view::npos) return {{}, whole, {}};
    const auto second = whole.find(separator, first + 1);
    if (second == std::string_view::npos) {
        return {whole.substr(0, first), whole.substr(first + 1), {}};
    }
    return {whole.substr(0, first), whole.substr(first + 1, second - first - 1),
            whole.substr(second + 1)};
}

}  // namespace

class Reader::Parser {
public:
    explicit Parser(Handler& handler)
        : handler_(handler), expat_(XML_ParserCreateNS(nullptr, separator)) {
        if (!expat_) throw std::bad_alloc();
        XML_Parser expat = expat_.get();
        XML_SetUserData(expat, this);
        XML_SetReturnNSTriplet(expat, XML_TRUE);
        XML_SetElementHandler(expat, &Parser::Start, &Parser::End);
        XML_SetCharacterDataHandler(expat, &Parser::Text);
        XML_SetNamespaceDeclHandler(expat, &Parser::StartNamespace, &Parser::EndNamespace);
        XML_SetUnknownEncodingHandler(expat, &Parser::UnknownEncoding, nullptr);
        XML_SetBillionLaughsAttackProtectionMaximumAmplification(expat, maximumGrowth);
        XML_SetBillionLaughsAttackProtectionActivationThreshold(expat, smallText);
    }

    void Read(std::string_view piece, bool last) {
        // The parser takes the length as an int.
        constexpr std::size_t most = 1 << 30;
        while (piece.size() > most) {
            ReadSome(piece.substr(0, most), false);
            piece.remove_prefix(most);
        }
        ReadSome(piece, last);
    }

    Position Where() const {
        return {XML_GetCurrentLineNumber(expat_.get()),
                XML_GetCurrentColumnNumber(expat_.get()) + 1};
    }

    std::string_view NamespaceOf(std::string_view prefix) const {
        if (prefix == "xml") return "http://www.w3.org/XML/1998/namespace";
        const auto found = namespaces_.find(std::string(prefix));
        return found == namespaces_.end() || found->second.empty()
                   ? std::string_view()
                   : std::string_view(found->second.back());
    }

private:
    struct Deleter {
        void operator()(XML_Parser expat) const { XML_ParserFree(expat); }
    };

    void ReadSome(std::string_view piece, bool last) {
        const XML_Status status =
            XML_Parse(expat_.get(), piece.data(), static_cast<int>(piece.size()), last);
        if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
        if (status != XML_STATUS_OK) {
            const XML_Error code = XML_GetErrorCode(expat_.get());
            if (code == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
            throw SyntaxError(XML_ErrorString(code), Where());
        }
    }

    /// Runs one event; what it throws is kept until the parser has returned.
    template <class Work>
    static void Do(void* data, Work&& work) {
        auto& parser = *static_cast<Parser*>(data);
        if (parser.thrown_) return;
        try {
            work(parser);
        } catch (...) {
            parser.thrown_ = std::current_exception();
            XML_StopParser(parser.expat_.get(), XML_FALSE);
        }
    }

    static void XMLCALL Start(void* data, const XML_Char* name, const XML_Char** attributes) {
        Do(data, [&](Parser& parser) {
            if (++parser.depth_ > maximumDepth) {
                throw SyntaxError("elements are nested too deeply", parser.Where());
            }
            parser.attributes_.clear();
            for (; *attributes != nullptr; attributes += 2) {
                parser.attributes_.push_back({Split(attributes[0]), attributes[1]});
            }
            parser.handler_.Start(Split(name), parser.attributes_);
        });
    }

    static void XMLCALL End(void* data, const XML_Char*) {
        Do(data, [](Parser& parser) {
            --parser.depth_;
            parser.handler_.End();
        });
    }

    static void XMLCALL Text(void* data, const XML_Char* text, int length) {
        Do(data, [&](Parser& parser) {
            parser.handler_.Text({text, static_cast<std::size_t>(length)});
        });
    }

    static void XMLCALL StartNamespace(void* data, const XML_Char* prefix, const XML_Char* uri) {
        Do(data, [&](Parser& parser) {
            parser.namespaces_[prefix != nullptr ? prefix : ""].emplace_back(uri != nullptr ? uri
                                                                                            : "");
        });
    }

    static void XMLCALL EndNamespace(void* data, const XML_Char* prefix) {
        Do(data,
           [&](Parser& parser) { parser.namespaces_[prefix != nullptr ? prefix : ""].pop_back(); });
    }

    static int XMLCALL UnknownEncoding(void*, const XML_Char* name, XML_Encoding* encoding) {
        const int* characters = CharactersOf(name);
        if (characters == nullptr) return XML_STATUS_ERROR;
        std::copy_n(characters, 256, encoding->map);
        encoding->data = nullptr;
        encoding->convert = nullptr;
        encoding->release = nullptr;
        return XML_STATUS_OK;
    }

    Handler& handler_;
    std::unique_ptr<XML_ParserStruct, Deleter> expat_;
    std::vector<Attribute> attributes_;
    std::unordered_map<std::string, std::vector<std::string>> namespaces_;
    int depth_ = 0;
    std::exception_ptr thrown_;
};

Reader::Reader(Handler& handler) : parser_(std::make_unique<Parser>(handler)) {}

Reader::~Reader() = default;

void Reader::Read(std::string_view piece, bool last) {
    parser_->Read(piece, last);
}

Position Reader::Where() const {
    return parser_->Where();
}

std::string_view Reader::NamespaceOf(std::string_view prefix) const {
    return parser_->NamespaceOf(prefix);
}

}  // namespace repository::xml
