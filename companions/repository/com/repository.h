#pragma once

#include <repository.h>

#include <memory>
#include <string>
#include <vector>

#include "ole/automation.h"
#include "ole/connection_point.h"
#include "repository/com/held.h"
#include "repository/store/store.h"

namespace repository::com {

/// `OrvaneRepository.Repository`: its members are documented in the type library.
class Repository final : public ole::Automation<_Repository, CLSID_Repository> {
public:
    STDMETHODIMP New(VARIANT* file) override;
    STDMETHODIMP Open(VARIANT* file) override;
    STDMETHODIMP SaveAs(VARIANT* file) override;
    STDMETHODIMP Close() override;
    STDMETHODIMP get_Path(BSTR* result) override;
    STDMETHODIMP get_IsOpen(VARIANT_BOOL* result) override;
    STDMETHODIMP Refresh() override;
    STDMETHODIMP get_MetaNodes(VARIANT* name, IDispatch** result) override;
    STDMETHODIMP get_MetaLinks(VARIANT* name, IDispatch** result) override;
    STDMETHODIMP get_MetaTypes(VARIANT* name, IDispatch** result) override;
    STDMETHODIMP get_MetaEnums(VARIANT* name, IDispatch** result) override;
    STDMETHODIMP MakeNode(VARIANT* identifier, VARIANT* metaNodeName, VARIANT* name,
                          _Node** result) override;
    STDMETHODIMP MakeLink(VARIANT* ofMetaLink, VARIANT* sourceNode, VARIANT* targetNode,
                          VARIANT* identifier, VARIANT* name, _Link** result) override;
    STDMETHODIMP MakeProperty(VARIANT* ofMetaObject, VARIANT* name, VARIANT* dataTypeWord,
                              VARIANT* about, VARIANT* metaTypeName,
                              _MetaProperty** result) override;
    STDMETHODIMP RemoveClass(VARIANT* element) override;
    STDMETHODIMP MakeMetaNode(VARIANT* name, VARIANT* about, _MetaNode** result) override;
    STDMETHODIMP MakeMetaLink(VARIANT* name, VARIANT* sourceMetaNode, VARIANT* targetMetaNode,
                              VARIANT* about, VARIANT* labelOfLink, _MetaLink** result) override;
    STDMETHODIMP MakeMetaType(VARIANT* name, VARIANT* dataTypeWord, VARIANT* about,
                              _MetaType** result) override;
    STDMETHODIMP MakeMetaEnum(VARIANT* name, VARIANT* atomNames, VARIANT* about,
                              _MetaType** result) override;
    STDMETHODIMP get_Objects(VARIANT* identifier, IDispatch** result) override;
    STDMETHODIMP Import(VARIANT* file, VARIANT* secondFile, VARIANT* thirdFile, VARIANT* fourthFile,
                        long* result) override;
    STDMETHODIMP Export(VARIANT* file, long* result) override;
    STDMETHODIMP get_ImportMessages(VARIANT* result) override;
    STDMETHODIMP Generate(VARIANT* metaNodeCount, VARIANT* nodeCount, VARIANT* linkCount,
                          VARIANT* propertyCount) override;
    STDMETHODIMP get_BusyTimeout(long* result) override;
    STDMETHODIMP put_BusyTimeout(VARIANT* milliseconds) override;
    STDMETHODIMP BeginChange(VARIANT* name) override;
    STDMETHODIMP EndChange() override;
    STDMETHODIMP CancelChange() override;
    STDMETHODIMP Undo() override;
    STDMETHODIMP Redo() override;
    STDMETHODIMP get_UndoName(BSTR* result) override;
    STDMETHODIMP get_RedoName(BSTR* result) override;
    STDMETHODIMP Search(VARIANT* words, _ObjectCollection** result) override;

    // For the objects of the repository.

    /// One opening of a repository. The objects of an earlier one are without a store.
    using Session = unsigned;
    Session Current() const { return session_; }
    bool IsCurrent(Session session) const { return store_ && session == session_; }

    /// The open store. Error 91 when none is open, or not the one of that session any more.
    store::Store& Store();
    store::Store& StoreOf(Session session);

    /// Takes an element out of the repository; a property of an object only loses its value.
    void Remove(const Element& element);

private:
    /// What every member does.
    template <class Work>
    HRESULT Do(Work&& work) noexcept;

    void* FindInterface(REFIID id) override;

    void RequireIdle() const;
    void ImportAll(const std::vector<std::string>& files);
    /// Tells the sinks how far an import is; false where one of them cancels it.
    bool FireImportProgress(long percent);

    void Use(std::unique_ptr<store::Store> opened);
    /// Throws when the open repository is in the middle of a change: that would be lost.
    void RequireNoChange() const;
    store::MetaTypeRef TypeFor(const std::string& name, const std::string& word,
                               const std::string& description);

    std::unique_ptr<store::Store> store_;
    Session session_ = 0;
    long busyTimeout_ = store::Store::defaultBusyTimeout;
    std::vector<std::string> messages_;
    ole::ConnectionPoints events_{*static_cast<_Repository*>(this), DIID___Repository};
    bool importing_ = false;
};

}  // namespace repository::com
