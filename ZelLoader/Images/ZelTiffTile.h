#pragma once
#include "CommonImageAccess/TiffDeepZoomTile.h"

namespace Zel
{

using namespace CIA;

class CZelFrame;

/// A tile or strip of a frame whose pixels lie in a TIFF directory of the document.
class CZelTiffTile : public CTiffDeepZoomTile
{
public:
    CZelTiffTile(CZelFrame& frame, int32_t col, int32_t row);

    CDeepZoomTile* NextTileOnDisk() override;

protected:
    TIFF* TiffFilePtr() override;
    uint64_t SizeOfFile() override;

private:
    CDeepZoomTile* FirstTileOfNextFrame();

    CZelFrame& _ParentZelFrame;
};

} // namespace Zel
