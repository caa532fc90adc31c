// Whatever a measurement blob holds, in its XML form or as tag trees: its regions are read or refused by a failed
// assertion; no crash, no hang, no memory beyond measure.

#include "CommonUtil/BinaryFileReader.h"
#include "Fuzzing/Support/FuzzTarget.h"
#include "ZelLoader/Images/VectorGraphicsReader.h"

#include <vector>

using namespace Fuzzing;

namespace
{

constexpr uint32_t TagOfBlobs = 2024;
constexpr uint64_t OffsetOfBlob = 8; // behind what stands for the header of a document

const CScratchFolder folder;

void RunRegions(CInput input)
{
    std::vector<uint8_t> bytes(OffsetOfBlob);
    bytes.insert(bytes.end(), input.begin(), input.end());
    const std::filesystem::path file = folder.File("blob.zel");
    WriteFile(file, bytes);

    CommonUtil::CBinaryFileReader document(file.wstring(), false);
    Zel::CZelTagTreeReader tagTree(document, input.size() % 2 == 0);
    document.Seek(OffsetOfBlob, CommonUtil::BfrSeekDirection::BEGIN);
    const auto size = static_cast<uint32_t>(input.size());
    const auto blob = tagTree.FinishReadingZelDataFieldForBlob(TagOfBlobs, size, Zel::SecondTagAbsent, false);
    std::vector<CIA::CVectorGraphicsImage> regions;
    Zel::CVectorGraphicsReader(document, tagTree, regions).VectorGraphicsImages_initFromBlob(*blob);
    for (size_t n = 0; n < regions.size(); ++n)
        Require(regions[n].ID() == n, "a region's ID is its place in the list");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return RunInput(RunRegions, data, size);
}
