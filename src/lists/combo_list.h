#pragma once

#include <comdef.h>

#include "lists/link_end.h"
#include "lists/numbered_objects.h"
#include "ole/object.h"

namespace lists {

/// The rows that a combo list writes to: a box of texts with a number each.
class RowBox {
public:
    virtual void AddRow(const wchar_t* text) = 0;
    /// Does nothing while no row was added since the last `RemoveRows`.
    virtual void SetNewestNumber(long number) = 0;
    virtual long Number(int row) = 0;
    virtual int RowCount() = 0;
    virtual void RemoveRows() = 0;
    virtual int CurrentRow() = 0;
    /// Makes a row current, which reports a click.
    virtual void SetCurrentRow(int row) = 0;

protected:
    ~RowBox() = default;
};

/// The list of repository objects behind a `Combo`: reads the objects of a list, shows a text of
/// each in a row, and finds the object of a row by the row's number. Errors of the repository reach
/// the caller; the rows made before stay.
class ComboList {
public:
    explicit ComboList(RowBox& box) : box_(box) {}

    void ListMetaNodes(ole::Object repository, const _bstr_t& viewAttr);
    void ListMetaLinks(ole::Object repository, const _bstr_t& viewAttr);
    void ListMetaProperties(ole::Object object);
    void ListNodes(ole::Object metaNode, const _bstr_t& viewAttr);
    void ListLinks(ole::Object metaLink, const _bstr_t& viewAttr, long showObject);
    void ListOutgoing(ole::Object node, ole::Object metaLink, const _bstr_t& viewAttr,
                      long showObject);
    void ListIncoming(ole::Object node, ole::Object metaLink, const _bstr_t& viewAttr,
                      long showObject);

    /// Makes the last list again from what it was made of. An incoming list becomes an outgoing
    /// one.
    void Refresh();

    /// Empties the box and forgets the objects; the kind of list and the shown property stay.
    void Clear();

    /// The object of the current row, none without a current row.
    ole::Object Selection() const;

    /// Makes each row of the object current in turn: the last one stays.
    void Select(const ole::Object& wanted);

    /// What the events say of the current row. Raises 91 without a current row.
    _bstr_t ClickKey() const;
    _bstr_t ChangeKey() const;
    /// Lists of meta nodes and meta links keep silent about changes of the text.
    bool ReportsChange() const;

private:
    /// The stored numbers. Nothing stores `incoming`: an incoming list is stored as an outgoing
    /// one.
    enum class Mode : long {
        metaNodes = 0,
        metaLinks = 1,
        nodes = 2,
        links = 3,
        outgoing = 4,
        incoming = 5,
        metaProperties = 6,
    };

    /// What a list shows, and the number that the next of its objects gets. A host may start
    /// another list while one is being made; each goes on with its own.
    struct Filling {
        _bstr_t viewAttr;
        long showObject = sourceEnd;
        long next = 0;
    };

    void Begin(Mode mode, const ole::Object& source, const ole::Object& second);
    void AddShown(Filling& filling, const ole::Object& object);
    void AddLinks(Filling filling, const ole::Object& links);
    void Number(Filling& filling, const ole::Object& object);

    RowBox& box_;
    ole::Object source_;
    ole::Object second_;
    Mode mode_ = Mode::metaNodes;
    _bstr_t viewAttr_ = L"Name";
    long showObject_ = sourceEnd;
    NumberedObjects items_;
};

}  // namespace lists
