#pragma once

#include "explorer/combo_field.h"
#include "explorer/errors.h"
#include "explorer/event_log.h"
#include "explorer/pane.h"

#include <array>
#include <functional>

namespace explorer {

/// Goes through a repository in four steps, each with a Combo: a meta node, one of its nodes, a
/// meta link that leaves the meta node, a link along it that leaves the node. A choice fills what
/// depends on it.
class NavigatorPane : public Pane {
public:
    /// Each event of the controls goes to `log`, failures in an event go to `onError`.
    NavigatorPane(hosting::Form& form, EventLog& log, ErrorHandler onError);

    /// Called after each choice, with what the choice has filled.
    std::function<void()> onChoice;

    /// Lists the meta nodes of a repository; nothing is chosen. Throws hosting::Error.
    void Browse(const hosting::LateBound& repository);
    /// Reads everything again and chooses the same objects where they still are there. Throws.
    void Refresh();
    /// Chooses the node at the other end of the chosen link. Throws.
    void FollowLink();
    /// Chooses a node and its meta node. Throws.
    void ChooseNode(const hosting::LateBound& node);

    /// What is chosen, empty where nothing is.
    [[nodiscard]] hosting::LateBound MetaNode() const { return metaNodes_.Selection(); }
    [[nodiscard]] hosting::LateBound Node() const { return nodes_.Selection(); }
    [[nodiscard]] hosting::LateBound MetaLink() const { return metaLinks_.Selection(); }
    [[nodiscard]] hosting::LateBound Link() const { return links_.Selection(); }

    [[nodiscard]] ComboField& MetaNodes() noexcept { return metaNodes_; }
    [[nodiscard]] ComboField& Nodes() noexcept { return nodes_; }
    [[nodiscard]] ComboField& MetaLinks() noexcept { return metaLinks_; }
    [[nodiscard]] ComboField& Links() noexcept { return links_; }

    void Place(const RECT& bounds) override;
    [[nodiscard]] SIZE MinimumSize() const override;
    void SetLook(const Look& look) override;
    bool FocusMnemonic(wchar_t letter) override;

private:
    using Fields = std::array<ComboField*, 4>;
    [[nodiscard]] Fields AllFields() { return {&metaNodes_, &nodes_, &metaLinks_, &links_}; }
    [[nodiscard]] FormMetrics Metrics() const;
    void Listen(ComboField& field, void (NavigatorPane::*show)());
    void ShowMetaNode();
    void ShowOutgoing();
    void ChooseMetaLink(const hosting::LateBound& metaNode, const hosting::LateBound& before);

    EventLog& log_;
    ErrorHandler onError_;
    hosting::LateBound repository_;
    ComboField metaNodes_;
    ComboField nodes_;
    ComboField metaLinks_;
    ComboField links_;
    FormMetrics metrics_;
};

}  // namespace explorer
