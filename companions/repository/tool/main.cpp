#include <iostream>
#include <string>
#include <vector>

#include "repository/tool/commands.h"

#ifdef _WIN32
#include <windows.h>

namespace {

std::string Narrow(const wchar_t* text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size > 0 ? size : 1), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, narrow.data(), size, nullptr, nullptr);
    narrow.pop_back();
    return narrow;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    SetConsoleOutputCP(CP_UTF8);
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i) texts.push_back(Narrow(arguments[i]));
#else
int main(int count, char** arguments) {
    const std::vector<std::string> texts(arguments + 1, arguments + count);
#endif
    return repository::tool::Run(texts, std::cout, std::cerr);
}
