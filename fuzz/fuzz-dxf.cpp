#include "calcore/Number.h"
#include "errors/BadFile.h"
#include "fuzz/DrawSmall.h"
#include "readers/dxf/DXF.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace belvor {
namespace {

/// The name that stands for the input; its log is beside it.
const std::string& logged()
{
    static const std::string name = (std::filesystem::temp_directory_path() / "belvor-fuzz.dxf").string();
    return name;
}

/// Stops what would take too long: a few bytes can ask for thousands of millions of cells.
class Patience : public Reporter {
public:
    bool progress(int, int, double) override { return ++calls > 3000; }

private:
    int calls = 0;
};

// A mutator that keeps codes and values in pairs, so that most of what it makes gets as far
// as the entities, and that turns what it is given into the encoding of this program.

struct Pair {
    int code;
    std::string value;
};
using Pairs = std::vector<Pair>;
enum class Encoding { text, oneByte, twoBytes };

constexpr std::string_view mark("AutoCAD Binary DXF\r\n\x1a\0", 22);

std::string numberText(double value)
{
    char digits[64];
    return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

Pairs pairsOfText(std::string_view text)
{
    Pairs pairs;
    const auto line = [&text] {
        const std::string_view result = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), result.size() + 1));
        return result;
    };
    while (!text.empty()) {
        std::int32_t code = 0;
        std::string_view first = line();
        while (!first.empty() && isBlank(first.front())) first.remove_prefix(1);
        while (!first.empty() && isBlank(first.back())) first.remove_suffix(1);
        if (!isLong(first, code)) code = 999;
        pairs.push_back({code, std::string(line())});
    }
    return pairs;
}

template <class Value>
bool take(std::string_view& bytes, Value& value)
{
    if (bytes.size() < sizeof value) return false;
    std::memcpy(&value, bytes.data(), sizeof value);
    bytes.remove_prefix(sizeof value);
    return true;
}

Pairs pairsOfBinary(std::string_view bytes)
{
    Pairs pairs;
    const bool wide = bytes.size() >= 2 && bytes[0] == 0 && bytes[1] == 0;
    while (!bytes.empty()) {
        std::uint8_t narrow = 255;
        std::uint16_t code = 0;
        if (!wide && !take(bytes, narrow)) break;
        if (narrow != 255) code = narrow;
        else if (!take(bytes, code)) break;
        double real = 0.0;
        std::int16_t small = 0;
        std::int32_t large = 0;
        std::string value;
        switch (valueTypeOf(code)) {
        default: break;   // not in this reading
        case DXFValueType::real:
            take(bytes, real);
            value = numberText(real);
            break;
        case DXFValueType::integer16:
            take(bytes, small);
            value = std::to_string(small);
            break;
        case DXFValueType::integer32:
            take(bytes, large);
            value = std::to_string(large);
            break;
        case DXFValueType::text:
            value = bytes.substr(0, bytes.find('\0'));
            bytes.remove_prefix(std::min(bytes.size(), value.size() + 1));
            break;
        }
        pairs.push_back({code, value});
    }
    return pairs;
}

template <class Value>
void put(std::string& bytes, Value value)
{
    char raw[sizeof value];
    std::memcpy(raw, &value, sizeof value);
    bytes.append(raw, sizeof value);
}

void putBinary(std::string& bytes, const Pair& pair, bool wide)
{
    const auto code = static_cast<std::uint16_t>(pair.code);
    if (!wide && code < 255) put(bytes, static_cast<std::uint8_t>(code));
    else {
        if (!wide) put(bytes, std::uint8_t{255});
        put(bytes, code);
    }
    double real = 0.0;
    std::int32_t integer = 0;
    isLong(pair.value, integer);
    switch (valueTypeOf(code)) {
    default: break;   // not in this reading
    case DXFValueType::real:
        if (!isDouble(pair.value, real))
            real = pair.value == "nan" ? std::bit_cast<double>(0x7ff8000000000000u) : integer;
        return put(bytes, real);
    case DXFValueType::integer16: return put(bytes, static_cast<std::int16_t>(integer));
    case DXFValueType::integer32: return put(bytes, integer);
    case DXFValueType::text: bytes += pair.value; bytes += '\0';
    }
}

std::string encoded(const Pairs& pairs, Encoding encoding)
{
    std::string bytes(encoding == Encoding::text ? std::string_view() : mark);
    for (const Pair& pair : pairs) {
        if (encoding == Encoding::text) bytes += std::to_string(pair.code) + '\n' + pair.value + '\n';
        else putBinary(bytes, pair, encoding == Encoding::twoBytes);
    }
    return bytes;
}

using Random = std::minstd_rand;

template <class Choices>
auto oneOf(const Choices& choices, Random& random)
{
    return choices[random() % std::size(choices)];
}

Pair newPair(Random& random)
{
    static const char* const words[] = {
        "SECTION", "ENDSEC",       "TABLES",     "TABLE",  "LAYER",  "ENDTAB", "BLOCKS",  "BLOCK",
        "ENDBLK",  "ENTITIES",     "EOF",        "3DFACE", "ARC",    "CIRCLE", "ELLIPSE", "INSERT",
        "LINE",    "LWPOLYLINE",   "POLYLINE",   "VERTEX", "SEQEND", "SOLID",  "TRACE",   "TEXT",
        "SPLINE",  "HELIX",        "RAY",        "XLINE",  "POINT",  "HATCH",  "A",       "B",
        "C",       "AVE_MATERIAL", "AVE_FINISH", ""};
    static const int codes[] = {0,  2,   8,  9,  10, 11, 12, 13, 20,  21,  22,  23,   30,   31,
                                32, 33,  38, 39, 40, 41, 42, 43, 44,  45,  50,  51,   60,   62,
                                67, 420, 70, 71, 72, 73, 74, 90, 210, 220, 230, 1000, 1001, 1005};
    static const char* const numbers[] = {
        "0",          "1",   "-1",  "2",    "3",   "4",     "0.5",    "-0.5",   "10",
        "90",         "180", "360", "1e-9", "1e9", "1e300", "-1e300", "1e-300", "6.283185307179586",
        "0.41421356", "8",   "16",  "64",   "128", "192",   "32767",  "-32768", "2147483647",
        "nan"};
    const int code = oneOf(codes, random);
    return {code, valueTypeOf(static_cast<std::uint16_t>(code)) == DXFValueType::text
                      ? oneOf(words, random)
                      : oneOf(numbers, random)};
}

void mutate(Pairs& pairs, Random& random)
{
    if (pairs.empty()) return pairs.push_back(newPair(random));
    const auto place = [&] { return static_cast<std::ptrdiff_t>(random() % pairs.size()); };
    const auto recordFrom = [&](std::ptrdiff_t first) {   // up to the next code 0
        auto end = pairs.begin() + first + 1;
        while (end != pairs.end() && end->code != 0) ++end;
        return end;
    };
    switch (random() % 8) {
    case 0: pairs.insert(pairs.begin() + place(), newPair(random)); break;
    case 1: pairs.erase(pairs.begin() + place()); break;
    case 2: pairs[static_cast<std::size_t>(place())] = newPair(random); break;
    case 3:
        std::swap(pairs[static_cast<std::size_t>(place())], pairs[static_cast<std::size_t>(place())]);
        break;
    case 4: {   // a whole record again, elsewhere
        const std::ptrdiff_t from = place();
        const Pairs record(pairs.begin() + from, recordFrom(from));
        pairs.insert(pairs.begin() + place(), record.begin(), record.end());
        break;
    }
    case 5: {   // without a record
        const std::ptrdiff_t from = place();
        pairs.erase(pairs.begin() + from, recordFrom(from));
        break;
    }
    case 6: {   // another value of the same kind
        Pair& pair = pairs[static_cast<std::size_t>(place())];
        for (int i = 0; i < 50; ++i) {
            const Pair other = newPair(random);
            if (valueTypeOf(static_cast<std::uint16_t>(other.code))
                != valueTypeOf(static_cast<std::uint16_t>(pair.code)))
                continue;
            pair.value = other.value;
            break;
        }
        break;
    }
    default:
        pairs[static_cast<std::size_t>(place())].value =
            numberText(static_cast<double>(random() % 2000) / 100.0 - 10.0);
    }
}

}   // namespace
}   // namespace belvor

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most,
                                               unsigned seed)
{
    using namespace belvor;
    Random random(seed);
    if (random() % 8 == 0) return LLVMFuzzerMutate(data, size, most);
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const bool binary = bytes.starts_with(mark);
    Encoding encoding = binary ? Encoding::oneByte : Encoding::text;
    if (binary && size >= 24 && bytes[22] == 0 && bytes[23] == 0) encoding = Encoding::twoBytes;
    Pairs pairs = binary ? pairsOfBinary(bytes.substr(mark.size())) : pairsOfText(bytes);
    for (unsigned count = 1 + random() % 4; count > 0; --count) mutate(pairs, random);
    constexpr Encoding binaries[] = {Encoding::oneByte, Encoding::twoBytes};
    if (!BELVOR_FUZZ_BINARY) encoding = Encoding::text;
    else if (!binary || random() % 16 == 0) encoding = oneOf(binaries, random);
    const std::string result = encoded(pairs, encoding);
    const std::size_t length = std::min(result.size(), most);
    std::memcpy(data, result.data(), length);
    return length;
}

/// DXF files, text or binary as BELVOR_FUZZ_BINARY has it: read, refused with a BadFile, or given up; what
/// was read has bounds and draws.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace belvor;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (const ReadingRules rules : {ReadingRules::strict, ReadingRules::modern}) {
        Patience patience;
        ReadingOptions how;
        how.rules = rules;
        how.curves = size % 4 != 0;
        how.log = size % 16 == 0;   // then insertions are read from the text each time
        try {
            Account account;
            const Handle<Model> model = DXF(bytes, logged(), patience, how, account).takeModel();
            for (const auto& [type, count] : account.entities)
                if (count.read != count.drawn + count.skippedInAll()) std::abort();
            if (model->facetCount() < 20000 && model->curvePointCount() < 20000) drawSmall(*model);
        } catch (const BadFile&) {
        } catch (const Reporter::Abandoned&) {}
    }
    return 0;
}
