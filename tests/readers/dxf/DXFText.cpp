#include "tests/readers/dxf/DXFText.h"

#include "calcore/Number.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <exception>

namespace belvor::test {
namespace {

template <class Use>
void forEachGroup(std::string_view groups, Use use)
{
    while (!groups.empty()) {
        const std::string_view group = groups.substr(0, groups.find('|'));
        groups.remove_prefix(std::min(groups.size(), group.size() + 1));
        const std::size_t blank = group.find(' ');
        use(group.substr(0, blank), blank == std::string_view::npos ? std::string_view() : group.substr(blank + 1));
    }
}

void putLittle(std::string& bytes, std::uint64_t value, int count)
{
    for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xff);
}

void putRounded(std::string& text, double value)
{
    char digits[400];
    const double rounded = std::round(value * 1e8) / 1e8;
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, rounded == 0.0 ? 0.0 : rounded);
    text.append(digits, end);
}

}   // namespace

std::string dxfText(std::string_view groups)
{
    std::string text;
    forEachGroup(groups, [&](std::string_view code, std::string_view value) {
        text.append(code).append("\n").append(value).append("\n");
    });
    return text;
}

std::string dxfBinary(std::string_view groups, bool twoByteCodes)
{
    std::string bytes("AutoCAD Binary DXF\r\n\x1a\0", 22);
    forEachGroup(groups, [&](std::string_view codeText, std::string_view value) {
        std::int32_t code = 0, integer = 0;
        double real = 0.0;
        isLong(codeText, code);
        if (!twoByteCodes && code >= 255) bytes += '\xff';
        putLittle(bytes, static_cast<std::uint64_t>(code), twoByteCodes || code >= 255 ? 2 : 1);
        switch (valueTypeOf(static_cast<std::uint16_t>(code))) {
        case DXFValueType::integer16: isLong(value, integer); return putLittle(bytes, static_cast<std::uint64_t>(integer), 2);
        case DXFValueType::integer32: isLong(value, integer); return putLittle(bytes, static_cast<std::uint64_t>(integer), 4);
        case DXFValueType::real: isDouble(value, real); return putLittle(bytes, std::bit_cast<std::uint64_t>(real), 8);
        case DXFValueType::text: bytes.append(value).append(1, '\0'); return;
        }
    });
    return bytes;
}

std::string entities(std::string_view groups)
{
    return dxfText("0 SECTION|2 ENTITIES|" + std::string(groups) + "|0 ENDSEC|0 EOF");
}

Handle<DXF> readDXF(const std::string& bytes)
{
    SilentReporter nobody;
    return makeHandle<DXF>(std::string_view(bytes), std::string("a.dxf"), nobody);
}

std::string faultOf(const std::string& bytes)
{
    try {
        readDXF(bytes);
        return {};
    } catch (const std::exception& fault) {
        return fault.what();
    }
}

Corners cornersOf(const Model& model, std::uint32_t facet)
{
    Corners corners;
    const Facet& which = model.facet(facet);
    for (std::uint32_t i = 0; i < which.edgeCount; ++i)
        corners.push_back(model.vertex(model.edge(which.firstEdge + i).from).position);
    return corners;
}

std::string written(const Model& model)
{
    std::string text;
    for (std::uint32_t facet = 0; facet < model.facetCount(); ++facet) {
        if (facet > 0) text += ';';
        for (const Point<3>& corner : cornersOf(model, facet)) {
            text += text.empty() ? "(" : " (";
            for (int axis = 0; axis < 3; ++axis) {
                if (axis > 0) text += ' ';
                putRounded(text, corner[axis]);
            }
            text += ')';
        }
    }
    return text;
}

std::string written(const SkippedEntities& skipped)
{
    std::string text;
    for (const auto& entry : skipped.list())
        text += (text.empty() ? "" : "; ") + entry.type + ' ' + std::to_string(entry.count) + ' ' + entry.reason;
    return text;
}

double areaOf(const Model& model)
{
    double total = 0.0;
    for (std::uint32_t facet = 0; facet < model.facetCount(); ++facet) {
        const Corners corners = cornersOf(model, facet);
        Vector<3> sum;
        for (std::size_t i = 1; i + 1 < corners.size(); ++i) sum += (corners[i] - corners[0]).cross(corners[i + 1] - corners[0]);
        total += sum.length() / 2.0;
    }
    return total;
}

}   // namespace belvor::test
