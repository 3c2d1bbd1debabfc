#include "repository/synthetic/generator.h"

#include <array>
#include <string>
#include <vector>

#include "repository/store/error.h"

namespace repository::synthetic {

using store::Value;

namespace {

struct Kind {
    const char* type;
    Value (*valueOf)(long number);
};

constexpr std::array<Kind, 8> kinds = {{
    {"String", [](long number) { return Value("Text " + std::to_string(number)); }},
    {"Long", [](long number) { return Value(static_cast<std::int32_t>(number)); }},
    {"Double", [](long number) { return Value(static_cast<double>(number) / 8); }},
    {"Boolean", [](long number) { return Value(number % 2 == 0); }},
    {"Date",
     [](long number) { return Value(store::Date{36526.0 + static_cast<double>(number % 10000)}); }},
    {"Currency", [](long number) { return Value(store::Currency{number * 2500LL}); }},
    {"COLOR", [](long number) { return Value(std::to_string(number % 0x1000000)); }},
    {"NOTE", [](long number) { return Value("First line\r\nLine " + std::to_string(number)); }},
}};

const Kind& KindOf(std::size_t property) {
    return kinds[property % kinds.size()];
}

class Generator {
public:
    Generator(store::Store& store, const Size& size) : store_(store), size_(size) {}

    void Run() {
        for (long m = 1; m <= size_.metaNodes; ++m) MakeMetaNode(m);
        for (long m = 1; m <= size_.metaNodes; ++m) MakeNodes(m);
        if (size_.links == 0 || size_.nodes == 0) return;
        for (long m = 1; m <= size_.metaNodes; ++m) MakeLinks(m);
    }

private:
    static std::string TypeName(long m) { return "Type " + std::to_string(m); }

    static std::string NodeIdentifier(long m, long n) {
        return "n" + std::to_string(m) + "." + std::to_string(n);
    }

    void MakeMetaNode(long m) {
        const auto meta = store_.MakeMetaNode(TypeName(m), "Synthetic type " + std::to_string(m));
        metaNodes_.push_back(meta);
        for (long p = 1; p <= size_.properties; ++p) {
            const char* type = KindOf(static_cast<std::size_t>(p - 1)).type;
            store_.MakeProperty(meta, "Property " + std::to_string(p),
                                store_.Meta().types.Find(type), "Synthetic property");
        }
    }

    void MakeNodes(long m) {
        const store::MetaNodeRef& meta = metaNodes_[static_cast<std::size_t>(m - 1)];
        std::vector<store::MetaPropertyRef> properties;
        for (long p = 1; p <= size_.properties; ++p) {
            properties.push_back(meta->properties.Find("Property " + std::to_string(p)));
        }
        for (long n = 1; n <= size_.nodes; ++n) {
            const auto node = store_.MakeNode(
                meta, NodeIdentifier(m, n), "Node " + std::to_string(m) + "." + std::to_string(n));
            for (std::size_t p = 0; p < properties.size(); ++p) {
                store_.SetValue(node, *properties[p], KindOf(p).valueOf(n));
            }
        }
    }

    /// The nodes at the other ends are spread over all nodes of the next meta node.
    void MakeLinks(long m) {
        const long next = m % size_.metaNodes + 1;
        const auto meta = store_.MakeMetaLink(TypeName(m) + " to " + TypeName(next), "to",
                                              metaNodes_[static_cast<std::size_t>(m - 1)],
                                              metaNodes_[static_cast<std::size_t>(next - 1)], "");
        for (long n = 1; n <= size_.nodes; ++n) {
            const auto source = store_.Find(NodeIdentifier(m, n));
            for (long l = 1; l <= size_.links; ++l) {
                const long other = (n * 7 + l * 13) % size_.nodes + 1;
                const std::string number =
                    std::to_string(m) + "." + std::to_string(n) + "." + std::to_string(l);
                store_.MakeLink(meta, source, store_.Find(NodeIdentifier(next, other)),
                                "l" + number, "Link " + number);
            }
        }
    }

    store::Store& store_;
    Size size_;
    std::vector<store::MetaNodeRef> metaNodes_;
};

}  // namespace

void Generate(store::Store& store, const Size& size) {
    if (size.metaNodes < 0 || size.nodes < 0 || size.links < 0 || size.properties < 0) {
        throw store::Error(store::Number::invalidCall, "A number of elements is not negative");
    }
    store.Change("Generate", [&] { Generator(store, size).Run(); });
}

}  // namespace repository::synthetic
