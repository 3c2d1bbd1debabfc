#include "fuzz/progress.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <sstream>

namespace fuzz {

Progress::Progress() {
    static LONG number = 0;
    name_ = L"OrvaneFuzz" + std::to_wstring(GetCurrentProcessId()) + L"." +
            std::to_wstring(InterlockedIncrement(&number));
    mapping_ = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Shared),
                                  name_.c_str());
    shared_ = static_cast<Shared*>(MapViewOfFile(mapping_, FILE_MAP_ALL_ACCESS, 0, 0, 0));
    if (shared_ != nullptr) shared_->index = -1;
}

Progress::Progress(const std::wstring& name)
    : name_(name), mapping_(OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, name.c_str())) {
    if (mapping_ != nullptr)
        shared_ = static_cast<Shared*>(MapViewOfFile(mapping_, FILE_MAP_ALL_ACCESS, 0, 0, 0));
}

Progress::~Progress() {
    if (shared_ != nullptr) UnmapViewOfFile(shared_);
    if (mapping_ != nullptr) CloseHandle(mapping_);
}

void Progress::Begin(long index, const std::string& text) {
    const std::size_t size = std::min(text.size(), sizeof shared_->text - 1);
    std::copy_n(text.begin(), size, shared_->text);
    shared_->text[size] = '\0';
    shared_->place[0] = '\0';
    shared_->index = index;
}

void Progress::DieAt(const void* address) {
    HMODULE module = nullptr;
    char name[MAX_PATH] = "";
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        static_cast<LPCWSTR>(address), &module);
    GetModuleFileNameA(module, name, static_cast<DWORD>(std::size(name)));
    const char* const file = std::strrchr(name, '\\');
    const auto offset = static_cast<const char*>(address) - reinterpret_cast<const char*>(module);
    std::snprintf(shared_->place, sizeof shared_->place, "%s+0x%lX",
                  file != nullptr ? file + 1 : name, static_cast<unsigned long>(offset));
}

std::string Progress::PlaceOfDeath() const {
    return shared_->place;
}

void Progress::Report(const std::string& problem) {
    const auto used = static_cast<std::size_t>(shared_->used);
    if (used + problem.size() + 1 > sizeof shared_->problems) return;
    std::copy(problem.begin(), problem.end(), shared_->problems + used);
    shared_->problems[used + problem.size()] = '\n';
    shared_->used = static_cast<LONG>(used + problem.size() + 1);
}

long Progress::Index() const {
    return shared_->index;
}

std::string Progress::Text() const {
    return shared_->text;
}

std::vector<std::string> Progress::Problems() const {
    std::istringstream all(std::string(shared_->problems, static_cast<std::size_t>(shared_->used)));
    std::vector<std::string> problems;
    for (std::string line; std::getline(all, line);) problems.push_back(line);
    return problems;
}

}  // namespace fuzz
