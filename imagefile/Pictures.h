#pragma once

#include "errors/Reporter.h"
#include "imagefile/ImageWriter.h"
#include "platform/Handle.h"
#include "platform/OutputFile.h"
#include "render/Buffer.h"
#include "scene/Camera.h"
#include "scene/Model.h"

#include <memory>
#include <string>
#include <vector>

namespace belvor {

/// A picture file to be made.
struct PictureTarget {
    std::string path;   ///< UTF-8.
    PictureFormat format;
};

/// Several picture files made from one render. Each is written beside its name and takes it
/// when all are whole: whatever goes wrong before leaves no file behind.
class Pictures : public Buffer {
public:
    /// `camera` is the one of the render, built for width × height; the texts go where a format
    /// holds them. Throws FileError, std::bad_alloc.
    Pictures(const std::vector<PictureTarget>& targets, const Model& model, Handle<Camera> camera, int width,
             int height, const PictureTexts& texts = {});

    void lineDone(int row) override;

    /// After the render: completes the files. Throws FileError, Reporter::Abandoned.
    void finish(Reporter& progress);
    /// Gives the finished files of all of them their names. Throws FileError, Reporter::Abandoned; then each
    /// name has what it had before.
    static void commit(const std::vector<Handle<Pictures>>& all, Reporter& progress);

private:
    struct Output {
        explicit Output(const std::string& path) : file(path) {}
        OutputFile file;
        std::unique_ptr<ImageWriter> picture;   // goes first: it writes into the file
    };
    Handle<Camera> camera;
    std::vector<std::unique_ptr<Output>> outputs;
};

}   // namespace belvor
