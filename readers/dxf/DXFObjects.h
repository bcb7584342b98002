#pragma once

namespace belvor {

class DXFStream;

/// Passes over an OBJECTS section up to its ENDSEC: nothing of it reaches a model.
/// `forDictionary` recognises the multi-line styles, and passes over them as well.
void readObjects(DXFStream& stream, bool forDictionary);

/// Walks forward to the OBJECTS section, reads it and comes back to where it started. A file
/// that ends with EOF before has none; throws BadFile when the data just stop.
void searchDictionary(DXFStream& stream);

}   // namespace belvor
