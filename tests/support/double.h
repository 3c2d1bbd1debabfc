#pragma once

#include "support/ref.h"

#include <string>
#include <vector>

namespace support {

/// How a double tells its label to the log, whatever interface of it the log has. Not a COM
/// interface that anybody else knows.
MIDL_INTERFACE("5F2AB0C4-2C0B-4D0B-9B0E-0E7B4A0B6D11")
Labelled : public IUnknown {
    [[nodiscard]] virtual const std::string& Label() const = 0;
};

/// Doubles that somebody still holds, and their labels in alphabetical order.
[[nodiscard]] long LiveDoubles();
[[nodiscard]] std::vector<std::string> LiveDoubleLabels();

/// What all test doubles have in common: they are counted, they belong to one thread, and they
/// outlive their last reference until the test ends, so that whoever calls one that it has released
/// is found out instead of running into freed memory.
class Double {
public:
    Double(const Double&) = delete;
    Double& operator=(const Double&) = delete;

    [[nodiscard]] ULONG References() const { return static_cast<ULONG>(references_); }

protected:
    explicit Double(std::string name);
    virtual ~Double();

    ULONG Retain();
    ULONG Drop();
    /// False, with an entry in the list of violations, where the call comes from another thread or
    /// after the last reference is gone.
    bool MayCall(const char* what);
    [[nodiscard]] const std::string& Name() const { return name_; }
    /// The last reference is gone: let go of everything.
    virtual void Expire() = 0;

private:
    friend void BuryDoubles();
    friend std::vector<std::string> LiveDoubleLabels();

    std::string name_;
    LONG references_ = 1;
    DWORD thread_;
    bool expired_ = false;
};

/// Calls from a wrong thread or on a released reference since the last call of this function.
std::vector<std::string> TakeViolations();

/// What is wrong at the end of a test that began with `before` live doubles.
std::vector<std::string> TakeComplaints(long before);

/// Frees the memory of expired doubles. The test program does it after each test.
void BuryDoubles();

}  // namespace support

#ifdef __CRT_UUID_DECL
__CRT_UUID_DECL(support::Labelled, 0x5f2ab0c4, 0x2c0b, 0x4d0b, 0x9b, 0x0e, 0x0e, 0x7b, 0x4a, 0x0b,
                0x6d, 0x11)
#endif
