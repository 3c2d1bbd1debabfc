#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "support/late_bound.h"
#include "support/server.h"
#include "support/temporary_folder.h"
#include "support/value.h"

namespace repository {

using support::LateBound;
using support::Outcome;
using support::ReadFile;
using support::TemporaryFolder;
using support::Value;
using support::WriteFile;

/// The DLL, used without registration.
support::Server& Component();

/// The result of a call that has to succeed.
Value Result(const Outcome& outcome);
LateBound ObjectIn(const Outcome& outcome);

std::string TextOf(const LateBound& object, const char* member);

/// A member of each element of a collection.
std::vector<std::string> Texts(const LateBound& collection, const char* member = "name");

/// Whether two values hold the same object, by COM's rule.
bool Same(const LateBound& first, const LateBound& second);

/// What an array of bytes holds; none for another value.
std::optional<std::vector<unsigned char>> BytesIn(const Value& value);

/// The automation number of an error whose source is a class of the component and whose description
/// says something.
int ErrorOf(const Outcome& outcome);

/// A repository in memory with a small model.
class RepositoryTest : public testing::Test {
protected:
    void SetUp() override;

    LateBound rep;
    LateBound person;
    LateBound house;
    LateBound livesIn;
    LateBound age;
    LateBound anna;
    LateBound ben;
    LateBound cottage;
    LateBound annaInCottage;
};

}  // namespace repository
