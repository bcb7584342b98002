#pragma once

#include "imagefile/ImageWriter.h"
#include "imagefile/OmbrFile.h"
#include "platform/Handle.h"
#include "render/Buffer.h"
#include "scene/Camera.h"
#include "scene/Model.h"

#include <string>

namespace belvor {

/// Puts rows and a header into an Ombr file.
class OmbrPicture : public ImageWriter {
public:
    /// Checks the sizes (OmbrFile::checkSize), opens the file (`path` is UTF-8) and writes its header.
    /// Throws OmbrFile::Error.
    OmbrPicture(const std::string& path, const ImageHeader& header);
    /// The same into `output`, which must outlive this object; the caller commits it after finish().
    OmbrPicture(OutputFile& output, const ImageHeader& header);

    ImageRow row() noexcept override { return {file.rgb, file.depth, file.material}; }
    void writeRow() override { file.writeRow(); }
    /// Adds every material and closes the file, so that a full disk is reported. Throws OmbrFile::Error.
    void finish() override;

private:
    const std::vector<ImageMaterial> materials;
    OmbrFile file;
};

/// The sink of a render into an Ombr file, which takes its name when it is whole. A file that
/// finish() has not been called for is closed by the destructor: its directories follow the last
/// row, without materials, and it takes its name only where no file had it, or an empty one.
class OmbrBuff : public Buffer {
public:
    /// As OmbrPicture; takes no memory for a picture of sizes that do not fit. `camera` is the one of the
    /// render, built for width × height.
    OmbrBuff(const std::string& path, const Handle<Model>& model, Handle<Camera> camera, int width,
             int height);
    void lineDone(int row) override;
    void finish() { picture.finish(); }

private:
    Handle<Camera> camera;
    OmbrPicture picture;
};

}   // namespace belvor
