#include "imagefile/ImageComparison.h"
#include "imagefile/OmbrReader.h"
#include "imagefile/PictureGeometry.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// Ombr files: a fault, or a picture whose rows can be read, placed and compared.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace belvor;
    try {
        MemorySource source({reinterpret_cast<const char*>(data), size});
        OmbrReader image(source);
        const ImageHeader& about = image.header();
        if (ImageComparison::obstacle(about, about) == Text::sizesDiffer) std::abort();
        ImageComparison comparison(about, about);
        const PictureGeometry geometry(about.camera, about.width, about.height);
        for (int row = 0; row < about.height; ++row) {
            image.readRow(row);
            comparison.compareRow(row, image, image);
            geometry.point(0, row, DepthScale(about.camera).distance(image.depth()[0]));
        }
        if (comparison.anyDiffers() || comparison.toJson().empty()) std::abort();
        image.checkRows([](int) {});
    } catch (const OmbrFault&) {}
    return 0;
}
