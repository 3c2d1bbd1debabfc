#pragma once

#include "explorer/document.h"
#include "explorer/error_box.h"
#include "explorer/event_log_pane.h"
#include "explorer/link_candidates.h"
#include "explorer/list_pane.h"
#include "explorer/navigator_pane.h"
#include "explorer/split_pane.h"
#include "explorer/status_line.h"
#include "explorer/tree_pane.h"
#include "explorer/window.h"

#include <memory>
#include <string>
#include <vector>

namespace explorer {

/// The explorer's window: menus, the panes that browse the document, the event log, status line.
class MainWindow : public Window {
public:
    /// All three outlive the window. Throws hosting::Error where a control is not there.
    MainWindow(Document& document, EventLog& log, ErrorBox& errors);
    ~MainWindow() override;

    void Show(int how);
    /// Opens one repository, or imports files into a new one in memory; without files a new one.
    /// Failures are reported, and false returned.
    bool OpenFiles(const std::vector<std::wstring>& files);
    /// Gets each message first: keys of menus, labels and controls. True where it was used up.
    bool Translate(MSG& message);

    [[nodiscard]] Document& OpenDocument() noexcept { return document_; }
    [[nodiscard]] NavigatorPane& Navigator() noexcept { return *navigator_; }
    [[nodiscard]] TreePane& Tree() noexcept { return *tree_; }
    [[nodiscard]] ListPane& List() noexcept { return *list_; }
    [[nodiscard]] HWND LogList() const noexcept { return logPane_->List(); }

protected:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wide, LPARAM large) override;

private:
    void OnCommand(WORD command);
    void New();
    void Open(const std::wstring& path);
    void Import(const std::vector<std::wstring>& paths);
    bool ImportAll(const std::vector<std::wstring>& files);
    void SaveAs(const std::wstring& path);
    void ShowDocument();
    void ShowStatus();
    void ShowChoice();
    void ShowList(ListKind kind);
    void ShowMenu();
    void OpenRow(ListKind kind, const hosting::LateBound& object);
    [[nodiscard]] ListSource Source() const;
    void ShowTree(TreeKind kind);
    void ChooseInTree(const TreeChoice& choice);
    void NodeWasRenamed();
    void RemoveLinkOfTree();
    void DropOnTree(const hosting::LateBound& target);
    void AskForLink();
    void MakeLinkOf(const LinkCandidate& candidate);
    void ShowAbout();

    /// Posted to this window when a drop could make a link.
    static constexpr UINT askForLink = ErrorBox::message + 1;

    void MakePanes();
    void Place();
    void SetDpi(int dpi);
    void TellMinimumSize(MINMAXINFO& info) const;
    void Focus();
    void FocusLog();
    [[nodiscard]] ErrorHandler Reporter();
    template <class Work>
    bool Do(const std::wstring& action, Work&& work);

    Document& document_;
    EventLog& log_;
    ErrorBox& errors_;
    Look look_;
    std::unique_ptr<hosting::Form> form_;
    std::unique_ptr<Pane> panes_;
    NavigatorPane* navigator_ = nullptr;
    TreePane* tree_ = nullptr;
    ListPane* list_ = nullptr;
    EventLogPane* logPane_ = nullptr;
    std::unique_ptr<StatusLine> status_;
    HACCEL accelerators_;
    /// What a drop could make, until the user has been asked.
    std::vector<LinkCandidate> candidates_;
    bool logHasFocus_ = false;
};

}  // namespace explorer
