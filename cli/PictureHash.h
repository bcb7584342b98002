#pragma once

#include "cli/Options.h"

#include <map>
#include <string>
#include <vector>

namespace belvor {

/// By view, what tells pictures of a model apart from those of another model, view, size or program:
/// 64 hexadecimal digits. `modelDigest` is of the model file's bytes.
std::vector<std::string> pictureHashes(const Options& options, const Job& job,
                                       const std::string& modelDigest);

/// One hash for the hashes of all views; that of a single view is its own.
std::string hashOfAll(const std::vector<std::string>& hashes);

/// What an earlier report tells of a picture.
struct EarlierFile {
    std::string hash;   ///< Of all views.
    std::uint64_t bytes = 0;
};
using EarlierFiles = std::map<std::string, EarlierFile>;   ///< By the picture's name.

/// Whether all pictures of the job are there, whole, and made with these hashes: as their own texts say, or
/// an earlier report of files of that size.
bool picturesAreThere(const Job& job, const std::vector<std::string>& hashes, const EarlierFiles& earlier);

}   // namespace belvor
