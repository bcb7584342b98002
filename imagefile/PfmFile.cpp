#include "imagefile/PfmFile.h"

#include <algorithm>
#include <string>

namespace belvor {

PfmFile::PfmFile(OutputFile& file, const ImageHeader& header)
    : output(file),
      scale(header.camera),
      depth(static_cast<std::size_t>(header.width)),
      distances(depth.size()),
      rowsLeft(header.height)
{
    const std::string text =
        "Pf\n" + std::to_string(header.width) + ' ' + std::to_string(header.height) + "\n-1.0\n";
    output.write(text);
    dataStart = static_cast<long long>(text.size());
}

void PfmFile::writeRow()
{
    std::transform(depth.begin(), depth.end(), distances.begin(),
                   [this](std::uint32_t code) { return static_cast<float>(scale.distance(code)); });
    const std::size_t rowBytes = distances.size() * sizeof(float);
    output.seek(dataStart + --rowsLeft * static_cast<long long>(rowBytes));
    output.write(distances.data(), rowBytes);
}

}   // namespace belvor
