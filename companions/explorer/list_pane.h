#pragma once

#include "explorer/badge.h"
#include "explorer/errors.h"
#include "explorer/event_log.h"
#include "explorer/list_kind.h"
#include "explorer/pane.h"
#include "explorer/pane_label.h"
#include "hosting/event_sink.h"
#include "hosting/form.h"
#include "hosting/late_bound.h"

#include <functional>
#include <set>
#include <string>

namespace explorer {

/// What a list is made of: the repository and what is chosen in it, empty where nothing is.
struct ListSource {
    hosting::LateBound repository;
    hosting::LateBound metaNode;
    hosting::LateBound node;
    hosting::LateBound metaLink;
};

/// A list of repository objects, of one of nine kinds, in a hosted OrvaneControls.ListView. Its
/// icons tell the types apart; rows can be dragged and dropped.
class ListPane : public Pane {
public:
    /// Each event of the control goes to `log`, failures in an event go to `onError`.
    ListPane(hosting::Form& form, EventLog& log, ErrorHandler onError);
    ~ListPane() override;

    /// Called when a row was double-clicked, with its object.
    std::function<void(ListKind kind, const hosting::LateBound& object)> onOpen;
    /// Called when rows of this list were dropped on a row, with a sentence for people.
    std::function<void(const std::wstring& text)> onDrop;

    [[nodiscard]] ListKind Kind() const noexcept { return kind_; }
    /// Lists what there is of a kind in `source`; nothing where too little is chosen. Throws
    /// hosting::Error, with the rows that were made before.
    void Show(ListKind kind, const ListSource& source);
    /// Lists the same kind for another choice; nothing happens where it shows the same. Throws.
    void Follow(const ListSource& source);
    /// Whether each row has a check box.
    [[nodiscard]] bool HasCheckBoxes() const;
    void SetCheckBoxes(bool wanted);

    /// The object whose row is being dragged, or none.
    [[nodiscard]] const hosting::LateBound& Dragged() const noexcept { return dragged_; }

    /// The control, for its other members.
    [[nodiscard]] const hosting::LateBound& Control() const noexcept { return control_; }
    /// The control's window.
    [[nodiscard]] HWND ControlWindow() const { return hosted_.Window(); }
    /// What the label above the list says, with its mnemonic's mark.
    [[nodiscard]] const std::wstring& Title() const noexcept { return label_.Text(); }

    void Place(const RECT& bounds) override;
    [[nodiscard]] SIZE MinimumSize() const override;
    void SetLook(const Look& look) override;
    bool FocusMnemonic(wchar_t letter) override;

private:
    void Fill();
    void AddImage(const Badge& badge);
    void AddCondition(const Badge& badge, const wchar_t* property, const std::wstring& value);
    void AddImages();
    void AddColumns();
    void AddValueColumns(const hosting::LateBound& metaObject);
    /// How many letters the longest text of a property has, in the first objects that are listed.
    [[nodiscard]] static std::size_t LettersOf(const hosting::LateBound& metaObject,
                                               const std::wstring& property);
    void AddColumn(const std::wstring& title, const std::wstring& property, int width);
    void AddLinkColumn(const std::wstring& title, const std::wstring& property, long end,
                       int width);
    void Hear(const hosting::Event& event);
    void HearDrop(const hosting::LateBound& target, long effect);

    EventLog& log_;
    ErrorHandler onError_;
    ListKind kind_ = ListKind::metaNodes;
    ListSource source_;
    /// The keys of the images that the control has.
    std::set<std::wstring> images_;
    hosting::LateBound dragged_;
    PaneLabel label_;
    hosting::HostedControl& hosted_;
    hosting::LateBound control_;
    hosting::EventSink events_;
    int iconSize_ = 16;
    SIZE minimum_{};
};

}  // namespace explorer
