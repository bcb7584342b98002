#include "imagefile/Pictures.h"

#include "imagefile/OmbrFile.h"
#include "platform/FileError.h"

#include <utility>

namespace belvor {
namespace {

/// Does something with a file; a failure of an Ombr file, which knows no name, gets one.
template <class Action>
auto onFile(const std::string& path, Action action) -> decltype(action())
try {
    return action();
} catch (const OmbrFile::Error& error) {
    throw FileError(path, Text::cannotWrite, error.code());
}

}   // namespace

Pictures::Output::Output(const PictureTarget& target)
    : file(target.standardOutput ? OutputFile(OutputFile::StandardOutput(), textOf(Text::standardOutput))
                                 : OutputFile(target.path))
{}

Pictures::Pictures(const std::vector<PictureTarget>& targets, const Model& model, Handle<Camera> view,
                   int width, int height, const PictureTexts& texts, const std::optional<RowRange>& rows)
    : Buffer(width),
      camera(std::move(view)),
      wanted(rows.value_or(RowRange{0, height}))
{
    ImageHeader header = headerOf(model, *camera, width, height);
    header.texts = texts;
    if (rows) header.keepRows(*rows);
    setRows(wanted.first, wanted.end);
    for (const PictureTarget& target : targets) {
        outputs.push_back(std::make_unique<Output>(target));
        Output& output = *outputs.back();
        output.picture =
            onFile(output.file.path(), [&] { return makeImageWriter(target.format, output.file, header); });
        if (target.format != PictureFormat::svg) continue;
        output.vector = static_cast<SvgFile*>(output.picture.get());
        vectors = true;
    }
}

void Pictures::addRow(Output& output)
{
    onFile(output.file.path(), [&] {
        fillRow(*this, *camera, output.picture->row());
        output.picture->writeRow();
    });
}

void Pictures::surfacesDone(int row)
{
    for (const auto& output : outputs) {
        if (!output->vector) continue;
        if (row == 0) output->vector->setBackground(background().data());
        if (embeds) addRow(*output);
    }
}

void Pictures::lineDone(int row)
{
    if (row < wanted.first || row >= wanted.end) return;
    for (const auto& output : outputs)
        if (!output->vector) addRow(*output);
}

namespace {

void checkForStop(Reporter& progress) { progress.check(2, 1, 1.0); }

}   // namespace

void Pictures::finish(Reporter& progress)
{
    for (const auto& output : outputs) {
        checkForStop(progress);
        onFile(output->file.path(), [&] {
            const auto goOn = [&progress] { checkForStop(progress); };
            if (output->vector) output->vector->addLines(shown, *this, goOn);
            output->picture->finish();
            output->file.finish(goOn);
        });
    }
}

void Pictures::commit(const std::vector<Handle<Pictures>>& all, Reporter& progress)
{
    std::vector<OutputFile*> files;
    for (const auto& pictures : all)
        for (const auto& output : pictures->outputs) files.push_back(&output->file);
    checkForStop(progress);
    OutputFile::commit(files);
    for (const auto& pictures : all) pictures->outputs.clear();
}

}   // namespace belvor
