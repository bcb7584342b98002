#pragma once

#include "readers/dxf/DXF.h"
#include "report/RunReport.h"
#include "tests/support/Models.h"
#include "text/JsonText.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace belvor::test {

/// The corners of facet number `facet`, in order.
inline std::vector<Point<3>> cornersOf(const Model& model, std::uint32_t facet)
{
    std::vector<Point<3>> corners;
    const Facet& which = model.facet(facet);
    for (std::uint32_t i = 0; i < which.edgeCount; ++i)
        corners.push_back(model.vertex(model.edge(which.firstEdge + i).from).position);
    return corners;
}

/// A DXF text from "code value|code value|...", a line for each code and each value. What stands between two
/// "|" may be empty, so that the pieces below end with one and more can be put in anywhere.
inline std::string dxfText(std::string_view groups)
{
    std::string text;
    while (!groups.empty()) {
        const std::string_view group = groups.substr(0, groups.find('|'));
        groups.remove_prefix(std::min(groups.size(), group.size() + 1));
        if (group.empty()) continue;
        const std::size_t blank = std::min(group.find(' '), group.size());
        text.append(group.substr(0, blank)) += '\n';
        text.append(group.substr(std::min(blank + 1, group.size()))) += '\n';
    }
    return text;
}

/// The groups as a binary file. A value "#4" is of that many zero bytes, "%bytes" of a byte with their number
/// and the bytes, under the code of a coordinate a real, anything else a text.
inline std::string binaryDXF(const std::string& groups, bool twoBytes)
{
    std::string bytes("AutoCAD Binary DXF\r\n\x1a\0", 22);
    std::istringstream lines(dxfText(groups));
    for (std::string code, value; std::getline(lines, code) && std::getline(lines, value);) {
        const int number = std::stoi(code);
        if (!twoBytes && number >= 255) bytes += '\xff';
        bytes += static_cast<char>(number & 0xFF);
        if (twoBytes || number >= 255) bytes += static_cast<char>(number >> 8);
        if (value.starts_with('#')) bytes.append(std::stoul(value.substr(1)), '\0');
        else if (value.starts_with('%')) bytes += static_cast<char>(value.size() - 1) + value.substr(1);
        else if (number >= 10 && number < 60) {
            const auto real = std::bit_cast<std::uint64_t>(std::strtod(value.c_str(), nullptr));
            for (int shift = 0; shift < 64; shift += 8) bytes += static_cast<char>(real >> shift & 0xFF);
        } else bytes += value + '\0';
    }
    return bytes;
}

/// A triangle (0 0 0) (1 0 0) (0 1 0).
inline std::string face(const std::string& layer = "0", const std::string& more = "")
{
    return "0 3DFACE|8 " + layer + "|10 0|20 0|11 1|21 0|12 0|22 1|" + more + '|';
}

inline std::string insertion(const std::string& name, const std::string& more = "",
                             const std::string& layer = "0")
{
    return "0 INSERT|8 " + layer + "|2 " + name + "|10 0|20 0|" + more + '|';
}

inline std::string block(const std::string& name, const std::string& entities,
                         const std::string& base = "10 0|20 0|30 0")
{
    return "0 BLOCK|2 " + name + '|' + base + '|' + entities + "|0 ENDBLK|";
}

inline std::string sectionOf(const std::string& name, const std::string& content)
{
    return "0 SECTION|2 " + name + '|' + content + "|0 ENDSEC|";
}

/// A TABLES section with these LAYER records.
inline std::string layerTable(const std::string& layers)
{
    return sectionOf("TABLES", "0 TABLE|2 LAYER|" + layers + "|0 ENDTAB|");
}

/// The text of an ENTITIES section with these groups, then EOF.
inline std::string entities(const std::string& groups)
{
    return dxfText(sectionOf("ENTITIES", groups) + "0 EOF");
}

/// The text of a drawing with these blocks and entities. Of its layers "0" is green, "Red" and "true"
/// (#123456) are what they are called, "off" is off and "cold" is frozen.
inline std::string drawing(const std::string& blocks, const std::string& content)
{
    const std::string layers =
        layerTable("0 LAYER|2 0|62 3|70 0|0 LAYER|2 Red|62 1|70 0|0 LAYER|2 off|62 -5|70 0|"
                   "0 LAYER|2 cold|62 6|70 1|0 LAYER|2 true|62 1|420 1193046|70 0");
    return dxfText(layers + sectionOf("BLOCKS", blocks) + sectionOf("ENTITIES", content) + "0 EOF");
}

/// The drawing in these bytes; faults name the file "a.dxf".
inline Reading readDXF(const std::string& bytes, Reporter& reporter, const ReadingOptions& options = {})
{
    Reading reading;
    reading.model = DXF(bytes, "a.dxf", reporter, options, reading.account).takeModel();
    return reading;
}

inline Reading readDXF(const std::string& bytes, const ReadingOptions& options = {})
{
    SilentReporter nobody;
    return readDXF(bytes, nobody, options);
}

inline Reading readModern(const std::string& bytes)
{
    return readDXF(bytes, {.rules = ReadingRules::modern});
}

/// What reading these bytes comes to: "3 facets", then "; type count reason" for what was skipped; or the
/// fault's what().
inline std::string outcomeOf(const std::string& bytes)
{
    try {
        const Reading drawing = readDXF(bytes);
        std::string text = std::to_string(drawing.model->facetCount()) + " facets";
        for (const auto& entry : drawing.account.notDrawn)
            text += "; " + entry.type + ' ' + std::to_string(entry.count) + ' ' + entry.reason;
        return text;
    } catch (const std::exception& fault) {
        return fault.what();
    }
}

/// "LINE 3 = 1 + 2 no surface; ", a type after the other; then the warnings.
inline std::string accountOf(const Account& account)
{
    std::string text;
    for (const auto& [type, count] : account.entities) {
        EXPECT_EQ(count.read, count.drawn + count.skippedInAll()) << type;
        text += type + ' ' + std::to_string(count.read) + " = " + std::to_string(count.drawn);
        for (std::size_t reason = 0; reason < skipReasonCount; ++reason)
            if (count.skipped[reason] != 0)
                text += " + " + std::to_string(count.skipped[reason]) + ' '
                        + nameOf(static_cast<SkipReason>(reason));
        text += "; ";
    }
    for (const std::string& warning : account.warnings) text += warning + ' ';
    return text;
}

/// All that a reading gives, to the last bit, and what it reports; of one that is refused, or stopped at that
/// report, the fault.
inline std::string everythingOf(const std::string& bytes, const ReadingOptions& how,
                                std::size_t stopAt = static_cast<std::size_t>(-1))
{
    RecordingReporter reporter(stopAt);
    std::string all;
    try {
        const Reading read = readDXF(bytes, reporter, how);
        all = bitsOf(*read.model) + accountOf(read.account);
        for (const Repair& repair : read.account.repairs)
            all += std::to_string(repair.position) + repair.text;
    } catch (const std::exception& fault) {
        all = fault.what();
    }
    for (const auto& [stages, stage, fraction] : reporter.calls) all += shortestDecimal(fraction) + ' ';
    return all;
}

/// Rounded to 1e-6, for comparing and for reading.
inline std::string written(double number)
{
    std::ostringstream text;
    text.precision(12);
    text << std::round(number * 1e6) / 1e6 + 0.0;   // no minus before a zero
    return text.str();
}

inline std::string written(const Point<3>& point)
{
    return '(' + written(point[0]) + ' ' + written(point[1]) + ' ' + written(point[2]) + ')';
}

/// "(x y z) (x y z); ...", one facet after the other, with " /" before each further loop of a facet. Each
/// loop must be closed.
inline std::string written(const Model& model)
{
    std::string text;
    for (std::uint32_t number = 0; number < model.facetCount(); ++number) {
        const Facet& facet = model.facet(number);
        const std::uint32_t end = facet.firstEdge + facet.edgeCount;
        for (std::uint32_t i = facet.firstEdge, start = i; i < end; ++i) {
            if (i > 0) text += i == facet.firstEdge ? "; " : i == start ? " / " : " ";
            text += written(model.vertex(model.edge(i).from).position);
            if (model.edge(i).to == model.edge(start).from) start = i + 1;
            else EXPECT_TRUE(i + 1 < end && model.edge(i).to == model.edge(i + 1).from) << "edge " << i;
        }
    }
    return text;
}

/// The sum over the facets.
inline double areaOf(const Model& model)
{
    double total = 0.0;
    for (std::uint32_t facet = 0; facet < model.facetCount(); ++facet) {
        const std::vector<Point<3>> corners = cornersOf(model, facet);
        Vector<3> sum;
        for (std::size_t i = 1; i + 1 < corners.size(); ++i)
            sum += (corners[i] - corners[0]).cross(corners[i + 1] - corners[0]);
        total += sum.length() / 2.0;
    }
    return total;
}

}   // namespace belvor::test
