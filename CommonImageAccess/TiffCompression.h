#pragma once
#include "CommonImageAccess/PixelFormat.h"
#include "CommonImageAccess/TiffAccess.h"

namespace CIA
{

/// How the pixels of the current directory are packed, by its Compression tag: none (1), JPEG (6), JPEG with separate
/// tables (7) or JPEG 2000 (34712). Any other kind is logged and ends the process; a missing tag is a failed assertion.
PixelFrameCompressionType::E GetPixelFrameCompressionTypeOfCurrentTiffIfd(TIFF* tif);

} // namespace CIA
