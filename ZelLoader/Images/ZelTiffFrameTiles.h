#pragma once
#include "CommonImageAccess/DeepZoomTile.h"

#include <memory>

namespace Zel
{

using namespace CIA;

class CZelFrame;

/// The tiles of a frame whose pixels lie in a TIFF directory of the document. A strip has column 0 and its number for a
/// row; a tile has the position of its first pixel for column and row, not a tile number: hosts know them so.
std::unique_ptr<CDeepZoomTiles> MakeZelTiffFrameTiles(CZelFrame& frame);

} // namespace Zel
