#pragma once

#include "calcore/Extent.h"
#include "readers/dxf/DXFStream.h"
#include "scene/Model.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace belvor {

/// Finds the few entities of a drawing that make its extent much larger than that of all others. What it
/// costs is a comparison for each facet: only entities far from the first ones are kept, and the model is
/// looked through only where they may be such.
class DXFOutliers {
public:
    /// An entity begins, which ends the one before. `start` has the line of its record and where the
    /// record's other groups start; so many vertices and curve points are there already.
    void begin(const DXFPosition& start, std::uint32_t vertices, std::uint32_t curvePoints)
    {
        if (vertices != firstVertex || curvePoints != firstPoint) {
            ++entities;
            if (isFar) endFar(vertices, curvePoints);
            firstVertex = vertices;
            firstPoint = curvePoints;
        }
        position = start;
    }

    /// begin() and add() for an entity of one facet after one that something was added of, if both are near:
    /// then all that there is to do is to count it. Else it does nothing and answers false.
    bool passNear(const Point<3>& point, double radiusSquare) noexcept
    {
        const Vector<3> away = point - reference;
        if (!(dot(away, away) <= limitSquare) || radiusSquare > limitSquare || isFar) return false;
        ++entities;
        return true;
    }

    /// Something of the current entity that was added: all of it is within `radiusSquare` (of the radius)
    /// around `point`.
    void add(const Point<3>& point, double radiusSquare)
    {
        const Vector<3> away = point - reference;
        const double distanceSquare = dot(away, away);
        if (!(distanceSquare <= limitSquare) || radiusSquare > limitSquare)
            addFar(point, distanceSquare, radiusSquare);
    }

    struct Result {
        std::uint64_t entities = 0;           ///< Of which something is drawn.
        std::vector<DXFPosition> positions;   ///< Those that make the extent larger, by place in the file.
    };
    /// Those that make the extent more than 100 times larger, if they are 1 % of all at most. After the last
    /// begin(). `pause` is called now and then and may throw.
    Result find(const Model& model, const std::function<void()>& pause);

private:
    struct Entity {
        double reach;   // how far it is from the reference at most
        DXFPosition position;
        std::uint32_t firstVertex, endVertex, firstPoint, endPoint;
    };
    static bool nearer(const Entity& a, const Entity& b) noexcept { return a.reach < b.reach; }
    struct FirstEntity {
        Entity entity;   // its reach is from `at`
        Point<3> at;     // something of it
    };

    void addFar(const Point<3>& point, double distanceSquare, double radiusSquare);
    void endFar(std::uint32_t vertices, std::uint32_t curvePoints);
    void chooseReference();
    void keep(const Entity& entity);
    void dropNearerHalf();
    double dropNearest(std::size_t count);
    struct Boxes {
        Extent<3> others;
        std::vector<Extent<3>> far;
    };
    static Boxes boxesOf(const Model& model, const std::vector<Entity>& far, std::uint32_t step,
                         const std::function<void()>& pause);

    Point<3> reference;
    double limitSquare = -1.0;        // of the distance from the reference; negative: there is none yet
    std::vector<FirstEntity> first;   // until there is one
    std::vector<Entity> kept;         // far from it, in the order of the file

    // The current one.
    DXFPosition position;
    std::uint32_t firstVertex = 0, firstPoint = 0;
    Point<3> at;        // if it is far
    double reach = 0;   // then
    bool isFar = false;

    std::uint64_t entities = 0;
};

}   // namespace belvor
