#include "readers/dxf/DXFEntities.h"

namespace belvor {

void DXFFace::build()
{
    const auto corner = [this](int code) { return record.pointOr(code, 0.0); };
    if (record.hasPoint(13)) addFace({corner(10), corner(11), corner(12), corner(13)});
    else addFace({corner(10), corner(11), corner(12)});
}

}   // namespace belvor
