#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "repository/store/error.h"
#include "repository/store/file.h"
#include "repository/store/store.h"
#include "support/temporary_folder.h"

namespace repository::store {

/// A temporary folder and its files with their names as the store has them, in UTF-8.
class Scratch {
public:
    std::string File(const std::string& name) const;
    std::string Folder() const;

private:
    support::TemporaryFolder folder_;
};

/// Whether tests that repeat something many times are to do it thoroughly: the environment variable
/// ORVANE_TEST_LONG is set.
bool IsLongRun();

std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::string& content);

/// The number of the error that `work` throws; fails the test where it throws none.
template <class Work>
Number NumberOf(Work&& work) {
    try {
        work();
    } catch (const Error& error) {
        return error.ErrorNumber();
    }
    ADD_FAILURE() << "no error";
    return Number::internal;
}

template <class Work>
std::string TextOf(Work&& work) {
    try {
        work();
    } catch (const Error& error) {
        return error.what();
    }
    ADD_FAILURE() << "no error";
    return {};
}

/// Two meta nodes with a meta link between them and some nodes.
struct Small {
    explicit Small(Store& store);

    MetaNodeRef person;
    MetaNodeRef house;
    MetaLinkRef livesIn;
    MetaPropertyRef age;
    ObjectRef anna;
    ObjectRef ben;
    ObjectRef cottage;
    ObjectRef annaInCottage;
};

}  // namespace repository::store
