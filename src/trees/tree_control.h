#pragma once

#include <OrvaneControls.h>

#include "ole/automation_collection.h"
#include "ole/control/control.h"
#include "ole/drag/drag_and_drop.h"
#include "ole/event_arguments.h"
#include "ole/finally.h"
#include "ole/text.h"
#include "trees/tree_pane.h"
#include "widgets/image_lists.h"
#include "widgets/node_tree.h"

namespace trees {

/// What the tree controls have in common: the tree's window, icons, flags, checks, drag and drop.
/// `Pane` is what the behaviour of the derived class writes to.
template <class I, const GUID& classId, const IID& events, class Pane>
class TreeControl : public ole::ControlObject<I, classId, events>, protected Pane {
public:
    STDMETHODIMP get_Enabled(VARIANT_BOOL* setting) override { return Give(enabled_, setting); }
    STDMETHODIMP put_Enabled(VARIANT_BOOL* setting) override {
        return this->Run([&] {
            enabled_ = *setting != VARIANT_FALSE;
            Tree().Enable(enabled_);
        });
    }
    STDMETHODIMP get_dragAllowed(VARIANT_BOOL* setting) override {
        return Give(dragAllowed_, setting);
    }
    STDMETHODIMP put_dragAllowed(VARIANT_BOOL* setting) override {
        return this->Run([&] {
            dragAllowed_ = *setting != VARIANT_FALSE;
            tree_.SetDrags(dragAllowed_);
        });
    }
    STDMETHODIMP get_dropAllowed(VARIANT_BOOL* setting) override {
        return Give(dropAllowed_, setting);
    }
    STDMETHODIMP put_dropAllowed(VARIANT_BOOL* setting) override {
        return this->Run([&] {
            const bool drops = *setting != VARIANT_FALSE;
            drag_.SetDrops(drops, drops ? Tree().Handle() : nullptr);
            dropAllowed_ = drops;
        });
    }
    STDMETHODIMP GetCheckedItems(_Collection** objects) override { return GiveNone(objects); }
    STDMETHODIMP GetNonCheckedItems(_Collection** objects) override { return GiveNone(objects); }
    STDMETHODIMP Clear(VARIANT*) override {
        return this->Run([&] { RemoveNodes(); });
    }
    STDMETHODIMP CheckAll(VARIANT*) override {
        return this->Run([&] { tree_.CheckAll(true); });
    }
    STDMETHODIMP UncheckAll(VARIANT*) override {
        return this->Run([&] { tree_.CheckAll(false); });
    }

    void Draw(HDC context, const RECT& bounds) override { Tree().Draw(context, bounds); }
    bool UsesKey(const MSG& message) override { return tree_.UsesKey(message); }
    HWND FocusWindow() override { return Tree().Handle(); }

protected:
    TreeControl(const ole::DragAndDrop::Events& dragEvents, bool linesAtRoot)
        : ole::ControlObject<I, classId, events>({3000, 4500}),
          tree_(linesAtRoot),
          drag_(*static_cast<I*>(this), dragEvents) {
        tree_.holdOwner = [this] { return ole::Ref<IUnknown>(static_cast<I*>(this)); };
        tree_.isUnfilled = [this](const widgets::TreeNode& node) { return IsUnfilled(node); };
        tree_.onFill = [this](const widgets::NodePtr& node) { FillNode(node); };
        tree_.onFocus = [this](bool focused) { this->FocusChanged(focused); };
        tree_.onBeginDrag = [this] { OnBeginDrag(); };
        drag_.fire = [this](DISPID event, VARIANT* arguments, UINT count) {
            this->Fire(event, arguments, count);
        };
        drag_.subjectAt = [this](POINT screen) { return SubjectOf(tree_.HitTest(screen)); };
    }

    virtual bool IsUnfilled(const widgets::TreeNode& node) const = 0;
    virtual void FillNode(const widgets::NodePtr& node) = 0;
    /// What events say of a node, of null where none is selected.
    virtual ole::Object InfoForEvent(const widgets::NodePtr& node) = 0;

    /// The tree's window is made when a member first needs it.
    widgets::NodeTree& Tree() {
        this->OuterWindow();
        tree_.Sync();
        return tree_;
    }
    /// Runs a member that adds nodes; those that it added are shown however it ends.
    template <class Work>
    HRESULT Change(Work&& work) noexcept {
        return this->Run([&] {
            const ole::Finally shows([this] { tree_.Sync(); });
            work();
        });
    }
    HRESULT Give(bool flag, VARIANT_BOOL* setting) noexcept {
        return this->Run([&] { *setting = ole::ToFlag(flag); });
    }

    void AddImage(std::wstring_view key, const std::wstring& file) {
        images_.Add(key, widgets::Picture::FromFile(file, MulDiv(16, this->Dpi(), 96)));
    }
    void RemoveImages() {
        tree_.SetImages(nullptr);
        images_.Clear();
    }
    void RaiseOfNode(DISPID event, const widgets::NodePtr& node) {
        ole::ObjectVariable info(InfoForEvent(node));
        VARIANT argument = info.ByReference();
        this->Fire(event, &argument, 1);
    }

    const widgets::NodeStore& Nodes() const override { return tree_.Nodes(); }
    widgets::NodePtr AddNode(std::int32_t number, const widgets::NodePtr& parent,
                             std::wstring_view text, std::wstring_view image) override {
        if (parent && !Nodes().Holds(*parent)) ole::Throw(ole::Number::elementNotFound);
        const int position = images_.FindOrNone(image);
        widgets::NodePtr node = tree_.Add(number, parent.get());
        if (!node) ole::Throw(ole::Number::keyNotUnique);
        node->text = text;
        node->image = position;
        return node;
    }
    void RemoveNode(widgets::TreeNode& node) override { tree_.Remove(node); }
    void RemoveNodes() override { tree_.Clear(); }
    bool HasImage(const widgets::TreeNode& node, std::wstring_view image) const override {
        return node.image >= 0 && node.image < images_.Count() && images_.Key(node.image) == image;
    }

    widgets::ImageLists images_;
    widgets::NodeTree tree_;

private:
    void CreateInner(HWND outer) override {
        tree_.Create(outer);
        drag_.Attach(tree_.Handle());
    }
    void Arrange(SIZE size) override { tree_.SetSize(size); }
    void AmbientChanged() override {
        ole::Site& site = this->Container();
        tree_.SetFont(site.Font(this->Dpi()));
        tree_.SetColors(site.ForeColor(), GetSysColor(COLOR_WINDOW));
    }
    bool OnInnerMessage(UINT message, WPARAM wide, LPARAM large, LRESULT& answer) override {
        if (message == WM_DESTROY) drag_.Detach();
        const std::optional<LRESULT> answered = tree_.OnParentMessage(message, wide, large);
        if (answered) answer = *answered;
        return answered.has_value();
    }

    HRESULT GiveNone(_Collection** objects) noexcept {
        using Objects = ole::AutomationCollection<_Collection, CLSID_Collection>;
        return this->Run([&] { ole::Give(ole::Make<Objects>(), objects); });
    }

    void OnBeginDrag() {
        const widgets::NodePtr node = tree_.Selected();
        if (dragAllowed_ && node) drag_.Drag(*SubjectOf(node), node->text);
    }
    std::optional<ole::DragAndDrop::Subject> SubjectOf(const widgets::NodePtr& node) {
        if (!node) return std::nullopt;
        return ole::DragAndDrop::Subject{InfoForEvent(node), std::nullopt};
    }

    ole::DragAndDrop drag_;
    /// As the host last set them.
    bool enabled_ = false;
    bool dragAllowed_ = false;
    bool dropAllowed_ = false;
};

}  // namespace trees
