#include "readers/dxf/DXFHatch.h"

#include "errors/BadFile.h"

#include <cstdint>

namespace belvor {
namespace {

/// Takes the groups of a boundary one by one, each into the path and edge that came last.
class HatchReader {
public:
    explicit HatchReader(const DXFRecord& source) : record(source) {}

    DXFHatch read()
    {
        const std::span<const DXFGroup> groups = record.groups();
        std::size_t i = readHeader(groups);
        // The style ends the boundary; what follows are pattern lines, seed points and gradients.
        for (; i < groups.size() && groups[i].code != 75 && groups[i].code != 76; ++i) take(groups[i]);
        finishPath();
        for (; !hatch.filled && i < groups.size() && groups[i].code != 98; ++i) takeOfPattern(groups[i]);
        checkCount(static_cast<std::int64_t>(hatch.paths.size()), pathCount);
        hatch.style = record.integerOr(75, 0);
        return std::move(hatch);
    }

private:
    /// What stands before the paths; the index of the first path's groups.
    std::size_t readHeader(std::span<const DXFGroup> groups)
    {
        hatch.filled = record.integerOr(70, 0) == 1;
        std::size_t i = 0;
        for (; i < groups.size() && groups[i].code != 91; ++i)
            if (groups[i].code == 30) hatch.elevation = record.realOf(groups[i]);
        pathCount = i < groups.size() ? record.integerOf(groups[i]) : 0;
        return i < groups.size() ? i + 1 : i;
    }

    void take(const DXFGroup& group)
    {
        if (group.code == 92) return startPath(group);
        if (hatch.paths.empty() || pathEnded) return;
        if (group.code == 93) {
            partCount = record.integerOf(group);
            return;
        }
        if (path().isPolyline) takeOfPolyline(group);
        else takeOfEdges(group);
    }

    void startPath(const DXFGroup& group)
    {
        constexpr int polyline = 2;
        finishPath();
        hatch.paths.emplace_back();
        path().isPolyline = (record.integerOf(group) & polyline) != 0;
        partCount = 0;
        pathEnded = false;
    }

    void finishPath()
    {
        if (hatch.paths.empty() || pathEnded) return;
        finishPoint();
        if (!path().isPolyline) finishEdge();
        checkCount(
            static_cast<std::int64_t>(path().isPolyline ? path().vertices.size() : path().edges.size()),
            partCount);
        pathEnded = true;
    }

    void takeOfPolyline(const DXFGroup& group)
    {
        switch (group.code) {
        case 10: startPoint(group); break;
        case 20: path().vertices.push_back({pointEnding(group), 0.0}); break;
        case 42:
            if (!path().vertices.empty()) path().vertices.back().bulge = record.realOf(group);
            break;
        case 97: finishPath(); break;
        default: break;
        }
    }

    void takeOfEdges(const DXFGroup& group)
    {
        if (group.code == 72) return startEdge(group);
        if (path().edges.empty()) {
            if (group.code == 97) finishPath();
            return;
        }
        DXFHatchEdge& edge = path().edges.back();
        if (edge.kind == DXFHatchEdge::Kind::spline) return takeOfSpline(edge, group);
        switch (group.code) {
        case 10:
        case 11: startPoint(group); break;
        case 20: edge.first = pointEnding(group); break;
        case 21: edge.second = pointEnding(group); break;
        case 40: edge.size = record.realOf(group); break;
        case 50: edge.start = record.realOf(group); break;
        case 51: edge.end = record.realOf(group); break;
        case 73: edge.clockwise = record.integerOf(group) == 0; break;
        case 97: finishPath(); break;
        default: break;
        }
    }

    void takeOfSpline(DXFHatchEdge& edge, const DXFGroup& group)
    {
        switch (group.code) {
        case 94: edge.degree = record.integerOf(group); break;
        case 95: knotCount = record.integerOf(group); break;
        case 96: controlCount = record.integerOf(group); break;
        case 40: edge.knots.push_back(record.realOf(group)); break;
        case 42: edge.weights.push_back(record.realOf(group)); break;
        case 10:
        case 11: startPoint(group); break;
        case 20: edge.controls.push_back(pointEnding(group)); break;
        case 21: edge.fitPoints.push_back(pointEnding(group)); break;
        default: break;   // 97 counts the fit points here: it does not end the path
        }
    }

    void takeOfPattern(const DXFGroup& group)
    {
        if (group.code == 53) hatch.patterns.push_back({record.realOf(group), {}, {}, {}});
        if (hatch.patterns.empty()) return;
        DXFHatchPattern& pattern = hatch.patterns.back();
        switch (group.code) {
        case 43:
        case 44: pattern.base[group.code - 43] = record.realOf(group); break;
        case 45:
        case 46: pattern.offset[group.code - 45] = record.realOf(group); break;
        case 49: pattern.dashes.push_back(record.realOf(group)); break;
        default: break;
        }
    }

    void startEdge(const DXFGroup& group)
    {
        finishPoint();
        finishEdge();
        const std::int32_t kind = record.integerOf(group);
        if (kind < 1 || kind > 4) fail(group.line);
        path().edges.emplace_back();
        path().edges.back().kind = static_cast<DXFHatchEdge::Kind>(kind);
        knotCount = controlCount = 0;
    }

    void finishEdge()
    {
        if (path().edges.empty()) return;
        const DXFHatchEdge& edge = path().edges.back();
        if (edge.kind != DXFHatchEdge::Kind::spline) return;
        checkCount(static_cast<std::int64_t>(edge.knots.size()), knotCount);
        checkCount(static_cast<std::int64_t>(edge.controls.size()), controlCount);
        if (!edge.weights.empty()) checkCount(static_cast<std::int64_t>(edge.weights.size()), controlCount);
    }

    void startPoint(const DXFGroup& xGroup)
    {
        finishPoint();
        x = record.realOf(xGroup);
        openPoint = &xGroup;
    }

    Point<2> pointEnding(const DXFGroup& yGroup)
    {
        if (!openPoint || openPoint->code + 10 != yGroup.code) record.failNeeding(yGroup.code - 10);
        openPoint = nullptr;
        return {x, record.realOf(yGroup)};
    }

    void finishPoint() const
    {
        if (openPoint) record.failNeeding(openPoint->code + 10);
    }

    void checkCount(std::int64_t count, std::int64_t wanted) const
    {
        if (count != wanted) fail(record.line());
    }

    [[noreturn]] void fail(std::int32_t line) const
    {
        throw BadFile(BadFile::badGroup, record.fileName(), line);
    }

    DXFHatchPath& path() { return hatch.paths.back(); }

    const DXFRecord& record;
    DXFHatch hatch;
    std::int64_t pathCount = 0, partCount = 0, knotCount = 0, controlCount = 0;
    bool pathEnded = true;
    const DXFGroup* openPoint = nullptr;   // an x whose y has not come yet
    double x = 0.0;
};

}   // namespace

DXFHatch readHatch(const DXFRecord& record) { return HatchReader(record).read(); }

}   // namespace belvor
