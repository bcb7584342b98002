#include "readers/dxf/DXFMeshCage.h"

#include "errors/BadFile.h"

namespace belvor {
namespace {

/// The groups of a record in order.
class Walk {
public:
    explicit Walk(const DXFRecord& mesh) : record(mesh), groups(mesh.groups()) {}

    /// Steps behind the next group of that code and gives its value, a count.
    std::int32_t countBehind(int code)
    {
        while (at < groups.size() && groups[at].code != code) ++at;
        if (at == groups.size()) record.failNeeding(code);
        const std::int32_t count = record.integerOf(groups[at]);
        if (count < 0) fail();
        ++at;
        return count;
    }

    /// The next group, when it has that code; else null.
    const DXFGroup* next(int code)
    {
        return at < groups.size() && groups[at].code == code ? &groups[at++] : nullptr;
    }

    const DXFGroup& needed(int code)
    {
        const DXFGroup* const group = next(code);
        if (!group) fail();
        return *group;
    }

    [[noreturn]] void fail() const
    {
        throw BadFile(BadFile::badGroup, record.fileName(),
                      at < groups.size() ? groups[at].line : record.line());
    }

    const DXFRecord& record;

private:
    std::span<const DXFGroup> groups;
    std::size_t at = 0;
};

void readPositions(Walk& walk, DXFMeshCage& cage)
{
    std::int32_t left = walk.countBehind(92);
    if (walk.next(310)) left = walk.countBehind(92);   // the first was the size of a picture of the entity
    for (; left > 0; --left) {
        const double x = walk.record.realOf(walk.needed(10)), y = walk.record.realOf(walk.needed(20));
        const DXFGroup* const z = walk.next(30);
        cage.positions.emplace_back(x, y, z ? walk.record.realOf(*z) : 0.0);
    }
}

void readFaces(Walk& walk, DXFMeshCage& cage)
{
    std::int32_t left = walk.countBehind(93);
    while (left > 0) {
        const std::int32_t corners = walk.record.integerOf(walk.needed(90));
        if (corners < 0 || corners >= left) walk.fail();
        left -= corners + 1;
        cage.faces.push_back(static_cast<std::uint32_t>(corners));
        for (std::int32_t k = 0; k < corners; ++k) {
            const std::int32_t index = walk.record.integerOf(walk.needed(90));
            if (index < 0 || static_cast<std::size_t>(index) >= cage.positions.size()) walk.fail();
            cage.faces.push_back(static_cast<std::uint32_t>(index));
        }
    }
}

}   // namespace

DXFMeshCage readMeshCage(const DXFRecord& record)
{
    DXFMeshCage cage;
    Walk walk(record);
    readPositions(walk, cage);
    readFaces(walk, cage);
    return cage;
}

}   // namespace belvor
