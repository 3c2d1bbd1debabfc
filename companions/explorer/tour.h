#pragma once

#include "explorer/main_window.h"
#include "explorer/message_loop.h"
#include "explorer/route.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace explorer {

/// Goes through the window as a user would, with the real mouse and keyboard, and takes pictures on
/// the way.
class Tour {
public:
    /// `folder` is made where it is not there yet.
    Tour(MainWindow& window, MessageLoop& loop, std::wstring folder);

    /// Throws hosting::Error where the window does not do as it should.
    void Run();

    /// The files that were written.
    [[nodiscard]] const std::vector<std::wstring>& Pictures() const noexcept { return pictures_; }

private:
    void ComeToFront();
    void Pick(ComboField& field, const Route::Step& step, const wchar_t* picture);
    void ShowList(char digit, ListKind kind, const wchar_t* picture);
    void ShowTrees(const Route& route);
    void ShowTree(std::initializer_list<WORD> keys, TreeKind kind,
                  const std::vector<std::wstring>& path, const wchar_t* picture);
    /// Opens the nodes with these texts, each the next one below the one before.
    void Open(const std::vector<std::wstring>& path);
    void BringIntoView(HWND list, int row);
    void TakePicture(const wchar_t* name);
    void Settle();
    void Await(const std::function<bool()>& done, const std::wstring& what);

    MainWindow& window_;
    MessageLoop& loop_;
    std::wstring folder_;
    std::vector<std::wstring> pictures_;
};

}  // namespace explorer
