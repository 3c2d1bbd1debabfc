#include "repository/ecore/model_fixture.h"

#include <algorithm>

#include "repository/ecore/data_type.h"
#include "repository/store/error.h"

namespace repository::ecore {

namespace {

template <class Use>
void ForEachObject(store::Store& store, const store::MetaObject& meta, Use&& use) {
    store::Id after = 0;
    for (;;) {
        const auto some = store.Read(store::ObjectSet::Instances(meta), after, 1000);
        if (some.empty()) return;
        for (const store::ObjectRef& object : some) use(object);
        after = some.back()->id;
    }
}

std::string TextOfValue(store::Store& store, store::Object& object,
                        const store::MetaProperty& property) {
    const store::Value value = store.GetValue(object, property);
    return store::IsEmpty(value) ? "-" : FormatValue(value);
}

void AddProperties(std::vector<std::string>& lines, const store::MetaObject& object) {
    for (const store::MetaPropertyRef& each : object.properties) {
        lines.push_back("property " + object.name + "." + each->name + ": " + each->type->name +
                        (store::IsEmpty(each->defaultValue) ? " without default" : " = ") +
                        FormatValue(each->defaultValue) + (each->dynamic ? " dynamic" : "") +
                        (each->persistent ? " " : " transient ") + each->description);
    }
}

}  // namespace

std::string Metamodel(const std::string& classifiers, const std::string& attributes) {
    return "<?xml version='1.0' encoding='UTF-8'?>\n"
           "<ecore:EPackage xmi:version='2.0' xmlns:xmi='http://www.omg.org/XMI' "
           "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
           "xmlns:ecore='http://www.eclipse.org/emf/2002/Ecore' " +
           attributes + ">\n" + classifiers + "</ecore:EPackage>\n";
}

std::string Model(const std::string& element) {
    std::string text = element;
    const auto end = text.find_first_of(" />", 1);
    text.insert(end,
                " xmlns:p='urn:p' xmlns:xmi='http://www.omg.org/XMI' "
                "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'");
    return "<?xml version='1.0' encoding='UTF-8'?>\n" + text + "\n";
}

std::string ModelTest::Write(const std::string& name, const std::string& text) {
    store::WriteFile(Path(name), text);
    return Path(name);
}

ImportResult ModelTest::Take(const std::vector<std::pair<std::string, std::string>>& files) {
    std::vector<std::string> paths;
    for (const auto& [name, text] : files) paths.push_back(Write(name, text));
    return Import(*store, paths);
}

std::string ModelTest::ErrorOf(const std::vector<std::pair<std::string, std::string>>& files) {
    const auto before = ContentOf(*store);
    std::string text = "no error";
    try {
        Take(files);
    } catch (const store::Error& error) {
        EXPECT_EQ(error.ErrorNumber(), store::Number::invalidFileFormat);
        text = error.what();
    }
    EXPECT_EQ(ContentOf(*store), before);
    return text;
}

std::string ModelTest::Value(const std::string& identifier, const std::string& property) {
    const store::ObjectRef object = store->Find(identifier);
    if (!object) return "no object " + identifier;
    const auto found = object->meta->properties.Find(property);
    return found ? TextOfValue(*store, *object, *found) : "no property " + property;
}

std::vector<std::string> ModelTest::Links() {
    std::vector<std::pair<store::Id, std::string>> links;
    for (const store::MetaLinkRef& meta : store->Meta().links) {
        ForEachObject(*store, *meta, [&](const store::ObjectRef& link) {
            links.emplace_back(link->id, store->Source(*link)->identifier + " " + meta->linkName +
                                             " " + store->Target(*link)->identifier);
        });
    }
    std::sort(links.begin(), links.end());
    std::vector<std::string> texts;
    for (const auto& [id, text] : links) texts.push_back(text);
    return texts;
}

std::vector<std::string> ModelTest::Nodes() {
    std::vector<std::pair<store::Id, std::string>> nodes;
    for (const store::MetaNodeRef& meta : store->Meta().nodes) {
        ForEachObject(*store, *meta, [&](const store::ObjectRef& node) {
            nodes.emplace_back(node->id,
                               node->identifier + ": " + meta->name + " (" + node->name + ")");
        });
    }
    std::sort(nodes.begin(), nodes.end());
    std::vector<std::string> texts;
    for (const auto& [id, text] : nodes) texts.push_back(text);
    return texts;
}

void ExpectSame(const std::vector<std::string>& before, const std::vector<std::string>& after) {
    EXPECT_EQ(before.size(), after.size());
    std::vector<std::string> lost;
    std::vector<std::string> added;
    const auto sorted = [](std::vector<std::string> lines) {
        std::sort(lines.begin(), lines.end());
        return lines;
    };
    const auto first = sorted(before);
    const auto second = sorted(after);
    std::set_difference(first.begin(), first.end(), second.begin(), second.end(),
                        std::back_inserter(lost));
    std::set_difference(second.begin(), second.end(), first.begin(), first.end(),
                        std::back_inserter(added));
    lost.resize(std::min<std::size_t>(lost.size(), 8));
    added.resize(std::min<std::size_t>(added.size(), 8));
    EXPECT_THAT(lost, testing::IsEmpty());
    EXPECT_THAT(added, testing::IsEmpty());
}

std::vector<std::string> ContentOf(store::Store& store) {
    std::vector<std::string> lines;
    const store::MetaModel& meta = store.Meta();
    for (const store::MetaNodeRef& node : meta.nodes) {
        std::string line = "meta node " + node->name + (node->abstract ? " abstract" : "") + ":";
        std::vector<std::string> above;
        for (const auto& each : node->supertypes) above.push_back(each->name);
        std::sort(above.begin(), above.end());
        for (const std::string& each : above) line += " " + each;
        lines.push_back(line + " " + node->description);
        AddProperties(lines, *node);
    }
    for (const store::MetaLinkRef& link : meta.links) {
        lines.push_back("meta link " + link->name + " " + link->linkName + ": " +
                        link->source->name + " to " + link->target->name + " " + link->description);
        AddProperties(lines, *link);
    }
    for (const store::MetaTypeRef& type : meta.types) {
        std::string line = "type " + type->name + " " + std::string(WordOf(type->dataType)) + " " +
                           type->description;
        if (type->enumeration) {
            line += " " + type->enumeration->name;
            for (const auto& atom : type->enumeration->atoms) line += " | " + atom->name;
        }
        lines.push_back(line);
    }
    std::sort(lines.begin(), lines.end());
    std::vector<std::string> objects;
    for (const store::MetaNodeRef& node : meta.nodes) {
        ForEachObject(store, *node, [&](const store::ObjectRef& object) {
            std::string line =
                "node " + object->identifier + ": " + node->name + " " + object->description;
            for (const store::MetaPropertyRef& each : node->properties) {
                if (!store.HasValue(*object, *each)) continue;
                line += " " + each->name + "=" + TextOfValue(store, *object, *each);
            }
            objects.push_back(line);
            // The order counts for the links of one kind.
            for (const store::MetaLinkRef& link : node->outgoing) {
                std::string links = "links " + object->identifier + " " + link->name + ":";
                store::Id after = 0;
                for (;;) {
                    const auto some =
                        store.Read(store::ObjectSet::Outgoing(*object, link->id), after, 1000);
                    if (some.empty()) break;
                    for (const store::ObjectRef& each : some) {
                        links += " " + store.Target(*each)->identifier + " (" + each->identifier +
                                 ", " + each->name + ", " + each->description + ")";
                    }
                    after = some.back()->id;
                }
                if (after != 0) objects.push_back(links);
            }
        });
    }
    std::sort(objects.begin(), objects.end());
    lines.insert(lines.end(), objects.begin(), objects.end());
    return lines;
}

}  // namespace repository::ecore
