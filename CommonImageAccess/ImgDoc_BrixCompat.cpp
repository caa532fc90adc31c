// The property sets of a document.

#include "CommonImageAccess/BrixKeys.h"
#include "CommonImageAccess/ImgDoc.h"
#include "CommonImageAccess/PropsetParams.h"
#include "CommonUtil/Log.h"

#include <array>

namespace CIA
{

struct CImgDoc::CPropsetHandler
{
    const wchar_t* Key;
    bool (CImgDoc::*Fill)(const AC_PARAMS&, CBrixPropset&);
};

bool CImgDoc::BrixPropset_init(const wchar_t* propsetKey, const AC_PARAMS& params, CBrixPropset& propset)
{
    static constexpr std::array<CPropsetHandler, 3> handlers = {{
        {BRIX_GETAREAPROPERTY_KEY_SystemInfo, &CImgDoc::BrixPropset_SystemInfo},
        {BRIX_GETAREAPROPERTY_KEY_UserCommentForImgDoc, &CImgDoc::BrixPropset_UserComment},
        {BRIX_GETAREAPROPERTY_KEY_IdInfo, &CImgDoc::BrixPropset_IdInfo},
    }};
    return CallPropsetHandler(*this, handlers, propsetKey, params, propset);
}

bool CImgDoc::BrixPropset_SystemInfo(const AC_PARAMS& params, CBrixPropset& propset)
{
    AssertNoParams(params);
    propset.AddString(L"name", CreatorHardwareName());
    ZEL_LOG("The version is followed by the build number of the creating application, in the form (Build <the creating "
            "application's build number>)");
    std::wstring version = CreatorHardwareVersion();
    const std::wstring buildNumber = CreatorSoftwareBuildNumber();
    if (!buildNumber.empty())
        version += (version.empty() ? L"(Build " : L" (Build ") + buildNumber + L")";
    propset.AddText(L"version", version);
    propset.AddString(L"deviceName", L"");
    propset.AddString(L"userName", Author());
    return true;
}

bool CImgDoc::BrixPropset_UserComment(const AC_PARAMS& params, CBrixPropset& propset)
{
    AssertNoParams(params);
    propset.AddString(L"comment", Description());
    return true;
}

bool CImgDoc::BrixPropset_IdInfo(const AC_PARAMS& params, CBrixPropset& propset)
{
    AssertNoParams(params);
    propset.AddString(L"familyId", FamilyId());
    return true;
}

} // namespace CIA
