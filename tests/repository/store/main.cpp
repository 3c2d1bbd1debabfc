#include <gmock/gmock.h>

#ifdef _WIN32
#include <windows.h>

// Wide, because programs are linked with -municode.
int wmain(int argc, wchar_t** argv) {
#else
int main(int argc, char** argv) {
#endif
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
