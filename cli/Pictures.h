#pragma once

#include "errors/Reporter.h"
#include "platform/Handle.h"
#include "platform/OutputFile.h"
#include "render/Buffer.h"
#include "scene/Camera.h"
#include "scene/Model.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace belvor {

/// A picture file that takes the rows of a render.
class Picture {
public:
    virtual ~Picture() = default;
    /// Takes the next row, from the top. Throws OmbrFile::Error.
    virtual void writeRow(const Buffer& row) = 0;
    /// Completes the file, which its owner commits. Throws OmbrFile::Error, OutputFile::Error.
    virtual void finish() = 0;
};

/// Several picture files made from one render. Each is written beside its name and takes it
/// when all are whole: whatever goes wrong before leaves no file behind.
class Pictures : public Buffer {
public:
    /// `paths` are UTF-8, each of an Ombr or a PNG file. Throws FileError.
    Pictures(const std::vector<std::string>& paths, const Handle<Model>& model, const Handle<Camera>& camera,
             int width, int height);

    void lineDone(int row) override;

    /// After the render: completes the files and gives them their names. Throws FileError,
    /// Reporter::Abandoned; then each name has what it had before.
    void commit(Reporter& progress);

private:
    struct Output {
        explicit Output(const std::string& path) : file(path) {}
        OutputFile file;
        std::unique_ptr<Picture> picture;   // goes first: it writes into the file
    };
    std::vector<std::unique_ptr<Output>> outputs;
};

}   // namespace belvor
