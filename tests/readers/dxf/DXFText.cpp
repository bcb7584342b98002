#include "tests/readers/dxf/DXFText.h"

#include "report/RunReport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <exception>
#include <sstream>
#include <vector>

namespace belvor::test {
namespace {

/// The corners of facet number `facet`, in order.
std::vector<Point<3>> cornersOf(const Model& model, std::uint32_t facet)
{
    std::vector<Point<3>> corners;
    const Facet& which = model.facet(facet);
    for (std::uint32_t i = 0; i < which.edgeCount; ++i)
        corners.push_back(model.vertex(model.edge(which.firstEdge + i).from).position);
    return corners;
}

}   // namespace

std::string dxfText(std::string_view groups)
{
    std::string text;
    while (!groups.empty()) {
        const std::string_view group = groups.substr(0, groups.find('|'));
        groups.remove_prefix(std::min(groups.size(), group.size() + 1));
        const std::size_t blank = std::min(group.find(' '), group.size());
        text.append(group.substr(0, blank))
            .append("\n")
            .append(group.substr(std::min(blank + 1, group.size())))
            .append("\n");
    }
    return text;
}

std::string entities(std::string_view groups)
{
    return dxfText("0 SECTION|2 ENTITIES|" + std::string(groups) + "|0 ENDSEC|0 EOF");
}

std::string sectionOf(const std::string& name, const std::string& content)
{
    return "0 SECTION|2 " + name + '|' + content + "0 ENDSEC|";
}

std::string block(const std::string& name, const std::string& entities, const std::string& base)
{
    return "0 BLOCK|2 " + name + "|" + base + "|" + entities + "|0 ENDBLK|";
}

std::string insertion(const std::string& name, const std::string& more)
{
    return "0 INSERT|8 0|2 " + name + "|10 0|20 0" + more;
}

Reading readDXF(const std::string& bytes, Reporter& reporter, const ReadingOptions& options)
{
    Reading reading;
    reading.model = DXF(bytes, "a.dxf", reporter, options, reading.account).takeModel();
    return reading;
}

Reading readDXF(const std::string& bytes, const ReadingOptions& options)
{
    SilentReporter nobody;
    return readDXF(bytes, nobody, options);
}

std::string outcomeOf(const std::string& bytes)
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

std::string accountOf(const Account& account)
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

std::string written(const Model& model)
{
    std::ostringstream text;
    text.precision(12);
    for (std::uint32_t facet = 0; facet < model.facetCount(); ++facet) {
        const char* before = facet > 0 ? "; (" : "(";
        for (const Point<3>& corner : cornersOf(model, facet)) {
            for (int axis = 0; axis < 3; ++axis)
                text << (axis == 0 ? before : " ")
                     << std::round(corner[axis] * 1e8) / 1e8 + 0.0;   // no minus before a zero
            text << ')';
            before = " (";
        }
    }
    return text.str();
}

double areaOf(const Model& model)
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
