#include "readers/dxf/DXFBlock.h"
#include "readers/dxf/DXFEntities.h"

namespace belvor {

void DXFPicturedByBlock::build()
{
    const bool isTable = is(record.type(), "ACAD_TABLE");
    const std::string_view name = record.textOr(2, "");
    DXFInsertion insertion;
    insertion.paint = drawing.paint();
    if (isTable) insertion.position = record.pointOr(10, 0.0).vector();
    else if (record.hasPoint(12))
        insertion.position = DXFAxes::of(record).toWorld(record.pointOr(12, 0.0)).vector();
    insertion.block = drawing.findBlock(name);
    if (!insertion.block) return drawing.skip(record.type(), SkippedEntities::Why::blockUnknown, name);
    if (insertion.block->isEmpty) drawing.skip(record.type(), SkippedEntities::Why::blockEmpty, name);
    drawing.readEntities(insertion);
}

}   // namespace belvor
