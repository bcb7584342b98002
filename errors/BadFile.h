#pragma once

#include <stdexcept>
#include <string>

namespace belvor {

/// A fault in a model file. The user reads string 2000 + code, filled with the argument,
/// then where in which file it stands.
class BadFile : public std::runtime_error {
public:
    enum Code {
        duplicateBlock = 1,
        attribExpected = 2,
        noDictionary = 3,
        badGroup = 4,
        groupNeeded = 5,
        badReal = 6,
        badInteger = 7,
        badGroupCode = 8,
        badGroupValue = 9,
        headerEnds = 10,
        pastEnd = 11,
        materialExpected = 12,
        vertexOutOfRange = 13,
        degenerateLoop = 14,
        edgeRecordEnds = 15,
        edgeRecordExpected = 16,
        notManFile = 17,
        clumpExpected = 18,
    };
    static constexpr int noLine = -1;

    /// `line`: a line of a text file, a byte offset of a binary one, or noLine. `file` may
    /// be empty: unknown.
    BadFile(Code code, std::string file, int line);
    /// `argument` replaces the "%s" of the text.
    BadFile(Code code, std::string argument, std::string file, int line);
    /// A fault with a text of its own instead of the one of `code`.
    BadFile(Code code, const char* format, std::string argument, std::string file, int line);

    /// "text at line 12 in file", on one line. Owned by this object.
    const char* what() const noexcept override { return text.c_str(); }

    /// The same in the form of a message box: the place on a line of its own.
    std::string boxText() const;

    /// The text without the place.
    const std::string& fault() const noexcept { return message; }

    Code code() const noexcept { return number; }
    const std::string& file() const noexcept { return fileName; }
    int line() const noexcept { return lineNumber; }

private:
    std::string placed(const char* atLine, const char* inFile) const;

    Code number;
    std::string message;   // filled with the argument
    std::string fileName;
    int lineNumber;
    std::string text;
};

}   // namespace belvor
