// The exported functions that tell the files of a document, by its name.

#include "CommonImageAccess/Boundary.h"
#include "CommonUtil/ErrnoKeeper.h"
#include "CommonUtil/KeptFileListing.h"
#include "CommonUtil/Text.h"

#include <cwchar>

using namespace CIA;
using namespace CommonUtil;

namespace
{

/// The folder of a document, and the name of its side folder in it. False for a name without a dot.
bool GetPathAndZelSubFolder(const std::wstring& strFileName, std::wstring& strPath, std::wstring& strDir)
{
    const size_t slash = strFileName.rfind(L'/');
    const size_t endOfPath = slash == std::wstring::npos ? 0 : slash;
    const size_t dot = strFileName.rfind(L'.');
    if (dot == std::wstring::npos)
        return false;
    strPath = strFileName.substr(0, endOfPath);
    const size_t stem = slash == std::wstring::npos ? 0 : slash + 1;
    strDir = L"_" + (dot > stem ? strFileName.substr(stem, dot - stem) : std::wstring()) + L"_";
    return true;
}

/// The name of the side folder. False for a document's name without a dot.
bool GetSideFolder(const wchar_t* fileName, std::wstring& sideFolder)
{
    std::wstring path;
    std::wstring name;
    if (!GetPathAndZelSubFolder(Replace(std::wstring(fileName), L"\\", L"/"), path, name))
        return false;
    sideFolder = path + L"/" + name;
    return true;
}

/// The functions below have no document that a listing could be kept in.
CKeptFileListing& SideFiles()
{
    static CKeptFileListing sideFiles;
    return sideFiles;
}

constexpr UINT SizeOfCharacter = 4;

} // namespace

extern "C"
{

    AC_Result _AC_GetNumOfFiles(const wchar_t* pszFileName, UINT* pnNumOfFiles)
    {
        if (!pszFileName || !pnNumOfFiles)
            return AC_RESULT_INVALID_PARAM;
        return AtBoundary(
            [&]
            {
                // Opened and closed for nothing but the proof that it can be read.
                AC_HIMG_DOC document = nullptr;
                const std::wstring fileName = Replace(std::wstring(pszFileName), L"\\", L"/");
                if (const AC_Result result = _AC_Open(fileName.c_str(), AC_OM_READ, &document);
                    result != AC_RESULT_SUCCESS)
                    return result;
                if (const AC_Result result = _AC_Close(document); result != AC_RESULT_SUCCESS)
                    return result;
                std::wstring sideFolder;
                if (!GetSideFolder(pszFileName, sideFolder))
                    return AC_RESULT_INVALID_PARAM;
                const CErrnoKeeper errnoKeeper;
                *pnNumOfFiles = static_cast<UINT>(SideFiles().Read(sideFolder)->Files().size()) + 1;
                return AC_RESULT_SUCCESS;
            });
    }

    AC_Result _AC_GetFileName(const wchar_t* pszFileName, UINT nUnitNumber, wchar_t* pszUnitFileName,
                              UINT* pnUnitFileNameSize)
    {
        // A buffer needs its size: without one there is no telling where it ends.
        if (!pszFileName || !pnUnitFileNameSize)
            return AC_RESULT_INVALID_PARAM;
        return AtBoundary(
            [&]
            {
                std::wstring sideFolder;
                if (!GetSideFolder(pszFileName, sideFolder))
                    return AC_RESULT_INVALID_PARAM;
                const CErrnoKeeper errnoKeeper;
                const CKeptFileListing::CPointer listing = SideFiles().Get(sideFolder);
                const std::vector<std::wstring>& files = listing->Files();
                if (nUnitNumber > files.size())
                    return AC_RESULT_INVALID_PARAM;
                const std::wstring name = nUnitNumber == 0 ? std::wstring(pszFileName) : files[nUnitNumber - 1];
                if (!pszUnitFileName)
                    *pnUnitFileNameSize = static_cast<UINT>(name.size() + 1) * SizeOfCharacter;
                else if (name.size() < *pnUnitFileNameSize / SizeOfCharacter)
                    std::wmemcpy(pszUnitFileName, name.c_str(), name.size() + 1);
                else if (*pnUnitFileNameSize >= SizeOfCharacter)
                    *pszUnitFileName = L'\0'; // too small a buffer is left with an empty text, and is no failure
                return AC_RESULT_SUCCESS;
            });
    }

    AC_Result _AC_GetFileId(const wchar_t*, wchar_t*)
    {
        return AC_RESULT_UNSUPPORTED_OPERATION;
    }

} // extern "C"
