#include "PlatformAbstractionLayer/DataCodecs.h"

#include "Brix/PlatformAbstractionLayer.h"
#include "CommonUtil/FileList.h"
#include "CommonUtil/Mutex.h"
#include "CommonUtil/Text.h"
#include "PlatformAbstractionLayer/GlobalContainerMap.h"
#include "PlatformAbstractionLayer/Modules.h"

#include <string_view>
#include <vector>

namespace
{

using Registry = CMN_CGlobalContainerMap<std::wstring, tagAC_DATACODEC_ACCESSOR_DEF>;

Registry g_DataCodecAccessorRegisteryGCMap;
CommonUtil::CMyMutex s_mutexDataCodec; ///< held by the search and the release as a whole
bool s_bSearched = false;              ///< guarded by it

constexpr std::wstring_view LZ4 = L"LZ4";

void LogError(const std::wstring& text, int line)
{
    PAL_PutLogError(PAL_LOGERROR_ERROR, text.c_str(), __FILE__, line);
}

template <typename Function>
Function Export(void* hModule, const char* name)
{
    return reinterpret_cast<Function>(PAL_GetProcAddress(hModule, name));
}

/// Enters the codec of a library into the registry. False when the library is none.
bool LoadDataCodec(void* hModule, const std::wstring& strFile)
{
    const std::wstring name = GetDataCodecName(strFile);
    const tagAC_DATACODEC_ACCESSOR_DEF codec{.hModule = hModule,
                                             .pfnGetEncodeBound =
                                                 Export<PAL_FN_GET_ENCODE_BOUND>(hModule, "GetEncodeBound"),
                                             .pfnEncode = Export<PAL_FN_ENCODE>(hModule, "Encode"),
                                             .pfnDecode = Export<PAL_FN_DECODE>(hModule, "Decode")};
    if (name.empty() || !codec.pfnGetEncodeBound || !codec.pfnEncode || !codec.pfnDecode)
        return false;
    const bool isNew = g_DataCodecAccessorRegisteryGCMap.Insert(name, codec);
    PAL_PutLogInfo((L"Add data codec: " + name).c_str(), __FILE__, __LINE__);
    if (!isNew)
        PAL_ReleaseLibrary(hModule); // an earlier library has the name, and nobody would release this one
    return true;
}

void LoadDefaultLZ4DataCodec()
{
    g_DataCodecAccessorRegisteryGCMap.Insert(std::wstring(LZ4), DefaultLZ4DataCodec());
    PAL_PutLogInfo(L"Add data built-in LZ4 codec", __FILE__, __LINE__);
}

std::vector<std::wstring> GetDlls(const std::wstring& folder)
{
    std::vector<std::wstring> files;
    CommonUtil::GetFileList(folder, L".dll", files, false);
    return files;
}

void LoadDataCodecs()
{
    for (const std::wstring& file : GetDlls(DirOfCurrentModule() + L"/plugin"))
    {
        void* const hModule = PAL_LoadLibrary(file.c_str());
        // A library that is no codec stays loaded: what its start has begun cannot be undone safely.
        if (hModule && !LoadDataCodec(hModule, file))
            LogError(file + L" is not DataCodec.", __LINE__);
    }
    if (!g_DataCodecAccessorRegisteryGCMap.Search(LZ4))
        LoadDefaultLZ4DataCodec();
}

/// Fills the registry unless that was done before.
void SearchDataCodec()
{
    const CommonUtil::CLock lock(s_mutexDataCodec);
    if (s_bSearched)
        return;
    s_bSearched = true; // before the libraries are loaded: one may ask for a codec as it starts
    try
    {
        LoadDataCodecs();
    }
    catch (...)
    {
        s_bSearched = false;
        throw;
    }
}

/// Hands out the codec of a name: success, a failure for an argument that is not there, or no codec.
int GetDataCodecApi(const wchar_t* name, const void* source, const void* target, tagAC_DATACODEC_ACCESSOR_DEF& codec)
{
    if (!name || !source || !target)
        return PAL_RESULT_FAILURE;
    SearchDataCodec();
    const auto found = g_DataCodecAccessorRegisteryGCMap.GetAt(std::wstring_view(name));
    if (!found)
        return PAL_RESULT_NO_CODEC;
    codec = *found;
    return PAL_RESULT_SUCCESS;
}

/// The end of each call: what the codec's result means.
int ResultOf(long codecResult, const wchar_t* complaint, int line)
{
    if (codecResult >= 1)
        return PAL_RESULT_SUCCESS;
    LogError(complaint, line);
    return PAL_RESULT_CODEC_FAILED;
}

} // namespace

std::wstring GetDataCodecName(const std::wstring& strFile)
{
    std::wstring name = CommonUtil::FileNameWithoutPath(strFile);
    for (wchar_t& character : name)
        if (character >= L'a' && character <= L'z')
            character -= L'a' - L'A';
    name = name.substr(0, name.find(L".DLL"));
    for (const wchar_t* ending : {L"PLUGIN_FORHDF5", L"DATACODEC", L"DLL"})
        if (const size_t found = name.find(ending); found != std::wstring::npos)
            return name.substr(0, found);
    return {};
}

int PAL_GetEncodeBound(const wchar_t* name, long size, long* bound)
{
    const char dummy = 0;
    tagAC_DATACODEC_ACCESSOR_DEF codec;
    if (const int result = GetDataCodecApi(name, &dummy, bound, codec); result != PAL_RESULT_SUCCESS)
        return result;
    *bound = codec.pfnGetEncodeBound(size);
    return ResultOf(*bound, L"PAL_GetEncodeBound() failed.", __LINE__);
}

int PAL_Encode(const wchar_t* name, const char* source, int sourceSize, char* target, int targetSize, int* written)
{
    tagAC_DATACODEC_ACCESSOR_DEF codec;
    if (!written)
        return PAL_RESULT_FAILURE;
    if (const int result = GetDataCodecApi(name, source, target, codec); result != PAL_RESULT_SUCCESS)
        return result;
    return ResultOf(codec.pfnEncode(source, sourceSize, target, targetSize, written), L"PAL_Encode() failed.",
                    __LINE__);
}

int PAL_Decode(const wchar_t* name, const char* source, int sourceSize, char* target, int targetSize, int* written)
{
    tagAC_DATACODEC_ACCESSOR_DEF codec;
    if (!written)
        return PAL_RESULT_FAILURE;
    if (const int result = GetDataCodecApi(name, source, target, codec); result != PAL_RESULT_SUCCESS)
        return result;
    return ResultOf(codec.pfnDecode(source, sourceSize, target, targetSize, written), L"PAL_Decode() failed.",
                    __LINE__);
}

int PAL_IsSupportedDataCodec(const wchar_t* pszCodecName, bool* bResult)
{
    if (!pszCodecName || !bResult)
        return PAL_RESULT_FAILURE;
    const std::wstring_view name(pszCodecName);
    if (name != L"NONE")
        SearchDataCodec();
    *bResult = name == L"NONE" || g_DataCodecAccessorRegisteryGCMap.Search(name);
    return PAL_RESULT_SUCCESS;
}

int PAL_ReleaseDataCodec(void)
{
    const CommonUtil::CLock lock(s_mutexDataCodec);
    for (const auto& [name, codec] : g_DataCodecAccessorRegisteryGCMap.Copy())
    {
        if (!codec.hModule)
            continue;
        if (const int result = PAL_ReleaseLibrary(codec.hModule); result != 0)
            return result;
        g_DataCodecAccessorRegisteryGCMap.Erase(name); // its functions are gone, even if a later release fails
    }
    g_DataCodecAccessorRegisteryGCMap.Clear();
    s_bSearched = false;
    return PAL_RESULT_SUCCESS;
}
