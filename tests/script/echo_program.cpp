// Shows how a program was started: echo_program CODE [ARGUMENT...] prints each argument, the
// current folder and standard input to standard output, "err" to standard error, and ends with
// CODE.
#include <windows.h>

#include <cstdlib>
#include <iostream>
#include <string>

int main(int count, char* arguments[]) {
    for (int i = 2; i < count; i++) std::cout << '[' << arguments[i] << "]\n";
    char folder[MAX_PATH] = "";
    GetCurrentDirectoryA(MAX_PATH, folder);
    std::cout << folder << '\n';
    if (const char* value = std::getenv("ORVANE_ECHO")) std::cout << value << '\n';
    if (const char* value = std::getenv("WINEPREFIX")) std::cout << value << '\n';
    for (std::string line; std::getline(std::cin, line);) std::cout << line << '\n';
    std::cerr << "err\n";
    return count > 1 ? std::atoi(arguments[1]) : 0;
}
