#pragma once

#include "imagefile/OmbrFile.h"
#include "platform/Handle.h"
#include "render/Buffer.h"
#include "scene/Camera.h"
#include "scene/Model.h"

#include <string>

namespace belvor {

/// Turns finished rows of a render into an Ombr file.
class OmbrPicture {
public:
    /// Checks the sizes (OmbrFile::checkSize), opens the file (`path` is UTF-8) and writes
    /// its header. `camera` is the one of the render, built for width × height. Throws
    /// OmbrFile::Error.
    OmbrPicture(const std::string& path, Handle<Model> model, Handle<Camera> camera, int width, int height);
    /// The same into `output`, which must outlive this object; the caller commits it after finish().
    OmbrPicture(OutputFile& output, Handle<Model> model, Handle<Camera> camera, int width, int height);

    /// Appends a row, from the top. Throws OmbrFile::Error.
    void writeRow(const Buffer& row);
    /// After the last row: adds every material of the model, in the order of their keys, and
    /// closes the file, so that a full disk is reported. Throws OmbrFile::Error.
    void finish();

private:
    void fillRun(std::size_t first, std::size_t end, std::uint16_t material, const std::uint8_t* colour);
    void codeDepths(const Buffer& row, std::size_t first, std::size_t end);

    Handle<Model> model;
    Handle<Camera> camera;
    OmbrFile file;
};

/// The sink of a render into an Ombr file, which takes its name when it is whole. A file that
/// finish() has not been called for is closed by the destructor: its directories follow the last
/// row, without materials, and it takes its name only where no file had it, or an empty one.
class OmbrBuff : public Buffer {
public:
    /// As OmbrPicture; takes no memory for a picture of sizes that do not fit.
    OmbrBuff(const std::string& path, Handle<Model> model, Handle<Camera> camera, int width, int height);
    void lineDone(int row) override;
    void finish() { picture.finish(); }

private:
    OmbrPicture picture;
};

}   // namespace belvor
