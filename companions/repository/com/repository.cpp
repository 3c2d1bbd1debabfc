#include "repository/com/repository.h"

#include <type_traits>

#include "repository/com/arguments.h"
#include "repository/com/failure.h"
#include "repository/com/model_elements.h"
#include "repository/com/object_collection.h"
#include "repository/com/show.h"
#include "repository/com/signature.h"
#include "repository/com/text.h"
#include "repository/com/variant.h"
#include "repository/import/type_library_import.h"
#include "repository/store/file.h"
#include "repository/synthetic/generator.h"

namespace repository::com {

template <class Work>
HRESULT Repository::Do(Work&& work) noexcept {
    return Run([&] { Translated(work); });
}

STDMETHODIMP Repository::New(VARIANT* file) {
    return Do([&] { Use(store::Store::Create(TextOr(*file, store::inMemory))); });
}

STDMETHODIMP Repository::Open(VARIANT* file) {
    return Do([&] { Use(store::Store::Open(TextOf(*file))); });
}

STDMETHODIMP Repository::SaveAs(VARIANT* file) {
    return Do([&] { Store().SaveAs(TextOf(*file)); });
}

STDMETHODIMP Repository::Close() {
    return Do([&] { store_.reset(); });
}

STDMETHODIMP Repository::get_Path(BSTR* result) {
    return Do([&] { *result = ToResult(store_ ? store_->Path() : std::string()); });
}

STDMETHODIMP Repository::get_IsOpen(VARIANT_BOOL* result) {
    return Do([&] { *result = ToResult(store_ != nullptr); });
}

STDMETHODIMP Repository::Refresh() {
    return Do([&] { Store().Refresh(); });
}

STDMETHODIMP Repository::get_MetaNodes(VARIANT* name, IDispatch** result) {
    return Do([&] {
        Store();
        *result = CollectionOrElement(*this, MakeMetaNodeElements(*this), *name).Detach();
    });
}

STDMETHODIMP Repository::get_MetaLinks(VARIANT* name, IDispatch** result) {
    return Do([&] {
        Store();
        *result = CollectionOrElement(*this, MakeMetaLinkElements(*this), *name).Detach();
    });
}

STDMETHODIMP Repository::get_MetaTypes(VARIANT* name, IDispatch** result) {
    return Do([&] {
        Store();
        *result = CollectionOrElement(*this, MakeMetaTypeElements(*this), *name).Detach();
    });
}

STDMETHODIMP Repository::get_MetaEnums(VARIANT* name, IDispatch** result) {
    return Do([&] {
        Store();
        *result = CollectionOrElement(*this, MakeMetaEnumElements(*this), *name).Detach();
    });
}

STDMETHODIMP Repository::MakeNode(VARIANT* identifier, VARIANT* metaNodeName, VARIANT* name,
                                  _Node** result) {
    return Do([&] {
        const store::MetaNodeRef meta = MetaNodeOf(*this, *metaNodeName);
        *result =
            ShowNode(*this, Store().MakeNode(meta, TextOf(*identifier), TextOf(*name))).Detach();
    });
}

STDMETHODIMP Repository::MakeLink(VARIANT* ofMetaLink, VARIANT* sourceNode, VARIANT* targetNode,
                                  VARIANT* identifier, VARIANT* name, _Link** result) {
    return Do([&] {
        const store::MetaLinkRef meta = MetaLinkOf(*this, *ofMetaLink);
        const store::ObjectRef source = NodeOf(*this, *sourceNode);
        const store::ObjectRef target = NodeOf(*this, *targetNode);
        const store::ObjectRef link =
            Store().MakeLink(meta, source, target, TextOf(*identifier), TextOf(*name));
        *result = ShowLink(*this, link).Detach();
    });
}

STDMETHODIMP Repository::MakeProperty(VARIANT* ofMetaObject, VARIANT* name, VARIANT* dataTypeWord,
                                      VARIANT* about, VARIANT* metaTypeName,
                                      _MetaProperty** result) {
    return Do([&] {
        const store::MetaObjectRef owner = MetaObjectOf(*this, *ofMetaObject);
        const std::string description = TextOf(*about);
        store::MetaPropertyRef property;
        Store().Change([&] {
            const auto metaType =
                TypeFor(TextOf(*metaTypeName), TextOf(*dataTypeWord), description);
            property = Store().MakeProperty(owner, TextOf(*name), metaType, description);
        });
        *result = Show(*this, property).Detach();
    });
}

STDMETHODIMP Repository::RemoveClass(VARIANT* element) {
    return Do([&] { Remove(ElementOf(*this, *element)); });
}

STDMETHODIMP Repository::MakeMetaNode(VARIANT* name, VARIANT* about, _MetaNode** result) {
    return Do([&] {
        *result = Show(*this, Store().MakeMetaNode(TextOf(*name), TextOr(*about, ""))).Detach();
    });
}

STDMETHODIMP Repository::MakeMetaLink(VARIANT* name, VARIANT* sourceMetaNode,
                                      VARIANT* targetMetaNode, VARIANT* about, VARIANT* labelOfLink,
                                      _MetaLink** result) {
    return Do([&] {
        const std::string text = TextOf(*name);
        const store::MetaNodeRef source = MetaNodeOf(*this, *sourceMetaNode);
        const store::MetaNodeRef target = MetaNodeOf(*this, *targetMetaNode);
        const store::MetaLinkRef link = Store().MakeMetaLink(text, TextOr(*labelOfLink, text),
                                                             source, target, TextOr(*about, ""));
        *result = Show(*this, link).Detach();
    });
}

STDMETHODIMP Repository::MakeMetaType(VARIANT* name, VARIANT* dataTypeWord, VARIANT* about,
                                      _MetaType** result) {
    return Do([&] {
        const std::string word = TextOf(*dataTypeWord);
        const auto dataType = store::DataTypeOf(word);
        if (!dataType) {
            Throw(store::Number::invalidPropertyValue, "\"" + word + "\" is no data type");
        }
        const store::MetaTypeRef made =
            Store().MakeMetaType(TextOf(*name), *dataType, TextOr(*about, ""), nullptr);
        *result = Show(*this, made).Detach();
    });
}

STDMETHODIMP Repository::MakeMetaEnum(VARIANT* name, VARIANT* atomNames, VARIANT* about,
                                      _MetaType** result) {
    return Do([&] {
        const std::string text = TextOf(*name);
        const std::vector<std::string> atoms =
            IsArray(*atomNames) ? TextsOf(*atomNames) : SplitAtoms(TextOf(*atomNames));
        store::MetaTypeRef made;
        Store().Change([&] {
            made = Store().MakeMetaType(text, store::DataType::string, TextOr(*about, ""),
                                        Store().MakeEnum(text, atoms));
        });
        *result = Show(*this, made).Detach();
    });
}

STDMETHODIMP Repository::get_Objects(VARIANT* identifier, IDispatch** result) {
    return Do([&] { *result = Show(*this, Store().Find(TextOf(*identifier))).Detach(); });
}

STDMETHODIMP Repository::Import(VARIANT* file, long* result) {
    return Do([&] {
        messages_ = type_library::Import(Store(), Wide(TextOf(*file)));
        *result = static_cast<long>(messages_.size());
    });
}

STDMETHODIMP Repository::get_ImportMessages(VARIANT* result) {
    return Do([&] { *result = ToArray(messages_).Detach(); });
}

STDMETHODIMP Repository::Generate(VARIANT* metaNodeCount, VARIANT* nodeCount, VARIANT* linkCount,
                                  VARIANT* propertyCount) {
    return Do([&] {
        synthetic::Generate(Store(), {LongOf(*metaNodeCount), LongOf(*nodeCount),
                                      LongOf(*linkCount), LongOf(*propertyCount)});
    });
}

STDMETHODIMP Repository::get_BusyTimeout(long* result) {
    return Do([&] { *result = busyTimeout_; });
}

STDMETHODIMP Repository::put_BusyTimeout(VARIANT* milliseconds) {
    return Do([&] {
        const long wanted = LongOf(*milliseconds);
        if (wanted < 0) Throw(store::Number::invalidPropertyValue, "A time is not negative");
        if (store_) store_->SetBusyTimeout(static_cast<int>(wanted));
        busyTimeout_ = wanted;
    });
}

store::Store& Repository::Store() {
    if (!store_) Throw(store::Number::objectNotSet, "No repository is open");
    return *store_;
}

store::Store& Repository::StoreOf(Session session) {
    if (!IsCurrent(session)) {
        Throw(store::Number::objectNotSet, "The repository of this object has been closed");
    }
    return *store_;
}

void Repository::Remove(const Element& element) {
    store::Store& store = Store();
    std::visit(
        [&](const auto& held) {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, HeldValue>) {
                store.SetValue(held.object, *held.property, store::Empty());
            } else if constexpr (std::is_same_v<Held, store::MetaNodeRef> ||
                                 std::is_same_v<Held, store::MetaLinkRef>) {
                store.Remove(store::MetaObjectRef(held));
            } else if constexpr (std::is_same_v<Held, store::MetaPropertyRef> ||
                                 std::is_same_v<Held, store::MetaTypeRef> ||
                                 std::is_same_v<Held, store::ObjectRef>) {
                store.Remove(held);
            } else {
                Throw(store::Number::invalidCall, "An enumeration goes with its meta type");
            }
        },
        element);
}

void Repository::Use(std::unique_ptr<store::Store> opened) {
    opened->SetBusyTimeout(static_cast<int>(busyTimeout_));
    store_ = std::move(opened);
    ++session_;
    messages_.clear();
}

store::MetaTypeRef Repository::TypeFor(const std::string& name, const std::string& word,
                                       const std::string& description) {
    const std::string& typeName = name.empty() ? word : name;
    if (const store::MetaTypeRef known = Store().Meta().types.Find(typeName)) {
        const std::string folded = store::FoldCase(word);
        if (!word.empty() && folded != store::FoldCase(known->name) &&
            folded != store::FoldCase(store::WordOf(known->dataType))) {
            Throw(store::Number::invalidPropertyValue,
                  "The data type of \"" + known->name + "\" is not \"" + word + "\"");
        }
        return known;
    }
    const auto signature = ParseSignature(description);
    if (typeName.empty() || !signature) {
        Throw(store::Number::invalidCall, "There is no meta type \"" + typeName + "\"");
    }
    return Store().MakeMetaType(typeName, store::DataType::string, "",
                                Store().MakeEnum(signature->name, signature->atoms));
}

}  // namespace repository::com
