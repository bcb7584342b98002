#pragma once

#include "readers/dxf/DXFStream.h"

namespace belvor {

/// The binary encoding: little-endian codes of one byte (255 announces two more) or of two
/// bytes throughout, then the value in the width of its type, texts up to a zero byte.
class DXFBinaryStream final : public DXFStream {
public:
    explicit DXFBinaryStream(Source source);

    /// Whether the bytes start with the 22 that mark a binary file.
    static bool recognises(std::string_view bytes) noexcept;

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

    std::size_t codeWidth() const noexcept;
    std::int32_t offsetOf(const char* place) const noexcept;
    const char* need(const char* from, std::size_t count) const;

    bool twoByteCodes = false;
};

}   // namespace belvor
