#pragma once

#include "readers/ModelFile.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace belvor {

struct Options;

/// The word that stands for standard input as a model and for standard output as a picture.
inline constexpr const char* standardStream = "-";

/// One model of the call and the pictures to be made of it.
struct Job {
    std::size_t number = 1;   ///< In the call, from 1.
    std::string model;
    FileType type = FileType::unknown;
    std::vector<std::vector<std::string>> outputs;   ///< By view, then in the order given.
    std::optional<std::string> input;                ///< What standard input gave, once it is read.

    bool fromInput() const noexcept { return model == standardStream; }
    /// The model in messages.
    std::string shownModel() const { return fromInput() ? textOf(Text::standardInput) : model; }
};

/// Calls `visit` with the name of each picture of the job.
template <class Visit>
void forEachOutput(const Job& job, Visit visit)
{
    for (const auto& names : job.outputs)
        for (const std::string& name : names) visit(name);
}

/// The job of that model. Throws Usage for a template that is wrong.
Job jobOf(const Options& options, std::size_t number, const std::string& model);

}   // namespace belvor
