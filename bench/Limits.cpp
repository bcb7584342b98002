#include "bench/Limits.h"

#include <charconv>
#include <cstdint>
#include <cstring>

namespace belvor::bench {
namespace {

/// Numbers from a text that is known to be good.
class DigitLoop {
public:
    explicit DigitLoop(std::string_view bytes) : at(bytes.data()), end(at + bytes.size()) {}

    std::uint32_t whole()
    {
        skip();
        std::uint32_t value = 0;
        for (; at != end && isDigit(); ++at) value = value * 10 + digit();
        return value;
    }
    double real()
    {
        static constexpr double powers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
        skip();
        const char* const start = at;
        const bool negative = *at == '-';
        at += negative;
        std::uint64_t mantissa = 0;
        for (; at != end && isDigit(); ++at) mantissa = mantissa * 10 + digit();
        const char* const point = at;
        if (at != end && *at == '.')
            for (++at; at != end && isDigit(); ++at) mantissa = mantissa * 10 + digit();
        if (at - start > 16) {   // a long one
            double value = 0;
            at = std::from_chars(start, end, value).ptr;
            return value;
        }
        const double value = static_cast<double>(mantissa) / powers[at == point ? 0 : at - point - 1];
        return negative ? -value : value;
    }
    /// The digits that a line starts with; false at the end.
    bool code(std::uint32_t& value)
    {
        if (at == end) return false;
        value = whole();
        restOfLine();
        ++at;
        return true;
    }
    void passLine()
    {
        restOfLine();
        ++at;
    }
    void restOfLine()
    {
        const void* const found = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
        at = found ? static_cast<const char*>(found) : end;
    }

private:
    bool isDigit() const { return static_cast<unsigned char>(*at - '0') < 10; }
    std::uint32_t digit() const { return static_cast<std::uint32_t>(*at - '0'); }
    void skip()
    {
        while (at != end && static_cast<unsigned char>(*at) <= ' ') ++at;
    }

    const char* at;
    const char* const end;
};

}   // namespace

unsigned sumOfBytes(std::string_view bytes) noexcept
{
    unsigned sum = 0;
    for (const char c : bytes) sum += static_cast<unsigned char>(c);
    return sum;
}

double sumOfNumbers(std::string_view bytes) noexcept
{
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    double sum = 0;
    while (at != end) {
        double value = 0;
        const auto [next, error] = std::from_chars(at, end, value);
        if (error == std::errc()) {
            sum += value;
            at = next;
        } else {
            ++at;
        }
    }
    return sum;
}

Handle<Model> digitLoopOfThings(std::string_view bytes)
{
    const Handle<Model> model = makeHandle<Model>();
    const Material& material = model->findMaterial("Earth");
    DigitLoop text(bytes.substr(1));
    for (std::uint32_t left = text.whole(); left > 0; --left) {
        const double x = text.real(), y = text.real(), z = text.real();
        model->addVertex({x, y, z});
    }
    text.whole();   // edges
    for (std::uint32_t left = text.whole(); left > 0; --left) {
        text.whole();   // loops
        text.restOfLine();
        model->addFacet(material);
        const std::uint32_t corners = text.whole(), first = text.whole() - 1;
        std::uint32_t from = first;
        for (std::uint32_t i = 1; i < corners; ++i) {
            const std::uint32_t to = text.whole() - 1;
            model->addEdge(from, to);
            from = to;
        }
        model->addEdge(from, first);
    }
    return model;
}

Handle<Model> digitLoopOfFaces(std::string_view bytes)
{
    const Handle<Model> model = makeHandle<Model>();
    const Material& material = model->findMaterial("HILLS");
    DigitLoop text(bytes);
    Point<3> corners[4];
    int taken = 0;
    for (std::uint32_t code = 0; text.code(code); text.passLine()) {
        if (code < 10 || code > 39) continue;
        corners[taken / 3][taken % 3] = text.real();
        taken = (taken + 1) % 12;
        if (taken == 0) model->addPolygon(material, {}, corners);
    }
    return model;
}

}   // namespace belvor::bench
