#include "cli/Pictures.h"

#include "cli/Options.h"
#include "cli/Png.h"
#include "errors/FileError.h"
#include "imagefile/OmbrBuff.h"
#include "platform/OutputFile.h"

#include <utility>

namespace belvor {
namespace {

class OmbrOutput : public Picture {
public:
    OmbrOutput(OutputFile& file, const Handle<Model>& model, const Handle<Camera>& camera, int width,
               int height)
        : picture(file, model, camera, width, height)
    {}
    void writeRow(const Buffer& row) override { picture.writeRow(row); }
    void finish() override { picture.finish(); }

private:
    OmbrPicture picture;
};

/// Does something with a file; a failure names the file.
template <class Action>
auto onFile(const std::string& path, Action action) -> decltype(action())
try {
    return action();
} catch (const OutputFile::Error& error) {
    throw FileError(path, Text::cannotWrite, error.code());
} catch (const OmbrFile::Error& error) {
    throw FileError(path, Text::cannotWrite, error.code());
}

}   // namespace

Pictures::Pictures(const std::vector<std::string>& paths, const Handle<Model>& model,
                   const Handle<Camera>& camera, int width, int height)
    : Buffer(width)
{
    for (const std::string& path : paths) {
        outputs.push_back(onFile(path, [&] { return std::make_unique<Output>(path); }));
        Output& output = *outputs.back();
        onFile(path, [&] {
            if (isPng(path)) output.picture = std::make_unique<PngPicture>(output.file, width, height);
            else output.picture = std::make_unique<OmbrOutput>(output.file, model, camera, width, height);
        });
    }
}

void Pictures::lineDone(int)
{
    for (const auto& output : outputs) onFile(output->file.path(), [&] { output->picture->writeRow(*this); });
}

void Pictures::commit(Reporter& progress)
{
    const auto checkForStop = [&progress] { progress.check(2, 1, 1.0); };
    std::vector<OutputFile*> files;
    for (const auto& output : outputs) {
        checkForStop();
        onFile(output->file.path(), [&] {
            output->picture->finish();
            output->file.finish();
        });
        files.push_back(&output->file);
    }
    checkForStop();
    try {
        OutputFile::commit(files);
    } catch (const OutputFile::Error& error) {
        throw FileError(error.path(), Text::cannotWrite, error.code());
    }
    outputs.clear();
}

}   // namespace belvor
