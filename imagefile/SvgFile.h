#pragma once

#include "imagefile/ImageWriter.h"
#include "imagefile/PngFile.h"

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace belvor {

class LineTrace;

/// The lines of a picture that surfaces do not hide as an SVG file: paths in the picture's own coordinates,
/// a group for each material. Rows that are written stand beneath them as a picture.
class SvgFile : public ImageWriter {
public:
    /// Writes nothing yet. `output` must outlive this object.
    SvgFile(OutputFile& output, const ImageHeader& header);
    ~SvgFile() override;

    /// The colour beneath everything: red, green, blue. Before the first row.
    void setBackground(const std::uint8_t* colour);
    ImageRow row() noexcept override;
    void writeRow() override;
    /// After the render, before finish(): takes the lines that show, with the colours and materials that
    /// `owners` knows them by. `goOn` is called after every millisecond or so, here and in finish(); what it
    /// throws is passed on.
    void addLines(const LineTrace& trace, const Buffer& owners, std::function<void()> goOn);
    void finish() override;

private:
    class Base64;
    struct Layer {
        std::vector<std::string> paths;   // one behind the other: large ones would be copied as they grow
        std::array<std::uint8_t, 3> colour{};   // of the last path
    };

    void write(const std::string& text);
    void begin();
    void beginPicture();
    void endPicture();

    OutputFile& output;
    const ImageHeader header;
    std::array<std::uint8_t, 3> background{};
    bool begun = false;
    std::vector<std::uint8_t> firstRow;   // until there is a picture
    std::unique_ptr<Base64> encoder;
    std::unique_ptr<PngFile> picture;   // of the surfaces; none where no row is written
    std::map<std::uint16_t, Layer> layers;
    int lineWidth = 1;
    std::function<void()> pause;
};

}   // namespace belvor
