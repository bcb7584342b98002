#pragma once

#include "errors/Reporter.h"
#include "imagefile/ImageWriter.h"
#include "imagefile/SvgFile.h"
#include "platform/Handle.h"
#include "platform/OutputFile.h"
#include "render/Buffer.h"
#include "render/LineTrace.h"
#include "scene/Camera.h"
#include "scene/Model.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace belvor {

/// A picture file to be made.
struct PictureTarget {
    std::string path;   ///< UTF-8.
    PictureFormat format;
    bool standardOutput = false;   ///< Instead of a file of that name.
};

/// Several picture files made from one render. Each is written beside its name and takes it
/// when all are whole: whatever goes wrong before leaves no file behind.
class Pictures : public Buffer {
public:
    /// `camera` is the one of the render, built for width × height; the texts go where a format
    /// holds them. With `rows` the pictures are bands of these. Throws FileError, std::bad_alloc.
    Pictures(const std::vector<PictureTarget>& targets, const Model& model, Handle<Camera> camera, int width,
             int height, const PictureTexts& texts = {}, const std::optional<RowRange>& rows = {});

    /// What the render's style is to name, so that vector files get their lines; null without such files.
    LineTrace* trace() noexcept { return vectors ? &shown : nullptr; }
    /// From now on vector files get the surfaces as a picture beneath their lines. Before the render.
    void embedSurfaces() noexcept { embeds = true; }

    void surfacesDone(int row) override;
    void lineDone(int row) override;

    /// After the render, while its frame is there: completes the files. Throws FileError,
    /// Reporter::Abandoned.
    void finish(Reporter& progress);
    /// Gives the finished files of all of them their names. Throws FileError, Reporter::Abandoned; then each
    /// name has what it had before.
    static void commit(const std::vector<Handle<Pictures>>& all, Reporter& progress);

private:
    struct Output {
        explicit Output(const PictureTarget& target);
        OutputFile file;
        std::unique_ptr<ImageWriter> picture;   // goes first: it writes into the file
        SvgFile* vector = nullptr;              // the same, of a vector file
    };
    void addRow(Output& output);

    Handle<Camera> camera;
    const RowRange wanted;
    std::vector<std::unique_ptr<Output>> outputs;
    LineTrace shown;
    bool vectors = false, embeds = false;
};

}   // namespace belvor
