#include "explorer/file_dialogs.h"

#include <commdlg.h>

namespace explorer {

namespace {

constexpr wchar_t repositoryFilter[] = L"Repositories (*.orvane)\0*.orvane\0All files\0*.*\0";
constexpr wchar_t importFilter[] =
    L"Models and type libraries\0*.ecore;*.xmi;*.archimate;*.bpmn;*.model;*.tlb;*.olb;*.dll;*.ocx;"
    L"*.exe\0"
    L"Ecore and XMI models (*.ecore;*.xmi;*.archimate;*.bpmn;*.model)\0"
    L"*.ecore;*.xmi;*.archimate;*.bpmn;*.model\0"
    L"Type libraries (*.tlb;*.olb;*.dll;*.ocx;*.exe)\0*.tlb;*.olb;*.dll;*.ocx;*.exe\0"
    L"All files\0*.*\0";
constexpr wchar_t repositoryEnding[] = L"orvane";

/// Shows a dialog; what it leaves in its buffer, empty after Cancel.
std::vector<wchar_t> Ask(HWND owner, const wchar_t* title, const wchar_t* filter, DWORD flags,
                         BOOL(WINAPI* show)(OPENFILENAMEW*)) {
    std::vector<wchar_t> names(32768);
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = filter;
    dialog.lpstrDefExt = filter == repositoryFilter ? repositoryEnding : nullptr;
    dialog.lpstrFile = names.data();
    dialog.nMaxFile = static_cast<DWORD>(names.size());
    dialog.lpstrTitle = title;
    dialog.Flags = flags | OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST;
    if (!show(&dialog)) names.assign(1, L'\0');
    return names;
}

std::optional<std::wstring> OneName(const std::vector<wchar_t>& names) {
    if (names.front() == L'\0') return std::nullopt;
    return names.data();
}

/// A folder and the names in it, each with a zero behind it; or a single whole path.
std::vector<std::wstring> SeveralNames(const std::vector<wchar_t>& names) {
    std::vector<std::wstring> parts;
    for (const wchar_t* place = names.data(); *place; place += parts.back().size() + 1)
        parts.emplace_back(place);
    if (parts.size() < 2) return parts;
    std::vector<std::wstring> paths;
    for (std::size_t index = 1; index < parts.size(); ++index)
        paths.push_back(parts.front() + (parts.front().ends_with(L'\\') ? L"" : L"\\") +
                        parts[index]);
    return paths;
}

}  // namespace

std::optional<std::wstring> AskForRepository(HWND owner) {
    return OneName(
        Ask(owner, L"Open Repository", repositoryFilter, OFN_FILEMUSTEXIST, GetOpenFileNameW));
}

std::vector<std::wstring> AskForImports(HWND owner) {
    return SeveralNames(Ask(owner, L"Import", importFilter,
                            OFN_FILEMUSTEXIST | OFN_ALLOWMULTISELECT, GetOpenFileNameW));
}

std::optional<std::wstring> AskForNewRepository(HWND owner) {
    return OneName(
        Ask(owner, L"Save Repository As", repositoryFilter, OFN_OVERWRITEPROMPT, GetSaveFileNameW));
}

}  // namespace explorer
