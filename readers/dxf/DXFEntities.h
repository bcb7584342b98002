#pragma once

#include "readers/dxf/DXFEntity.h"

namespace belvor {

struct DXFHatch;

// The entity types that draw something, one file each.

/// Three or four corners in space.
class DXFFace final : public DXFGraphic {
public:
    explicit DXFFace(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;
};

/// SOLID and TRACE: a filled quadrilateral whose third and fourth corners are swapped.
class DXFSolid final : public DXFGraphic {
public:
    explicit DXFSolid(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;
};

// Where lines and curves are drawn, the outlines of the entities below are, too.

/// LINE and 3DLINE: with thickness a wall.
class DXFLine final : public DXFGraphic {
public:
    explicit DXFLine(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;
};

/// A filled disc; with thickness a cylinder.
class DXFCircle final : public DXFGraphic {
public:
    explicit DXFCircle(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;
};

/// With thickness a curved wall.
class DXFArc final : public DXFGraphic {
public:
    explicit DXFArc(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;
};

/// A filled disc when complete. Has no thickness.
class DXFEllipse final : public DXFGraphic {
public:
    explicit DXFEllipse(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;
};

/// The modern reading's: the faces of a mesh's cage.
class DXFMesh final : public DXFGraphic {
public:
    explicit DXFMesh(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;
};

/// In the modern reading the areas of a solid fill or gradient, each with its holes one facet; where curves
/// are drawn, the dashes of a pattern.
class DXFHatchFill final : public DXFGraphic {
public:
    explicit DXFHatchFill(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;

private:
    void addAreas(const DXFHatch& hatch);
    void addPatterns(const DXFHatch& hatch);
};

/// The modern reading's: a dimension or a table, drawn by the block that the program which wrote the drawing
/// made for it.
class DXFPicturedByBlock final : public DXFEntity {
public:
    explicit DXFPicturedByBlock(const DXFEntity& entity) : DXFEntity(entity) {}
    void build() override;
};

// Of curves alone (DXFCurveEntities.cpp).

/// A dot; with thickness a line.
class DXFPoint final : public DXFGraphic {
public:
    explicit DXFPoint(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;
};

/// A SPLINE, by its control points or through its fit points.
class DXFSplineEntity final : public DXFGraphic {
public:
    explicit DXFSplineEntity(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;
};

/// A helix: the spline that it carries, else by its axis, radius and turns.
class DXFHelix final : public DXFGraphic {
public:
    explicit DXFHelix(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;

private:
    void buildByAxis(std::span<const DXFGroup> groups);
};

/// RAY and XLINE: cut at the sphere of the model's bounds.
class DXFEndless final : public DXFGraphic {
public:
    explicit DXFEndless(const DXFEntity& entity) : DXFGraphic(entity) {}
    void build() override;
};

/// A block placed once or in an array.
class DXFInsert final : public DXFEntity {
public:
    explicit DXFInsert(const DXFEntity& entity) : DXFEntity(entity) {}
    void build() override;
};

}   // namespace belvor
