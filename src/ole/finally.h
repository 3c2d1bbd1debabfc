#pragma once

#include <utility>

#include "ole/error.h"

namespace ole {

/// Runs `work` when it goes, however the block is left. An error of the work has no caller.
template <class Work>
class Finally {
public:
    explicit Finally(Work work) : work_(std::move(work)) {}
    ~Finally() {
        try {
            work_();
        } catch (...) {
            NoteErrorWithoutCaller();
        }
    }
    Finally(const Finally&) = delete;
    Finally& operator=(const Finally&) = delete;

private:
    Work work_;
};

}  // namespace ole
