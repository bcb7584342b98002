#pragma once

#include "account/Account.h"
#include "scene/Model.h"

#include <cstdint>

namespace belvor {

/// By which rules a DXF drawing is read; for other formats they are the same.
enum class ReadingRules {
    strict,   ///< The documented ones: a drawing is shown whole or not at all.
    modern,   ///< As programs write drawings today: more kinds of surfaces, and what is damaged costs one
              ///< entity.
};

/// Of what a DXF drawing's materials are made.
enum class DrawingColours {
    byRules,     ///< The strict reading: of layers; the modern one: of the drawing.
    ofLayers,    ///< One material a layer, each with a colour of its own.
    ofDrawing,   ///< One a layer and colour, in the colours of the drawing.
};

/// How a file is to be read.
struct ReadingOptions {
    ReadingRules rules = ReadingRules::strict;
    DrawingColours colours = DrawingColours::byRules;
    bool log = false;              ///< Write a diagnostic log beside the file, where the format has one.
    unsigned threads = 0;          ///< That may read a large file; 0: as many as the process may use.
    bool curves = false;           ///< Take in lines and curves, where the format has them.
    bool curvesInBounds = false;   ///< They count for the bounds beside surfaces too.
};

/// What a reader gives: the model, and what it met in the file and did not draw.
struct Reading {
    Handle<Model> model;
    Account account;
};

}   // namespace belvor
