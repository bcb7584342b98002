#pragma once

#include "readers/dxf/DXFStream.h"

namespace belvor {

/// The text encoding: a line with the code, a line with the value. A line ends with CR, LF,
/// CR LF or LF CR.
class DXFAsciiStream final : public DXFStream {
public:
    explicit DXFAsciiStream(Source source) : DXFStream(std::move(source)), codeLineEnd(begin), wordStart(begin), wordEnd(begin) {}

    bool readGroupCode(DXFGroup& group) override;
    void readGroupValue(DXFGroup& group) override;
    void skipGroupValue(DXFGroup& group) override;

private:
    template <class Stream>
    friend bool skipGroups(Stream& stream, DXFGroup& group);
    template <class Stream>
    friend void readGroups(Stream& stream, DXFRecord& groups);

    bool skipToRecord(DXFGroup& group) override;
    void appendGroups(DXFRecord& groups) override;
    bool takeCode(DXFGroup& group);
    void takeValue(DXFGroup& group);
    void passValue(DXFGroup& group);

    std::uint16_t parseCode();
    const char* stepOver(const char* line, const char*& textEnd) const noexcept;

    const char* codeLineEnd;   // the line end of the code that readGroupCode read last

    // The number found last beyond a run of blanks, and where that run starts: blank lines
    // lead to the same number from each of their places, and are looked through once.
    const char* wordStart;
    const char* wordEnd;
    std::uint16_t wordCode = 0;
};

}   // namespace belvor
