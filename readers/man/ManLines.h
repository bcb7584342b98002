#pragma once

#include "errors/BadFile.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace belvor {

/// The lines of a MAN file and the words of the current line. Knows line ends, blank lines,
/// comments and numbers, no record. Words are separated by blanks; what follows the last
/// word that is asked for is passed over.
class ManLines {
public:
    /// Reads `bytes`, which outlive this object; `fileName` (UTF-8) stands in faults.
    ManLines(std::string_view bytes, std::string fileName) : data(bytes), name(std::move(fileName)) {}

    /// Steps to the next line, blank or not, without its line end (LF or CR LF); false at the
    /// end of the data.
    bool nextLine() noexcept;
    std::string_view line() const noexcept { return text; }

    /// Calls `whenLong` in long stretches of lines that are passed over. It may throw.
    void pauseWith(std::function<void()> whenLong) { pause = std::move(whenLong); }

    /// Steps to the next line that is neither blank nor starts with "#"; false at the end of
    /// the data. `whenCut` is the fault of a file that ends before the words then asked for.
    bool nextRecord(BadFile::Code whenCut);
    /// The same, but the end of the data is that fault too.
    void requireRecord(BadFile::Code whenCut)
    {
        if (!nextRecord(whenCut)) fail(whenCut);
    }

    /// The next word of the line; empty behind the last one.
    std::string_view word() noexcept;
    /// The next word as a real, an integer of 32 bits, an integer within `least`..`most`.
    double real();
    std::int32_t integer();
    std::int32_t integer(std::int32_t least, std::int32_t most);

    /// Throws a fault at the current line, or at `where`.
    [[noreturn]] void fail(BadFile::Code code) const { fail(code, lineNumber()); }
    [[noreturn]] void fail(BadFile::Code code, int where) const;
    /// The fault of the word `found` that word() gave: a missing one of a file cut short there is the end of
    /// the file.
    [[noreturn]] void failOnWord(std::string_view found, BadFile::Code code) const;

    /// Counted from 1.
    int lineNumber() const noexcept { return number; }
    /// How much of the data has been read, 0 to 1.
    double fraction() const noexcept;

private:
    std::string_view data;
    std::string name;
    std::size_t next = 0;    // where the next line starts
    std::string_view text;   // the current line
    std::size_t place = 0;   // in the current line, behind the last word taken
    bool cut = false;        // the current line has no line end
    int number = 0;
    std::function<void()> pause;
    BadFile::Code cutFault = BadFile::pastEnd;
};

}   // namespace belvor
