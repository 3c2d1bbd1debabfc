#pragma once

#include <string>

#include "repository/store/database.h"

namespace repository::store {

/// The mark of a repository file ("Orvr") and the version of its tables.
constexpr std::int64_t applicationId = 0x4F727672;
constexpr std::int64_t schemaVersion = 3;

/// Makes the tables of an empty database and what every repository contains.
void CreateSchema(Database& database);

/// Sets up a connection: waiting time, durability, foreign keys.
void Configure(Database& database, int busyMilliseconds);

/// Refuses an open database whose tables are not those of a repository of this version or an
/// earlier one.
void CheckSchema(Database& database);

/// Brings a repository of an earlier version up to date, as one transaction.
void UpdateSchema(Database& database);

}  // namespace repository::store
