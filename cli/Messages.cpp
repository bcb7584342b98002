#include "cli/Messages.h"

#include <array>

namespace belvor {
namespace {

constexpr std::size_t countBytes = 8;

void appendCount(std::string& bytes, std::size_t count)
{
    for (std::size_t i = 0; i < countBytes; ++i) bytes += static_cast<char>(count >> (8 * i) & 0xFF);
}

bool readCount(PipeEnd& from, std::size_t& count)
{
    std::array<char, countBytes> bytes;
    if (!from.read(bytes.data(), bytes.size())) return false;
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < countBytes; ++i)
        value |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    count = static_cast<std::size_t>(value);
    return true;
}

}   // namespace

std::string packed(const std::vector<std::string>& texts)
{
    std::string bytes;
    appendCount(bytes, texts.size());
    for (const std::string& text : texts) {
        appendCount(bytes, text.size());
        bytes += text;
    }
    return bytes;
}

std::optional<std::vector<std::string>> receive(PipeEnd& from)
{
    std::size_t count = 0;
    if (!readCount(from, count)) return {};
    std::vector<std::string> texts;
    for (; count > 0; --count) {
        std::size_t size = 0;
        if (!readCount(from, size)) return {};
        std::string text(size, '\0');
        if (!from.read(text.data(), size)) return {};
        texts.push_back(std::move(text));
    }
    return texts;
}

}   // namespace belvor
