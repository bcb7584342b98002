#pragma once

#include "imagefile/ByteSource.h"
#include "imagefile/ImageWriter.h"
#include "imagefile/OmbrReader.h"
#include "resources/Texts.h"

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace belvor {

/// How the tool ends.
enum class Answer {
    yes = 0,
    no = 1,              ///< A fault was found, or pictures differ.
    notComparable = 2,   ///< As wrong use.
};

/// The command line is wrong, or what it names cannot be done; what() is what to print.
class WrongUse : public std::runtime_error {
public:
    WrongUse(Text text, std::initializer_list<std::string_view> arguments)
        : std::runtime_error(filledText(text, arguments))
    {}
};

/// belvor-render could not draw a model; it has told why.
struct RenderFailed {
    int status;   ///< As this tool ends.
};

/// The words behind the command's name, UTF-8.
using Words = std::vector<std::string>;

/// The commands. Each writes its answer to standard output and throws WrongUse, OmbrFault in a file that it
/// reads (not verifyImage), FileError, Reporter::Abandoned after a signal, std::bad_alloc.
Answer showInfo(const Words& words);
Answer verifyImage(const Words& words);
Answer convertImage(const Words& words);
Answer compareImages(const Words& words);
Answer showPoints(const Words& words);
Answer joinBands(const Words& words);

/// An Ombr file that is read; a fault names the file.
class OpenImage {
public:
    /// Throws FileError: also for a fault, with its offset.
    explicit OpenImage(const std::string& path);
    OmbrReader* operator->() noexcept { return &reader; }
    OmbrReader& operator*() noexcept { return reader; }

private:
    FileSource source;
    OmbrReader reader;
};

/// Appends all rows of the image to the picture. Throws as the commands, and what the picture throws.
void copyRows(OmbrReader& image, ImageWriter& picture);

/// Ends a lengthy command after a signal: throws Reporter::Abandoned.
void checkForStop();

/// Writes to standard output. Throws FileError.
void printAnswer(const std::string& text);

}   // namespace belvor
