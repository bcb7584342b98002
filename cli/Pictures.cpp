#include "cli/Pictures.h"

#include "cli/Options.h"
#include "cli/Png.h"
#include "imagefile/OmbrBuff.h"
#include "platform/Files.h"
#include "platform/Process.h"

#include <cerrno>
#include <utility>

namespace belvor {
namespace {

class OmbrOutput : public Picture {
public:
    OmbrOutput(const std::string& path, const Handle<Model>& model, const Handle<Camera>& camera, int width,
               int height)
        : picture(path, model, camera, width, height)
    {}
    void writeRow(const Buffer& row) override { picture.writeRow(row); }
    void finish() override { picture.finish(); }

private:
    OmbrPicture picture;
};

/// Does something with a file; a failure names the file.
template <class Action>
void onFile(const std::string& path, Action action)
{
    try {
        action();
    } catch (const OmbrFile::Error& error) {
        throw PictureError(path + ": " + error.what());
    }
}

}   // namespace

Pictures::Pictures(const std::vector<std::string>& paths, const Handle<Model>& model,
                   const Handle<Camera>& camera, int width, int height)
    : Buffer(width)
{
    try {
        for (const std::string& path : paths) {
            Output& output = outputs.emplace_back(Output{path, temporaryNameFor(path), {}, nullptr});
            onFile(path, [&] {
                if (isPng(path))
                    output.picture = std::make_unique<PngPicture>(output.temporary, width, height);
                else
                    output.picture =
                        std::make_unique<OmbrOutput>(output.temporary, model, camera, width, height);
            });
        }
    } catch (...) {
        remove();
        throw;
    }
}

Pictures::~Pictures() { remove(); }

void Pictures::lineDone(int)
{
    for (Output& output : outputs) onFile(output.path, [&] { output.picture->writeRow(*this); });
}

void Pictures::commit(Reporter& progress)
{
    const auto checkForStop = [&progress] { progress.check(2, 1, 1.0); };
    for (Output& output : outputs) {
        checkForStop();
        onFile(output.path, [&] { output.picture->finish(); });
        output.picture.reset();
    }
    checkForStop();
    std::size_t named = 0;
    while (named < outputs.size() && takeName(outputs[named])) ++named;
    if (named < outputs.size()) {
        const PictureError error(outputs[named].path + ": " + OmbrFile::Error().what());
        for (std::size_t i = named + 1; i-- > 0;) giveBackName(outputs[i], i < named);
        throw error;
    }
    for (const Output& output : outputs)
        if (!output.older.empty()) removeFile(output.older);
    outputs.clear();
}

/// Puts a whole picture in its place. Where others may still fail, the file that had the name is kept beside
/// it.
bool Pictures::takeName(Output& output)
{
    if (isFolder(output.path)) {
        errno = EISDIR;
        return false;
    }
    std::string older = output.temporary + ".older";
    if (outputs.size() > 1 && replaceFile(output.path, older)) output.older = std::move(older);
    return replaceFile(output.temporary, output.path);
}

void Pictures::giveBackName(const Output& output, bool taken) noexcept
{
    if (!output.older.empty()) replaceFile(output.older, output.path);
    else if (taken) removeFile(output.path);
}

void Pictures::remove() noexcept
{
    for (Output& output : outputs) {
        output.picture.reset();   // an open file cannot be deleted everywhere
        removeFile(output.temporary);
    }
    outputs.clear();
}

}   // namespace belvor
