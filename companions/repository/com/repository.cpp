#include "repository/com/repository.h"

#include <chrono>
#include <type_traits>
#include <utility>

#include "repository/com/arguments.h"
#include "repository/com/failure.h"
#include "repository/com/model_elements.h"
#include "repository/com/object_collection.h"
#include "repository/com/search_elements.h"
#include "repository/com/show.h"
#include "repository/com/signature.h"
#include "repository/com/text.h"
#include "repository/com/variant.h"
#include "repository/ecore/exporter.h"
#include "repository/ecore/file.h"
#include "repository/ecore/importer.h"
#include "repository/import/type_library_import.h"
#include "repository/store/file.h"
#include "repository/synthetic/generator.h"

namespace repository::com {

template <class Work>
HRESULT Repository::Do(Work&& work) noexcept {
    return Run([&] { Translated(work); });
}

STDMETHODIMP Repository::New(VARIANT* file) {
    return Do([&] {
        const std::string path = TextOr(*file, store::inMemory);
        RequireIdle();
        RequireNoChange();
        Use(store::Store::Create(path));
    });
}

STDMETHODIMP Repository::Open(VARIANT* file) {
    return Do([&] {
        const std::string path = TextOf(*file);
        RequireIdle();
        RequireNoChange();
        Use(store::Store::Open(path));
    });
}

STDMETHODIMP Repository::SaveAs(VARIANT* file) {
    return Do([&] {
        const std::string path = TextOf(*file);
        Store().SaveAs(path);
    });
}

STDMETHODIMP Repository::Close() {
    return Do([&] {
        RequireIdle();
        RequireNoChange();
        store_.reset();
    });
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
        const Key key(*name);
        Store();
        *result = CollectionOrElement(*this, MakeMetaNodeElements(*this), key).Detach();
    });
}

STDMETHODIMP Repository::get_MetaLinks(VARIANT* name, IDispatch** result) {
    return Do([&] {
        const Key key(*name);
        Store();
        *result = CollectionOrElement(*this, MakeMetaLinkElements(*this), key).Detach();
    });
}

STDMETHODIMP Repository::get_MetaTypes(VARIANT* name, IDispatch** result) {
    return Do([&] {
        const Key key(*name);
        Store();
        *result = CollectionOrElement(*this, MakeMetaTypeElements(*this), key).Detach();
    });
}

STDMETHODIMP Repository::get_MetaEnums(VARIANT* name, IDispatch** result) {
    return Do([&] {
        const Key key(*name);
        Store();
        *result = CollectionOrElement(*this, MakeMetaEnumElements(*this), key).Detach();
    });
}

STDMETHODIMP Repository::MakeNode(VARIANT* identifier, VARIANT* metaNodeName, VARIANT* name,
                                  _Node** result) {
    return Do([&] {
        const std::string key = TextOf(*identifier);
        const std::string text = TextOf(*name);
        const Reference meta(*metaNodeName);
        *result = ShowNode(*this, Store().MakeNode(MetaNodeOf(*this, meta), key, text)).Detach();
    });
}

STDMETHODIMP Repository::MakeLink(VARIANT* ofMetaLink, VARIANT* sourceNode, VARIANT* targetNode,
                                  VARIANT* identifier, VARIANT* name, _Link** result) {
    return Do([&] {
        const std::string key = TextOf(*identifier);
        const std::string text = TextOf(*name);
        const Reference meta(*ofMetaLink);
        const Reference source(*sourceNode);
        const Reference target(*targetNode);
        const store::ObjectRef link = Store().MakeLink(
            MetaLinkOf(*this, meta), NodeOf(*this, source), NodeOf(*this, target), key, text);
        *result = ShowLink(*this, link).Detach();
    });
}

STDMETHODIMP Repository::MakeProperty(VARIANT* ofMetaObject, VARIANT* name, VARIANT* dataTypeWord,
                                      VARIANT* about, VARIANT* metaTypeName,
                                      _MetaProperty** result) {
    return Do([&] {
        const std::string text = TextOf(*name);
        const std::string word = TextOf(*dataTypeWord);
        const std::string description = TextOf(*about);
        const std::string typeName = TextOf(*metaTypeName);
        const Reference owner(*ofMetaObject);
        const store::MetaObjectRef meta = MetaObjectOf(*this, owner);
        store::MetaPropertyRef property;
        Store().Change([&] {
            property =
                Store().MakeProperty(meta, text, TypeFor(typeName, word, description), description);
        });
        *result = Show(*this, property).Detach();
    });
}

STDMETHODIMP Repository::RemoveClass(VARIANT* element) {
    return Do([&] {
        const Reference removed(*element);
        Remove(removed.In(*this));
    });
}

STDMETHODIMP Repository::MakeMetaNode(VARIANT* name, VARIANT* about, _MetaNode** result) {
    return Do([&] {
        const std::string text = TextOf(*name);
        const std::string description = TextOr(*about, "");
        *result = Show(*this, Store().MakeMetaNode(text, description)).Detach();
    });
}

STDMETHODIMP Repository::MakeMetaLink(VARIANT* name, VARIANT* sourceMetaNode,
                                      VARIANT* targetMetaNode, VARIANT* about, VARIANT* labelOfLink,
                                      _MetaLink** result) {
    return Do([&] {
        const std::string text = TextOf(*name);
        const std::string linkName = TextOr(*labelOfLink, text);
        const std::string description = TextOr(*about, "");
        const Reference source(*sourceMetaNode);
        const Reference target(*targetMetaNode);
        const store::MetaLinkRef link = Store().MakeMetaLink(
            text, linkName, MetaNodeOf(*this, source), MetaNodeOf(*this, target), description);
        *result = Show(*this, link).Detach();
    });
}

STDMETHODIMP Repository::MakeMetaType(VARIANT* name, VARIANT* dataTypeWord, VARIANT* about,
                                      _MetaType** result) {
    return Do([&] {
        const std::string text = TextOf(*name);
        const std::string word = TextOf(*dataTypeWord);
        const std::string description = TextOr(*about, "");
        const auto dataType = store::DataTypeOf(word);
        if (!dataType) {
            Throw(store::Number::invalidPropertyValue, "\"" + word + "\" is no data type");
        }
        *result = Show(*this, Store().MakeMetaType(text, *dataType, description, nullptr)).Detach();
    });
}

STDMETHODIMP Repository::MakeMetaEnum(VARIANT* name, VARIANT* atomNames, VARIANT* about,
                                      _MetaType** result) {
    return Do([&] {
        const std::string text = TextOf(*name);
        const std::vector<std::string> atoms =
            IsArray(*atomNames) ? TextsOf(*atomNames) : SplitAtoms(TextOf(*atomNames));
        const std::string description = TextOr(*about, "");
        store::MetaTypeRef made;
        Store().Change([&] {
            made = Store().MakeMetaType(text, store::DataType::string, description,
                                        Store().MakeEnum(text, atoms));
        });
        *result = Show(*this, made).Detach();
    });
}

STDMETHODIMP Repository::get_Objects(VARIANT* identifier, IDispatch** result) {
    return Do([&] {
        const std::string key = TextOf(*identifier);
        *result = Show(*this, Store().Find(key)).Detach();
    });
}

STDMETHODIMP Repository::Import(VARIANT* file, VARIANT* secondFile, VARIANT* thirdFile,
                                VARIANT* fourthFile, long* result) {
    return Do([&] {
        std::vector<std::string> files;
        for (const VARIANT* each : {file, secondFile, thirdFile, fourthFile}) {
            if (IsArray(*each)) {
                for (std::string& path : TextsOf(*each)) files.push_back(std::move(path));
            } else if (each == file || IsGiven(*each)) {
                files.push_back(TextOf(*each));
            }
        }
        ImportAll(files);
        *result = static_cast<long>(messages_.size());
    });
}

STDMETHODIMP Repository::Export(VARIANT* file, long* result) {
    return Do([&] {
        const std::string path = TextOf(*file);
        messages_ = ecore::Export(Store(), path);
        *result = static_cast<long>(messages_.size());
    });
}

void Repository::ImportAll(const std::vector<std::string>& files) {
    store::Store& store = Store();
    std::vector<std::string> models;
    std::vector<std::string> libraries;
    for (const std::string& file : files) {
        const bool isModel = ecore::IsFile(file) && ecore::IsXml(file);
        (isModel ? models : libraries).push_back(file);
    }
    std::vector<std::string> messages;
    const auto add = [&](const std::vector<std::string>& further) {
        messages.insert(messages.end(), further.begin(), further.end());
    };
    long reported = -1;
    std::chrono::steady_clock::time_point last;
    const auto progress = [&](std::uint64_t done, std::uint64_t total) {
        const auto percent = static_cast<long>(done * 100 / (total == 0 ? 1 : total));
        const auto now = std::chrono::steady_clock::now();
        // A host that may cancel is asked even where there is no progress in percent.
        if (percent == reported && now - last < std::chrono::milliseconds(100)) return true;
        reported = percent;
        last = now;
        return FireImportProgress(percent);
    };
    importing_ = true;
    const std::unique_ptr<bool, void (*)(bool*)> atEnd(&importing_,
                                                       [](bool* flag) { *flag = false; });
    try {
        store.Change("Import", [&] {
            for (const std::string& file : libraries) add(type_library::Import(store, Wide(file)));
            if (!models.empty()) add(ecore::Import(store, models, progress).messages);
        });
    } catch (const store::Error& error) {
        messages_ = {error.what()};
        throw;
    }
    messages_ = std::move(messages);
}

bool Repository::FireImportProgress(long percent) {
    VARIANT_BOOL cancel = VARIANT_FALSE;
    VARIANT arguments[2] = {};
    V_VT(&arguments[0]) = VT_BYREF | VT_I4;
    V_I4REF(&arguments[0]) = &percent;
    V_VT(&arguments[1]) = VT_BYREF | VT_BOOL;
    V_BOOLREF(&arguments[1]) = &cancel;
    constexpr DISPID importProgress = 1;
    events_.Fire(importProgress, arguments, 2);
    return cancel == VARIANT_FALSE;
}

void* Repository::FindInterface(REFIID id) {
    void* events = events_.FindInterface(id);
    return events != nullptr ? events : Automation::FindInterface(id);
}

STDMETHODIMP Repository::get_ImportMessages(VARIANT* result) {
    return Do([&] { *result = ToArray(messages_).Detach(); });
}

STDMETHODIMP Repository::Generate(VARIANT* metaNodeCount, VARIANT* nodeCount, VARIANT* linkCount,
                                  VARIANT* propertyCount) {
    return Do([&] {
        const synthetic::Size size = {LongOf(*metaNodeCount), LongOf(*nodeCount),
                                      LongOf(*linkCount), LongOf(*propertyCount)};
        synthetic::Generate(Store(), size);
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

STDMETHODIMP Repository::BeginChange(VARIANT* name) {
    return Do([&] {
        const std::string text = TextOr(*name, "");
        Store().BeginChange(text);
    });
}

STDMETHODIMP Repository::EndChange() {
    return Do([&] { Store().EndChange(); });
}

STDMETHODIMP Repository::CancelChange() {
    return Do([&] { Store().CancelChange(); });
}

STDMETHODIMP Repository::Undo() {
    return Do([&] { Store().Undo(); });
}

STDMETHODIMP Repository::Redo() {
    return Do([&] { Store().Redo(); });
}

STDMETHODIMP Repository::get_UndoName(BSTR* result) {
    return Do([&] { *result = ToResult(Store().UndoName()); });
}

STDMETHODIMP Repository::get_RedoName(BSTR* result) {
    return Do([&] { *result = ToResult(Store().RedoName()); });
}

STDMETHODIMP Repository::Search(VARIANT* words, _ObjectCollection** result) {
    return Do([&] {
        const std::string text = TextOf(*words);
        Store();
        *result = MakeCollection(*this, MakeSearchElements(*this, text)).Detach();
    });
}

void Repository::RequireIdle() const {
    if (importing_) {
        Throw(store::Number::permissionDenied, "The repository is busy with an import");
    }
}

store::Store& Repository::Store() {
    RequireIdle();
    if (!store_) Throw(store::Number::objectNotSet, "No repository is open");
    return *store_;
}

store::Store& Repository::StoreOf(Session session) {
    RequireIdle();
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

void Repository::RequireNoChange() const {
    if (!store_ || !store_->IsChanging()) return;
    Throw(store::Number::invalidCall, "A change of the repository has not ended");
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
