#include "HostTool/Reader/SoundStacks.h"

#include "CommonImageAccess/Boundary.h"
#include "CommonImageAccess/Handles.h"
#include "HostTool/HostError.h"
#include "HostTool/Reader/BuiltInPlugin.h"
#include "HostTool/Reader/ReaderDocument.h"
#include "HostTool/Text.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"
#include "ZelLoader/ZelImgDoc.h"

namespace HostTool
{

namespace
{

/// A document whose images are those that have their store.
class CDocumentOfSoundStacks : public Zel::CZelImgDoc
{
public:
    using CZelImgDoc::CZelImgDoc;

    /// By group, as the whole document numbers them.
    std::vector<CStackOfGroup> Stacks;

protected:
    bool MultiDimImages_init(CIA::CMultiDimImages& varToInit) override
    {
        if (!CZelImgDoc::MultiDimImages_init(varToInit))
            return false;
        Stacks.clear();
        for (const auto& [id, image] : varToInit)
            Stacks.push_back({id, static_cast<Zel::CZelMultiDimImage&>(*image).IsKorFileMissing()});
        for (const CStackOfGroup& stack : Stacks)
            if (stack.IsMissing)
                varToInit.erase(stack.StackID);
        return true;
    }
};

/// Builds all images, as opening does, so that what cannot be served fails here.
void BuildImages(CDocumentOfSoundStacks& document, const std::filesystem::path& path)
{
    const CommonUtil::CLock lock(document.ThreadSafetyMutex());
    for (const auto& [id, image] : document.MultiDimImages())
        if (image->DimensionOf(CIA::DimensionType::DimensionType_P).NumOfPoints() < 1)
            throw FailedCall(path, "cannot open", AC_RESULT_FAILURE);
    if (document.MultiDimImages().empty())
        throw FailedCall(path, "cannot open", AC_RESULT_MISSING_FILE);
}

CDocument OpenSoundStacks(const std::filesystem::path& path)
{
    static const CPluginHost layers = BuiltInPlugin();
    constexpr bool isStrict = true;
    std::unique_ptr<CDocumentOfSoundStacks> document;
    DoOnReader(path, "cannot open",
               [&]
               {
                   document = std::make_unique<CDocumentOfSoundStacks>(ToWide(path.string()).c_str(), isStrict);
                   if (errno != 0)
                       throw FailedCall(path, "cannot open", CIA::CiaResultToAC_ResultArr());
                   BuildImages(*document, path);
               });
    std::vector<CStackOfGroup> stacks = document->Stacks;
    CIA::CImgDoc* handle = document.release(); // the handle's own class; _AC_Close deletes it
    return {layers, path, handle, std::move(stacks)};
}

} // namespace

CDocument OpenWhatThereIs(const CPluginHost& host, const std::filesystem::path& path)
{
    try
    {
        return {host, path};
    }
    catch (const CHostError& error)
    {
        if (error.Code() != ExitCode::MissingFile)
            throw;
    }
    return OpenSoundStacks(std::filesystem::absolute(path));
}

void RequireAllThere(const CDocument& document, ExitCode code)
{
    const std::vector<CHostError> missing = document.MissingGroups();
    if (!missing.empty() && WorseOf(ExitCode::MissingFile, code) == ExitCode::MissingFile)
        throw missing.front();
}

} // namespace HostTool
