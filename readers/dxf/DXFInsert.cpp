#include "readers/dxf/DXFBlock.h"
#include "readers/dxf/DXFEntities.h"

#include <algorithm>

namespace belvor {

void DXFInsert::build()
{
    DXFInsertion insertion;
    using Why = SkippedEntities::Why;
    const std::string_view name = record.text(2);
    DXFBlock* const block = insertion.block = drawing.findBlock(name);
    const auto skipWithoutBlock = [&] { drawing.skip(record.type(), Why::blockUnknown, name); };
    if (!block && !record.isModern()) return skipWithoutBlock();   // whatever its other groups hold
    insertion.paint = drawing.paint();
    insertion.spacingIsScaled = !record.isModern();
    insertion.columns = record.integerOr(70, 1);
    insertion.rows = record.integerOr(71, 1);
    if (record.isModern()) {   // other programs take 0 for the one insertion that they mean
        insertion.columns = std::max(insertion.columns, 1);
        insertion.rows = std::max(insertion.rows, 1);
    }
    if (insertion.columns <= 0 || insertion.rows <= 0) return drawing.skip(record.type(), Why::noCells, {});

    insertion.columnSpacing = record.realOr(44, 0.0);
    insertion.rowSpacing = record.realOr(45, 0.0);
    insertion.scale = {record.realOr(41, 1.0), record.realOr(42, 1.0), record.realOr(43, 1.0)};
    insertion.degrees = record.realOr(50, 0.0);
    insertion.position = record.pointOr(10, 0.0).vector();
    insertion.tilt = DXFAxes::of(record);
    if (!block) return skipWithoutBlock();
    if (block->isEmpty)
        drawing.skip(record.type(), block->isExternal ? Why::blockExternal : Why::blockEmpty, block->name);
    drawing.readEntities(insertion);
}

}   // namespace belvor
