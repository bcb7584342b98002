#pragma once

#include "errors/Reporter.h"
#include "readers/common/Reading.h"
#include "readers/dxf/DXFLog.h"
#include "readers/dxf/DXFRecord.h"

#include <cstdint>
#include <memory>
#include <optional>
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

    /// The value and the line of the current record's first group.
    std::string_view type() const noexcept { return record.type(); }
    std::int32_t line() const noexcept { return record.line(); }

    DXFPosition position() const noexcept { return here; }
    void seek(const DXFPosition& position) noexcept;

    /// Reports how far the position is. Throws Reporter::Abandoned.
    void checkProgress();

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

private:
    enum class State { positioned, firstGroup, loaded, pushedBack };

    static std::unique_ptr<DXFStream> make(Source source);
    static std::unique_ptr<DXFStream> makeAscii(Source source);    // DXFAsciiStream.cpp
    static std::unique_ptr<DXFStream> makeBinary(Source source);   // DXFBinaryStream.cpp
    static bool isBinaryFile(std::string_view bytes) noexcept;     // has the 22 bytes that mark a binary file

    const std::string name;
    Reporter& reporter;
    DXFRecord record;
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

private:
    bool takeRecordStart(DXFGroup& group) final
    {
        constexpr std::uint32_t groupsBetweenReports = 65536;
        DXFPosition position = here;
        bool found = false;
        for (std::uint32_t passed = 1; !found && encoding().takeCode(position, group); ++passed) {
            found = startsRecord(group.code);
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
};

}   // namespace belvor
