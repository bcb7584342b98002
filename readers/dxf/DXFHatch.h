#pragma once

#include "calcore/Point.h"
#include "readers/dxf/DXFRecord.h"

#include <vector>

namespace belvor {

/// One piece of the outline of a hatch, in the hatch's object coordinates. Which members are in use
/// depends on the kind.
struct DXFHatchEdge {
    enum class Kind { line = 1, arc = 2, ellipse = 3, spline = 4 };

    Kind kind = Kind::line;
    Point<2> first;      ///< Start of a line, centre of an arc or ellipse.
    Point<2> second;     ///< End of a line; as a vector from the centre, the end of an ellipse's major axis.
    double size = 0.0;   ///< Radius of an arc; minor axis / major axis of an ellipse.
    double start = 0.0, end = 0.0;   ///< Degrees; negated by the reading where the edge is clockwise.
    bool clockwise = false;

    int degree = 0;   ///< This and the following: of a spline.
    std::vector<double> knots;
    std::vector<Point<2>> controls, fitPoints;
    std::vector<double> weights;   ///< As many as controls, or none.
};

/// One path of the outline: edges in order, or the vertices of a polyline with the bulge to the next.
struct DXFHatchPath {
    struct Vertex {
        Point<2> at;
        double bulge = 0.0;
    };

    bool isPolyline = false;
    std::vector<Vertex> vertices;
    std::vector<DXFHatchEdge> edges;
};

/// The lines of one family of a pattern: parallel ones, `offset` from one to the next.
struct DXFHatchPattern {
    double degrees = 0.0;
    Point<2> base;   ///< On one of them.
    Vector<2> offset;
    std::vector<double>
        dashes;   ///< From there on: lengths of dashes, negative those of gaps; 0 a dot. None: whole lines.
};

/// What a HATCH record says of its areas.
struct DXFHatch {
    bool filled = false;   ///< A solid fill or a gradient, no pattern of lines.
    int style = 0;         ///< Group 75.
    double elevation = 0.0;
    std::vector<DXFHatchPath> paths;
    std::vector<DXFHatchPattern> patterns;   ///< Of one that is not filled.
};

/// Reads the groups of a HATCH record, which belong to what they follow. Throws BadFile for values that are
/// no numbers, points without a y, and counts (91, 93, 95, 96) other than what follows them.
DXFHatch readHatch(const DXFRecord& record);

}   // namespace belvor
