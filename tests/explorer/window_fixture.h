#pragma once

#include "explorer/main_window.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace explorer {

using Texts = std::vector<std::wstring>;

/// The explorer's window in this process, with a repository of authors and books in memory: Ada
/// wrote "On Trees" and "On Graphs" and knows Ben, "On Trees" cites "On Graphs".
class WindowTest : public testing::Test {
protected:
    WindowTest();
    ~WindowTest() override;

    /// Fills the repository, and lists its meta nodes.
    void BrowseBooks();
    /// The node or link with this identifier.
    [[nodiscard]] hosting::LateBound Object(const wchar_t* identifier) const;
    [[nodiscard]] hosting::LateBound MetaNode(const wchar_t* name) const;
    [[nodiscard]] hosting::LateBound MetaLink(const wchar_t* name) const;

    /// Does what a command of the menu does.
    void Command(UINT command) const;
    /// What the rows of the list are called: names, or identifiers where objects have none.
    [[nodiscard]] Texts ListedNames() const;
    /// The system's combo box in a field, and what its rows show.
    [[nodiscard]] static HWND Box(const ComboField& field);
    [[nodiscard]] static Texts Rows(const ComboField& field);
    /// What a field's box shows as its text.
    [[nodiscard]] static std::wstring Shown(const ComboField& field);
    /// "Nodes Click a1" for each entry since the last call.
    [[nodiscard]] Texts TakeLog();
    /// The texts of the status line's parts.
    [[nodiscard]] Texts Status() const;

    EventLog log;
    ErrorBox errors{log};
    Document document;
    std::unique_ptr<MainWindow> window;
    NavigatorPane* navigator;

private:
    std::size_t logTaken_ = 0;
};

}  // namespace explorer
