#pragma once

#include <string>
#include <vector>

namespace belvor {

struct Options;

/// All that standard input has. Throws FileError, Reporter::Abandoned, std::bad_alloc.
std::string readStandardInput();

/// The paths that the list of the options names, in order: one a line, or up to each zero byte. Empty ones
/// are passed over. Without a list none. Throws FileError, Reporter::Abandoned.
std::vector<std::string> readList(const Options& options);

}   // namespace belvor
