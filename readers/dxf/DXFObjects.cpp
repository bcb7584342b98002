#include "readers/dxf/DXFObjects.h"

#include "errors/BadFile.h"
#include "readers/dxf/DXFStream.h"

namespace belvor {

void readObjects(DXFStream& stream, bool forDictionary)
{
    stream.log().line("Starting OBJECTS section at line ", stream.line());
    while (stream.nextRecord()) {
        if (stream.type() == "ENDSEC") {
            stream.log().line("ENDSEC of OBJECTS section at line ", stream.line());
            return;
        }
        if (forDictionary && stream.type() == "MLINESTYLE") continue;
    }
}

void searchDictionary(DXFStream& stream)
{
    const DXFPosition start = stream.position();
    stream.log().line("Looking for DICTIONARY, starting at line ", start.line);
    for (;;) {
        if (!stream.nextRecord())
            throw BadFile(BadFile::noDictionary, stream.fileName(), stream.position().line);
        if (stream.type() == "EOF") {
            stream.log().line("Failed to find OBJECTS section for DICTIONARYs");
            break;
        }
        if (stream.type() != "SECTION" || stream.readRecord().textOr(2, "") != "OBJECTS") continue;
        readObjects(stream, true);
        stream.log().line("Returning from DICTIONARY to line ", start.line);
        break;
    }
    stream.seek(start);
}

}   // namespace belvor
