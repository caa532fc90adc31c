#include "HostTool/Reader/StoreKind.h"

#include "HostTool/Reader/ReaderDocument.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"
#include "ZelLoader/Store/KorFile.h"

namespace HostTool
{

namespace
{

StoreKind KindOf(Zel::CKorFile& store)
{
    if (!store.IsOmeType())
        return StoreKind::BinaryStore;
    const auto& levels = store.TiffStoreLevels();
    const bool isTiled = levels.empty() || TIFFIsTiled(store.TiffFilePtrSetTo(levels.front().TiffIfd(0)));
    return isTiled ? StoreKind::TiffTiles : StoreKind::TiffStrips;
}

} // namespace

StoreKind StoreKindOf(const std::filesystem::path& document, int group)
{
    const CReaderDocument reader(document);
    Zel::CZelMultiDimImage& image = *reader.Images().at(static_cast<size_t>(group));
    StoreKind kind = StoreKind::Document;
    reader.Do("cannot open a tile store",
              [&]
              {
                  image.Dimensions(); // the order of the indexes in records follows from them
                  if (!image.UsesKorFile())
                      return;
                  if (!image.KorFile())
                      throw FailedCall(document, "cannot open a tile store", AC_RESULT_MISSING_FILE);
                  kind = KindOf(*image.KorFile());
              });
    return kind;
}

} // namespace HostTool
