#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "support/registry_snapshot.h"
#include "support/server.h"
#include "support/text.h"

/// The library with nothing of it registered; the registry is put back after the last test.
class UnregisteredLibrary : public testing::Test {
protected:
    UnregisteredLibrary() {
        server.Unregister();
        server.Install(false, L"user");
    }

    /// A value below Software\Classes of a root, "-" where there is none.
    static std::string At(HKEY root, const std::wstring& path, const wchar_t* name = nullptr) {
        wchar_t text[600];
        DWORD size = sizeof(text);
        const std::wstring key = L"Software\\Classes\\" + path;
        if (RegGetValueW(root, key.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size) != 0) {
            return "-";
        }
        return support::Utf8(std::wstring(text));
    }

    static void SetUpTestSuite() { restorer.emplace(); }
    static void TearDownTestSuite() { restorer.reset(); }

    support::Server server;

private:
    static inline std::optional<support::RegistryRestorer> restorer;
};
