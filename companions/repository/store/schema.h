#pragma once

#include <string>

#include "repository/store/database.h"

namespace repository::store {

/// The mark of a repository file ("Orvr") and the version of its tables. A later version that adds
/// tables or columns brings the files of the earlier ones up to date when it opens them.
constexpr std::int64_t applicationId = 0x4F727672;
constexpr std::int64_t schemaVersion = 2;

/// Makes the tables of an empty database and what every repository contains.
void CreateSchema(Database& database);

/// Sets up a connection: waiting time, durability, foreign keys.
void Configure(Database& database, int busyMilliseconds);

/// Brings the tables of an earlier version up to date, in one transaction.
void UpgradeSchema(Database& database);

/// Refuses an open database whose tables are not those of a repository of this version.
void CheckSchema(Database& database);

}  // namespace repository::store
