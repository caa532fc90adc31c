#pragma once
#include <string>
#include <vector>

namespace CommonUtil
{

/// True when an errno value of `stat` says that there is nothing to be reached under a name. Others say that this could
/// not be found out, which must not be taken for an answer.
bool MeansNotThere(int reason);

/// True when a file or folder of that name can be found in the folder; else errno is what `stat` left. Asserts that it
/// could be found out.
bool FileExists(const std::wstring& path, const std::wstring& name);

/// Appends the full names of the folder's files to `vecFileList`, in the order of the platform's search: by the
/// pattern "/*.*" for an empty extension or ".ome.tif", else by names that end in `szExtension`. With `bRecursive`
/// the folders found by that pattern are entered too, with an empty extension, each as often as links lead to it, but
/// never inside itself. A missing folder adds nothing. A folder that cannot be read for another reason is a failed
/// assertion, and so are links that multiply the ways to many folders (100,000 entries that were seen before).
void GetFileList(const std::wstring& szFolderPath, const std::wstring& szExtension,
                 std::vector<std::wstring>& vecFileList, bool bRecursive);

/// A name for a temporary file: the folder for such files, a slash, a new UUID in upper case. 0 on success, 4 when the
/// folder cannot be had.
int GetTempFilePath(std::wstring& path);

/// Ticks of `QueryPerformanceCounter` in a millisecond.
double GetTicksPerMillisecond();

} // namespace CommonUtil
