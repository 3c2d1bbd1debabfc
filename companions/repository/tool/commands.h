#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace repository::tool {

/// Runs one command, such as {"import", "a.orvane", "x.ecore"}. Answers what the program ends with:
/// 0, 1 for a failure (also for a file that `check` finds damaged), 2 for a wrong command line.
int Run(const std::vector<std::string>& arguments, std::ostream& output, std::ostream& errors);

}  // namespace repository::tool
