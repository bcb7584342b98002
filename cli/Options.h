#pragma once

#include "cli/Arguments.h"
#include "cli/Job.h"
#include "cli/Views.h"
#include "imagefile/ImageHeader.h"
#include "imagefile/PictureFormat.h"
#include "readers/ModelFile.h"
#include "render/LineStyle.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace belvor {

/// What the command line asks for. Paths are UTF-8.
struct Options {
    int width = 800, height = 600;
    unsigned threads = 0;             ///< That draw; 0 for as many as the process may use.
    std::vector<std::string> views;   ///< As given: parameter files and names.
    ViewChanges changes;
    std::string savedView;   ///< Parameter file to write; empty for none.
    FileType type = FileType::unknown;
    std::optional<PictureFormat> format;   ///< Of a picture on standard output.
    std::optional<RowRange> rows;          ///< The only ones that pictures get.
    bool info = false, quiet = false, dxfLog = false;
    ReadingRules rules = ReadingRules::strict;
    DrawingColours colours = DrawingColours::byRules;
    std::string report;   ///< Where the report goes; "-" for standard output, empty for none.
    bool timing = false, failEmpty = false, failRepaired = false;
    std::vector<std::string> outputs;   ///< Names, or templates of names.
    bool embedSurfaces = false;         ///< In vector files, beneath the lines.
    bool edges = false;                 ///< Draw outlines; `lines` says how, its outlines are not set yet.
    LineStyle lines;                    ///< With `curves`, the reader takes them in.
    bool curvesInBounds = false;        ///< Curves count for the model's bounds beside surfaces too.
    std::array<std::uint8_t, 3> background{};   ///< Red, green, blue.
    // Many models.
    std::vector<std::string> each;   ///< Templates of the pictures' names.
    std::string list;                ///< The file that names models, "-" for standard input.
    bool nullSeparated = false, failFast = false, skipExisting = false;
    unsigned processes = 0;        ///< Worker processes; 0 for as many as the process may use processors.
    double timeout = 0.0;          ///< Seconds for one model; 0 without a limit.
    std::uint64_t maxMemory = 0;   ///< Bytes for one model; 0 without a limit.
    bool batch = false;

    std::vector<std::string> arguments;   ///< Those of the command line, without the program's name.
    std::vector<ChosenView> chosenViews;
    std::vector<Job> jobs;
    std::string answer;   ///< Help or version: to be printed, and nothing else done, unless empty.
};

/// The format of a picture of that name; none for other names.
std::optional<PictureFormat> pictureFormatOf(const Options& options, const std::string& output);

/// `arguments` begin with the program's name. Throws Usage, and FileError for a list that cannot be read.
Options parseOptions(std::vector<std::string> arguments);

/// The same for a worker process, which is told its jobs one by one: without the program's name and without
/// looking at the models.
Options parseWorkerOptions(const std::vector<std::string>& arguments);

}   // namespace belvor
