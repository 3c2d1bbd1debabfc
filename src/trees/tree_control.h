#pragma once

#include <OrvaneControls.h>

#include "ole/automation_collection.h"
#include "ole/control/control.h"
#include "ole/event_arguments.h"
#include "ole/text.h"
#include "trees/tree_pane.h"
#include "widgets/drag_source.h"
#include "widgets/drop_target.h"
#include "widgets/image_lists.h"
#include "widgets/node_tree.h"
#include "widgets/raised.h"

namespace trees {

/// The ids that a tree's events of drag and drop have in its event interface.
struct DragEvents {
    DISPID complete;
    DISPID drop;
    DISPID over;
    DISPID start;
    DISPID feedback;
};

/// What the tree controls have in common: the tree's window, icons, flags, checks, drag and drop.
/// `Pane` is what the behaviour of the derived class writes to.
template <class I, const GUID& classId, const IID& events, class Pane>
class TreeControl : public ole::ControlObject<I, classId, events>, protected Pane {
public:
    STDMETHODIMP get_Enabled(VARIANT_BOOL* setting) override { return Give(enabled_, setting); }
    STDMETHODIMP put_Enabled(VARIANT_BOOL* setting) override {
        return this->Run([&] {
            enabled_ = *setting != VARIANT_FALSE;
            SetTreeEnabled(enabled_);
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
            if (*setting != VARIANT_FALSE)
                dropTarget_.Open(Tree().Handle());
            else
                dropTarget_.Close();
            dropAllowed_ = *setting != VARIANT_FALSE;
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
    TreeControl(const DragEvents& ids, bool linesAtRoot)
        : ole::ControlObject<I, classId, events>({3000, 4500}), ids_(ids), tree_(linesAtRoot) {
        tree_.holdOwner = [this] { return ole::Ref<IUnknown>(static_cast<I*>(this)); };
        tree_.isUnfilled = [this](const widgets::TreeNode& node) { return IsUnfilled(node); };
        tree_.onFill = [this](const widgets::NodePtr& node) { FillNode(node); };
        tree_.onFocus = [this](bool focused) { this->FocusChanged(focused); };
        tree_.onBeginDrag = [this] { OnBeginDrag(); };
        dropTarget_.onOver = [this] { this->Fire(ids_.over, nullptr, 0); };
        dropTarget_.onDrop = [this](POINT screen, DWORD& effect) { OnDrop(screen, effect); };
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
        class Shows {
        public:
            explicit Shows(widgets::NodeTree& tree) : tree_(tree) {}
            ~Shows() { tree_.Sync(); }
            Shows(const Shows&) = delete;
            Shows& operator=(const Shows&) = delete;

        private:
            widgets::NodeTree& tree_;
        };
        return this->Run([&] {
            const Shows shows(tree_);
            work();
        });
    }
    HRESULT Give(bool flag, VARIANT_BOOL* setting) noexcept {
        return this->Run([&] { *setting = ole::ToFlag(flag); });
    }

    void SetTreeEnabled(bool enabled) {
        treeEnabled_ = enabled;
        EnableWindow(Tree().Handle(), enabled);
    }
    void AddImage(std::wstring_view key, const std::wstring& file) {
        const int dpi = this->Dpi();
        images_.Add(key, widgets::Picture::FromFile(file, MulDiv(16, dpi, 96)), dpi);
    }
    void RemoveImages() {
        tree_.SetImages(nullptr);
        images_.Clear();
    }
    /// The position of an image. Errors: 35601 for an unknown key; an empty one is no image.
    int ImageIn(std::wstring_view key) const {
        return key.empty() ? widgets::TreeNode::noImage : images_.Find(key);
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
        const int position = ImageIn(image);
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

    const DragEvents ids_;
    widgets::ImageLists images_;
    widgets::NodeTree tree_;

private:
    void CreateInner(HWND outer) override {
        tree_.Create(outer);
        EnableWindow(tree_.Handle(), treeEnabled_);
        if (dropTarget_.IsOpen()) {
            dropTarget_.Close();
            dropTarget_.Open(tree_.Handle());
        }
    }
    void Arrange(SIZE size) override { tree_.SetSize(size); }
    void AmbientChanged() override {
        ole::Site& site = this->Container();
        tree_.SetFont(site.Font(this->Dpi()));
        tree_.SetColors(site.ForeColor(), GetSysColor(COLOR_WINDOW));
    }
    bool OnInnerMessage(UINT message, WPARAM wide, LPARAM large, LRESULT& answer) override {
        const std::optional<LRESULT> answered = tree_.OnParentMessage(message, wide, large);
        if (answered) answer = *answered;
        return answered.has_value();
    }

    HRESULT GiveNone(_Collection** objects) noexcept {
        using Objects = ole::AutomationCollection<_Collection, CLSID_Collection>;
        return this->Run(
            [&] { *objects = ole::Ref<_Collection>(ole::Make<Objects>().Get()).Detach(); });
    }

    void OnBeginDrag() {
        const widgets::NodePtr node = tree_.Selected();
        if (!dragAllowed_ || !node) return;
        ole::ObjectVariable info(InfoForEvent(node));
        long allowed = DROPEFFECT_COPY | DROPEFFECT_MOVE;
        VARIANT start[] = {info.ByReference(), ole::ByReference(allowed)};
        this->Fire(ids_.start, start, 2);
        long effect = DROPEFFECT_NONE;
        if (allowed != DROPEFFECT_NONE) {
            const auto feedback = [this](DWORD& now, bool& system) { OnGiveFeedback(now, system); };
            effect = static_cast<long>(
                widgets::DragText(node->text, static_cast<DWORD>(allowed), feedback));
        }
        VARIANT complete = ole::ByReference(effect);
        this->Fire(ids_.complete, &complete, 1);
    }
    void OnGiveFeedback(DWORD& effect, bool& systemCursors) {
        auto shown = static_cast<long>(effect);
        VARIANT_BOOL standard = ole::ToFlag(systemCursors);
        VARIANT arguments[] = {ole::ByReference(shown), ole::FlagByReference(standard)};
        this->Fire(ids_.feedback, arguments, 2);
        systemCursors = standard != VARIANT_FALSE;
    }
    void OnDrop(POINT screen, DWORD& effect) {
        const widgets::NodePtr node = tree_.HitTest(screen);
        if (!node) {
            effect = DROPEFFECT_NONE;
            return;
        }
        ole::ObjectVariable target(InfoForEvent(node));
        auto had = static_cast<long>(effect);
        VARIANT arguments[] = {target.ByReference(), ole::ByReference(had)};
        this->Fire(ids_.drop, arguments, 2);
        effect = static_cast<DWORD>(had);
    }

    widgets::DropTarget dropTarget_;
    /// As the host last set them.
    bool enabled_ = false;
    bool dragAllowed_ = false;
    bool dropAllowed_ = false;
    bool treeEnabled_ = true;
};

}  // namespace trees
