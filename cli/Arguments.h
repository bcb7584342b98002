#pragma once

#include "resources/Texts.h"

#include <initializer_list>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace belvor {

struct Options;

/// The command line is wrong; what() is what to print.
class Usage : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Throws Usage with that text.
[[noreturn]] void refuse(Text text, std::initializer_list<std::string_view> arguments = {});

/// One option of the command line.
struct OptionRow {
    const char* name;   ///< "--size"
    char letter;        ///< Its short form, 's' for "-s"; 0 for none.
    Text valueName;     ///< What stands for its value in the help; Text::none when it takes no value.
    Text help;
    bool mayRepeat;
    /// Puts the value (empty for an option without one) into the options. Throws Usage.
    void (*take)(const std::string& value, Options& options);
    bool valueOptional = false;   ///< A value stands in the same argument only, as "--edges=all".
};

/// Gives each option in `arguments` (without the program's name) to its row and returns the other words, in
/// order. Options and words may be mixed; "--" ends the options; "-" is a word. A value stands behind its
/// option, as "--size 8x6", "--size=8x6", "-s 8x6" or "-s8x6". Throws Usage.
std::vector<std::string> parseArguments(std::span<const OptionRow> rows,
                                        const std::vector<std::string>& arguments, Options& options);

/// The lines of the help that list the options.
std::string optionList(std::span<const OptionRow> rows);

}   // namespace belvor
