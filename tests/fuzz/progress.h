#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace fuzz {

/// What the parent can see of a child that may die at any moment: a piece of shared memory.
class Progress {
public:
    /// Makes it; the parent does. The name is the process's own.
    Progress();
    /// Opens that of the parent.
    explicit Progress(const std::wstring& name);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    [[nodiscard]] const std::wstring& Name() const { return name_; }
    [[nodiscard]] bool IsOpen() const { return shared_ != nullptr; }

    /// The child is about to make call number `index`.
    void Begin(long index, const std::string& text);
    /// The child dies here: a module and an offset in it.
    void DieAt(const void* address);
    /// Something is wrong that the child survived.
    void Report(const std::string& problem);

    /// Where the child is; grows with each call.
    [[nodiscard]] long Index() const;
    [[nodiscard]] std::string Text() const;
    /// Where it died, empty where it did not say.
    [[nodiscard]] std::string PlaceOfDeath() const;
    /// What it reported, oldest first; what does not fit is left out.
    [[nodiscard]] std::vector<std::string> Problems() const;

private:
    struct Shared {
        volatile LONG index;
        char text[4096];
        char place[128];
        LONG used;
        char problems[60000];
    };

    std::wstring name_;
    HANDLE mapping_ = nullptr;
    Shared* shared_ = nullptr;
};

}  // namespace fuzz
