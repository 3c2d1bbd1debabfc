#pragma once

#include <comdef.h>

#include <memory>
#include <string_view>
#include <vector>

#include "lists/descriptors.h"
#include "ole/object.h"
#include "widgets/row.h"

namespace lists {

/// The rows, columns and images that an object list writes to.
class RowTable {
public:
    /// Adds a row at the end. Raises 35602 for a key in use.
    virtual widgets::RowPtr AddRow(std::wstring_view key) = 0;
    /// Raises 35601 where no row has the key.
    virtual widgets::RowPtr FindRow(std::wstring_view key) = 0;
    virtual void RemoveRow(widgets::Row& row) = 0;
    virtual void RemoveRows() = 0;
    /// Sets texts, automation strings, of a row from a column on, or its images. Raises 35601 for a
    /// row that was removed.
    virtual void SetTexts(widgets::Row& row, std::size_t firstColumn,
                          std::span<const _variant_t> texts) = 0;
    virtual void SetImages(widgets::Row& row, int image) = 0;

    /// Adds a column; the width in twips.
    virtual void AddHeader(const _bstr_t& text, double width) = 0;

    /// The position of an image, none for an empty key. Raises 35601.
    virtual int FindImage(std::wstring_view key) = 0;
    /// Raises 35600 where there are no images.
    virtual int FirstImage() = 0;
    /// Shows the images beside the rows.
    virtual void AttachImages() = 0;

    /// A row as an automation object.
    virtual ole::Object ItemOf(const widgets::RowPtr& row) = 0;

protected:
    ~RowTable() = default;
};

/// The list of repository objects behind a `ListView`: makes a row of each object of a list, and
/// finds the object of a row by the row's key. Errors of the repository and of the callback reach
/// the caller; the rows made before stay.
class ObjectList {
public:
    /// The kinds of list; the numbers are the interface's.
    enum class Kind : long {
        metaNodes = 0,
        metaLinks = 1,
        outgoingMetaLinks = 2,
        incomingMetaLinks = 3,
        nodes = 4,
        links = 5,
        outgoing = 6,
        incoming = 7,
        metaAttributes = 8,
    };

    explicit ObjectList(RowTable& table) : table_(table) {}

    // What rows look like.

    void AddColumn(const _bstr_t& name, const _bstr_t& property, double width, long fromObject = 0);
    void AddCondition(const _bstr_t& image, const _bstr_t& property, const _bstr_t& value,
                      long fromObject);
    void SetIconsAdded() { iconsAdded_ = true; }
    const ole::Object& Callback() const { return callback_; }
    void SetCallback(const ole::Object& callback);

    // Lists. `all` adds the default columns first.

    void ListMetaNodes(ole::Object repository, bool all);
    void ListMetaLinks(ole::Object repository, bool all);
    void ListIncomingMetaLinks(ole::Object metaNode, bool all);
    void ListOutgoingMetaLinks(ole::Object metaNode, bool all);
    void ListMetaAttributes(ole::Object metaNode, bool all);
    void ListNodes(ole::Object metaNode, bool all);
    void ListLinks(ole::Object metaLink, bool all);
    void ListOutgoing(ole::Object node, ole::Object metaLink, bool all);
    void ListIncoming(ole::Object node, ole::Object metaLink, bool all);

    /// Makes the last list again. Default columns come once more.
    void Refresh();
    Kind ListedKind() const { return kind_; }

    // Single rows.

    void AddMetaObject(const ole::Object& metaObject);
    void AddNode(const ole::Object& node);
    void AddLink(const ole::Object& link);
    /// Lists of a meta node's meta links and meta properties are not kept in step.
    void AddEntry(const ole::Object& object);
    void DeleteEntry(const ole::Object& object);
    void UpdateEntry(const ole::Object& object);

    /// The key that the row of an object has in the present list.
    _bstr_t KeyOf(const ole::Object& object) const;

    /// The object of a row by its key, in what the rows were made from. None where that fails.
    ole::Object Find(const _bstr_t& key) const;
    /// The same in what the list was called with; lists of a meta node's meta links and meta
    /// properties have none.
    ole::Object FindAnew(const _bstr_t& key) const;

    /// Forgets columns, conditions, whether there are images, and the object of the list.
    void Reset();
    /// Forgets everything that refers to an object of the host.
    void LetGo();

private:
    enum class RowKind { metaObject, node, link };
    using Columns = std::vector<ole::Ref<ColumnDesc>>;
    using Conditions = std::vector<ole::Ref<IconCondition>>;

    void Begin(Kind kind, const ole::Object& object, const ole::Object& source, bool all);
    void AddDefaultColumns(std::initializer_list<const wchar_t*> namesAndProperties);
    void AddMetaLinkColumns(const wchar_t* descriptionHeader);
    void AddPropertyColumns(const ole::Object& metaObject, bool ofLinks);
    void AddMetaObjects(const ole::Object& objects);
    void AddLinks(const ole::Object& links);
    void Add(const ole::Object& object, RowKind kind);
    RowKind KindOfRows() const;
    bool IsKeptInStep() const;

    void Fill(const widgets::RowPtr& row, const ole::Object& object, RowKind kind);
    void ChooseImages(widgets::Row& row, const ole::Object& object, RowKind kind);

    RowTable& table_;
    Kind kind_ = Kind::metaNodes;
    bool all_ = false;
    bool iconsAdded_ = false;
    ole::Object source_;
    ole::Object object_;
    ole::Object node_;
    ole::Object callback_;
    // A host may replace or extend them while rows are filled; a row goes on with those that it
    // began with.
    std::shared_ptr<Columns> columns_ = std::make_shared<Columns>();
    std::shared_ptr<Conditions> conditions_ = std::make_shared<Conditions>();
    /// Memory for the texts of the row that is filled.
    std::vector<_variant_t> scratch_;
};

}  // namespace lists
