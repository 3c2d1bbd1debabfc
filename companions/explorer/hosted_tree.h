#pragma once

#include "explorer/badge.h"
#include "explorer/errors.h"
#include "explorer/event_log.h"
#include "explorer/icon_files.h"
#include "hosting/event_sink.h"
#include "hosting/form.h"
#include "hosting/late_bound.h"

#include <functional>
#include <set>
#include <string>

namespace explorer {

/// What the user has chosen in a tree.
struct TreeChoice {
    enum class Kind { metaNode, metaLink, node };

    Kind kind = Kind::node;
    hosting::LateBound object;
    hosting::LateBound owner;  ///< of a meta link, the node whose links it groups
};

/// What a tree tells the pane that it is in. It may not be destroyed in one of them.
struct TreeCalls {
    std::function<void(const TreeChoice&)> onChoice;
    /// A node was renamed in the repository.
    std::function<void(const hosting::LateBound& node)> onRename;
    /// A drag begins with a node, or ends, with none.
    std::function<void(const hosting::LateBound& node)> onDrag;
    /// Something was dropped on a node.
    std::function<void(const hosting::LateBound& target)> onDrop;
    ErrorHandler onError;
};

/// One of the library's trees in its place on a form: what both kinds have in common.
class HostedTree {
public:
    virtual ~HostedTree();
    HostedTree(const HostedTree&) = delete;
    HostedTree& operator=(const HostedTree&) = delete;

    /// Shows what there is, in a tree that has shown nothing yet. Throws hosting::Error.
    virtual void Show(const hosting::LateBound& repository, const hosting::LateBound& metaNode) = 0;
    /// The link that the selected node was reached by, or none.
    [[nodiscard]] virtual hosting::LateBound SelectedLink() const { return {}; }
    /// A link has come to the repository, or is about to go.
    virtual void AddLink(const hosting::LateBound&) {}
    virtual void RemoveLink(const hosting::LateBound&) {}

    [[nodiscard]] const hosting::LateBound& Control() const noexcept { return control_; }

protected:
    /// Makes the control at `place`, where none is yet.
    HostedTree(hosting::HostedControl& place, const wchar_t* progId, EventLog& log,
               IconFiles& icons, const TreeCalls& calls);

    virtual void Hear(const hosting::Event& event) = 0;
    /// The object that an event's argument is about: the record's, or none.
    [[nodiscard]] virtual hosting::LateBound NodeOf(const hosting::LateBound& info) const = 0;
    [[nodiscard]] const TreeCalls& Calls() const noexcept { return calls_; }

    /// The key of a badge among the control's icons, which gets it when it has not.
    std::wstring IconKey(const Badge& badge);

private:
    void Receive(const hosting::Event& event);

    EventLog& log_;
    IconFiles& icons_;
    const TreeCalls& calls_;
    hosting::HostedControl& place_;
    hosting::LateBound control_;
    hosting::EventSink events_;
    std::set<std::wstring> keys_;
};

/// The record that an event's argument is; none where there is none.
[[nodiscard]] hosting::LateBound InfoOf(const hosting::Event& event, std::size_t index);
}  // namespace explorer
