#pragma once

#include "readers/ModelFile.h"

#include <cstddef>
#include <string>
#include <vector>

namespace belvor {

struct Options;

/// One model of the call and the pictures to be made of it.
struct Job {
    std::size_t number = 1;   ///< In the call, from 1.
    std::string model;
    FileType type = FileType::unknown;
    std::vector<std::vector<std::string>> outputs;   ///< By view, then in the order given.
};

/// The job of that model. Throws Usage for a template that is wrong.
Job jobOf(const Options& options, std::size_t number, const std::string& model);

}   // namespace belvor
