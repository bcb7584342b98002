#include "imagefile/ImageWriter.h"

#include "imagefile/ExrFile.h"
#include "imagefile/NpyFile.h"
#include "imagefile/OmbrBuff.h"
#include "imagefile/PfmFile.h"
#include "imagefile/PngFile.h"
#include "imagefile/SvgFile.h"
#include "imagefile/TiffFile.h"

namespace belvor {

std::unique_ptr<ImageWriter> makeImageWriter(PictureFormat format, OutputFile& output,
                                             const ImageHeader& header)
{
    switch (format) {
    case PictureFormat::png: return std::make_unique<PngPicture>(output, header);
    case PictureFormat::exr: return std::make_unique<ExrFile>(output, header);
    case PictureFormat::tiff: return std::make_unique<TiffFile>(output, header);
    case PictureFormat::npy: return std::make_unique<NpyFile>(output, header);
    case PictureFormat::pfm: return std::make_unique<PfmFile>(output, header);
    case PictureFormat::svg: return std::make_unique<SvgFile>(output, header);
    case PictureFormat::ombr: break;
    }
    return std::make_unique<OmbrPicture>(output, header);
}

}   // namespace belvor
