#pragma once

#include "calcore/PlainNumber.h"
#include "errors/Reporter.h"
#include "readers/common/Reading.h"
#include "readers/dxf/DXFLog.h"
#include "readers/dxf/DXFPattern.h"
#include "readers/dxf/DXFRecord.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace belvor {

/// A position between two groups, to come back to. Valid for the stream's life.
struct DXFPosition {
    const char* at = nullptr;
    std::int32_t line = 0;   ///< The line there, or the byte offset in a binary file.
};

/// A DXF file as a sequence of records, whatever its encoding. Knows no section and no
/// entity. Every text is a view of the bytes, so nothing taken from a
/// record may outlive the stream.
class DXFStream {
public:
    /// Over a file's bytes, which the caller keeps; decides the encoding. `fileName` is for messages; with
    /// `logging` the log is the file of that name with ".log" appended.
    static std::unique_ptr<DXFStream> over(std::string_view bytes, const std::string& fileName,
                                           Reporter& reporter, bool logging,
                                           ReadingRules rules = ReadingRules::strict);
    DXFStream(const DXFStream&) = delete;
    DXFStream& operator=(const DXFStream&) = delete;
    virtual ~DXFStream();

    /// Reads the code at the position, and its line, without moving; false at the end.
    virtual bool readGroupCode(DXFGroup& group) = 0;
    /// Steps over the code that readGroupCode() has just read and over its value, which it fills in.
    virtual void readGroupValue(DXFGroup& group) = 0;
    /// Steps over the code that readGroupCode() has just read and over its value.
    virtual void skipGroupValue(DXFGroup& group) = 0;

    /// Steps to the next record and reports progress; false at the end of the data. The
    /// record then holds its first group only. Throws BadFile, Reporter::Abandoned.
    bool nextRecord();
    /// The whole current record, until the next nextRecord(). Throws BadFile.
    const DXFRecord& readRecord();
    /// Makes the next nextRecord() deliver the current record again. Groups not read by then
    /// are lost: call readRecord() first when they matter.
    void pushBack() noexcept { state = State::pushedBack; }

    /// Makes the current record, which has been read, the pattern of the repeats after it; false if it cannot
    /// be one. A repeat has the same groups in the same order and the same values, but for reals, for handles
    /// (code 5) and for 16-bit integers with one of `codes`. Of these numbers the first of each of `codes`
    /// are asked for.
    virtual bool expectRepeats(std::span<const std::uint16_t> codes) = 0;
    /// Whether the next record is a repeat, as far as that is told from text as programs write it. `values`
    /// gets these numbers in the order of the codes, and has one place more; what the record has none for
    /// stays. A real of a binary file may be infinite or no number. Changes nothing else.
    virtual bool isRepeat(double* values) noexcept = 0;
    /// Steps over the repeat that isRepeat() has just found. The current record stays the one before.
    void passRepeat() noexcept { here = repeatEnd; }
    /// Of that repeat, before it is passed: where its groups behind the first start, and the line of that.
    DXFPosition groupsOfRepeat() const noexcept { return {here.at + firstLength, here.line}; }

    /// The value and the line of the current record's first group.
    std::string_view type() const noexcept { return record.type(); }
    std::int32_t line() const noexcept { return record.line(); }

    DXFPosition position() const noexcept { return here; }
    void seek(const DXFPosition& position) noexcept;

    /// Reports how far the position is. Throws Reporter::Abandoned.
    void checkProgress();
    /// `further` is called when progress is reported about `step` bytes further than ever before.
    void whenFurther(std::size_t step, std::function<void(const char* at)> further);

    const std::string& fileName() const noexcept { return name; }
    /// Whether the lines of groups are byte offsets.
    virtual bool isBinary() const noexcept = 0;
    DXFLog& log() noexcept { return diagnostics; }

protected:
    /// What open() hands to the two encodings.
    struct Source {
        std::string_view bytes;
        std::string name;
        Reporter& reporter;
        bool logging;
        ReadingRules rules;
    };
    explicit DXFStream(Source source);

    // Steps over groups up to the next that starts a record, and over that one; false at the end.
    virtual bool takeRecordStart(DXFGroup& group) = 0;
    // Appends groups up to the next that starts a record, which stays unread.
    virtual void appendGroups(DXFRecord& groups) = 0;

    const char* const begin;
    const char* const end;
    DXFPosition here;
    DXFPosition recordStart;   // of the current record, unless it was pushed back
    const std::string name;
    DXFRecord record;
    std::ptrdiff_t firstLength = 0;   // of the first group of the pattern
    DXFPosition repeatEnd;

private:
    enum class State { positioned, firstGroup, loaded, pushedBack };

    static std::unique_ptr<DXFStream> make(Source source);
    static std::unique_ptr<DXFStream> makeAscii(Source source);    // DXFAsciiStream.cpp
    static std::unique_ptr<DXFStream> makeBinary(Source source);   // DXFBinaryStream.cpp
    static bool isBinaryFile(std::string_view bytes) noexcept;     // has the 22 bytes that mark a binary file

    void goFurther();

    Reporter& reporter;
    const char* nextStep;   // where `further` is called next
    std::size_t stepSize = 0;
    std::function<void(const char*)> further;
    DXFLog diagnostics;
    State state = State::positioned;
};

/// What a stream does with groups, over the takeCode(), takeValue() and passValue() of an
/// encoding, and its retake(), which may take a run of groups that are like given ones. None
/// of these is virtual, and they move a position of the caller's: the loops make no call for a
/// group and keep their position in registers.
template <class Encoding>
class DXFGroupStream : public DXFStream {
public:
    using DXFStream::DXFStream;

    bool readGroupCode(DXFGroup& group) final { return encoding().takeCode(here, group); }
    void readGroupValue(DXFGroup& group) final { encoding().takeValue(here, group); }
    void skipGroupValue(DXFGroup& group) final { encoding().passValue(here, group); }

    bool expectRepeats(std::span<const std::uint16_t> codes) final;
    bool isRepeat(double* values) noexcept final;

private:
    bool takeRecordStart(DXFGroup& group) final
    {
        constexpr std::uint32_t groupsBetweenReports = 65536;
        DXFPosition position = here;
        bool found = false;
        for (std::uint32_t passed = 1; !found && encoding().takeCode(position, group); ++passed) {
            found = startsRecord(group.code);
            if (found) recordStart = position;
            if (found) encoding().takeValue(position, group);
            else encoding().passValue(position, group);
            if (passed % groupsBetweenReports == 0) reportAt(position);
        }
        here = position;
        return found;
    }

    void appendGroups(DXFRecord& groups) final
    {
        DXFPosition position = here;
        groups.appendWhile(
            [&position, this](DXFGroup* first, const DXFGroup* last) {
                return encoding().retake(position, first, last);
            },
            [&position, this](DXFGroup& group) {
                if (!encoding().takeCode(position, group) || startsRecord(group.code)) return false;
                encoding().takeValue(position, group);
                return true;
            },
            [&position, this] { reportAt(position); });
        here = position;
    }

    void reportAt(const DXFPosition& position)
    {
        here = position;
        checkProgress();
    }

    Encoding& encoding() noexcept { return static_cast<Encoding&>(*this); }

    DXFPattern pattern;
    std::int32_t groupsOfPattern = 0;
};

template <class Encoding>
bool DXFGroupStream<Encoding>::expectRepeats(std::span<const std::uint16_t> codes)
{
    constexpr std::size_t mostGroups = 100;
    constexpr std::uint16_t handle = 5;
    const std::span<const DXFGroup> groups = record.groups();
    if (groups.size() > mostGroups) return false;
    DXFPosition position = recordStart;
    pattern.begin(position.at);
    DXFGroup group;
    for (const DXFGroup& known : groups) {
        if (!encoding().takePlainCode(position, group) || group.code != known.code) return false;
        const std::string_view value = encoding().valueAt(position, group);
        if (&known == groups.data()) firstLength = position.at - recordStart.at;
        const auto asked = std::find(codes.begin(), codes.end(), known.code);
        const bool isReal = known.type == DXFValueType::real;
        if (isReal || (known.type == DXFValueType::integer16 && asked != codes.end())) {
            const bool counts = asked != codes.end() && record.find(known.code) == &known;
            const std::ptrdiff_t slot = (counts ? asked : codes.end()) - codes.begin();
            pattern.add(value, isReal ? DXFPattern::Value::real : DXFPattern::Value::integer,
                        static_cast<std::size_t>(slot));
        } else if (known.code == handle) {
            pattern.add(value, DXFPattern::Value::text);
        }
    }
    groupsOfPattern = static_cast<std::int32_t>(groups.size());
    if (position.at != here.at || !encoding().takePlainCode(position, group)) return false;
    pattern.finish(position.at, encoding().codeEnd(position));
    return true;
}

template <class Encoding>
bool DXFGroupStream<Encoding>::isRepeat(double* values) noexcept
{
    const char* at = here.at;
    for (DXFPattern::Part& part : pattern.parts()) {
        const std::size_t length = part.bytes.size();
        if (static_cast<std::size_t>(end - at) < length + plain::longestReal || !part.startsAt(at))
            return false;
        if (part.value == DXFPattern::Value::none) break;
        const char* const value = at += length;
        if (part.value == DXFPattern::Value::real) {
            if constexpr (Encoding::lengthsVary) {
                if (const char* const same = part.endOfSameNumber(value)) {
                    values[part.slot] = part.lastNumber();
                    at = same;
                    continue;
                }
            }
            if (!encoding().takeReal(at, values[part.slot])) return false;
            if constexpr (Encoding::lengthsVary) part.keepNumber(value, values[part.slot]);
        } else if (part.value == DXFPattern::Value::integer) {
            if (!encoding().takeInteger(at, values[part.slot])) return false;
        } else {
            at = encoding().textEnd(at);
        }
        if constexpr (Encoding::lengthsVary) at = part.endOfValue(value, at);
    }
    return encoding().endOfRepeat(at + pattern.endLength(), groupsOfPattern, repeatEnd);
}

}   // namespace belvor
