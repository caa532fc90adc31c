#include "HostTool/Reader/ReaderDocument.h"

#include "CommonImageAccess/Boundary.h"
#include "HostTool/Text.h"
#include "ZelLoader/Images/ZelMultiDimImage.h"
#include "ZelLoader/ZelImgDoc.h"

#include <cerrno>

namespace HostTool
{

namespace
{

/// What the exported functions would have answered to the failure that errno tells.
AC_Result ResultOfErrno()
{
    return errno == 0 ? AC_RESULT_FAILURE : CIA::CiaResultToAC_ResultArr();
}

} // namespace

CReaderDocument::CReaderDocument(const std::filesystem::path& path) : _Path(std::filesystem::absolute(path))
{
    Do("cannot open",
       [this]
       {
           constexpr bool isStrict = true;
           _Document = std::make_unique<Zel::CZelImgDoc>(ToWide(_Path.string()).c_str(), isStrict);
           if (errno != 0)
               throw FailedCall(_Path, "cannot open", ResultOfErrno());
       });
}

CReaderDocument::~CReaderDocument() = default;

std::vector<Zel::CZelMultiDimImage*> CReaderDocument::Images() const
{
    std::vector<Zel::CZelMultiDimImage*> images;
    Do("cannot read its images",
       [&]
       {
           errno = 0;
           for (const auto& [id, image] : _Document->MultiDimImages())
               images.push_back(static_cast<Zel::CZelMultiDimImage*>(image.get()));
           if (errno != 0)
               throw FailedCall(_Path, "cannot read its images", ResultOfErrno());
       });
    return images;
}

void CReaderDocument::Do(const std::string& what, const std::function<void()>& work) const
{
    DoOnReader(_Path, what, work);
}

void DoOnReader(const std::filesystem::path& document, const std::string& what, const std::function<void()>& work)
{
    try
    {
        work();
    }
    catch (const char*) // a rule of the format that the file breaks
    {
        throw FailedCall(document, what, ResultOfErrno());
    }
    catch (const std::bad_cast&)
    {
        throw FailedCall(document, what, AC_RESULT_FAILURE);
    }
}

} // namespace HostTool
