#include "Fuzzing/Walk/FullWalk.h"

#include "Brix/AccessorConveniences.h"
#include "Fuzzing/Walk/Answers.h"
#include "Fuzzing/Walk/Walks.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace Fuzzing
{

namespace
{

/// A level, and the areas of it.
void WalkLevel(CAnswers& answers, AC_HGROUP group, int level)
{
    CMN_RECT rect{};
    if (answers.Succeeds("level image size", _AC_GetLevelImageSize, group, level, &rect))
        answers.Rect("level", rect);
    INT32 numOfAreas = 0;
    answers.Ask("number of areas", _AC_GetNumOfArea, group, level, &numOfAreas);
    answers.Number("areas", numOfAreas);
    const auto count = static_cast<uint64_t>(std::max(numOfAreas, 0));
    const uint64_t numOfWalked = std::min(count, answers.Limits().AreasOfLevel);
    for (uint64_t n = 0; n < numOfWalked; ++n)
    {
        // The first ones and, where there are more, the last one.
        const uint64_t number = n + 1 == numOfWalked ? count - 1 : n;
        AC_HAREA area = nullptr;
        if (answers.Succeeds("area", _AC_GetArea, group, level, number, &area))
            WalkArea(answers, area, level == 0 && n == 0);
    }
    AC_HAREA area = nullptr;
    if (answers.Succeeds("area beyond the last", _AC_GetArea, group, level, count + 1, &area))
        WalkArea(answers, area, false);
    answers.Ask("area of a number beyond 32 bits", _AC_GetArea, group, level, uint64_t{1} << 33, &area);
}

void WalkGroup(CAnswers& answers, AC_HGROUP group)
{
    WalkGroupCustomData(answers, group);
    int numOfLevels = 0;
    answers.Ask("number of levels", _AC_GetNumOfLevels, group, &numOfLevels);
    answers.Number("levels", numOfLevels);
    for (int level = 0; level < std::min(numOfLevels, answers.Limits().Levels); ++level)
        WalkLevel(answers, group, level);
    CMN_RECT rect{};
    AC_HAREA area = nullptr;
    for (const int level : {-1, numOfLevels})
    {
        answers.Ask("size of a level that is not there", _AC_GetLevelImageSize, group, level, &rect);
        answers.Ask("area of a level that is not there", _AC_GetArea, group, level, UINT64{0}, &area);
    }
    answers.Ask("release group", _AC_ReleaseGroup, group);
}

void WalkDocument(CAnswers& answers, AC_HFILE document)
{
    WalkDocumentData(answers, document);
    INT32 numOfGroups = 0;
    answers.Ask("number of groups", _AC_GetNumOfGroups, document, &numOfGroups);
    answers.Number("groups", numOfGroups);
    for (int number = 0; number < std::min(numOfGroups, answers.Limits().Groups); ++number)
    {
        AC_HGROUP group = nullptr;
        if (answers.Succeeds("group", _AC_GetGroup, document, number, &group))
            WalkGroup(answers, group);
    }
    AC_HGROUP group = nullptr;
    answers.Ask("group below 0", _AC_GetGroup, document, -1, &group);
    answers.Ask("group beyond the last", _AC_GetGroup, document, numOfGroups, &group);
}

void WalkFiles(CAnswers& answers, const std::wstring& fileName)
{
    answers.Ask("ID of the file", _AC_GetFileId, fileName.c_str(), nullptr);
    UINT numOfFiles = 0;
    if (!answers.Succeeds("number of files", _AC_GetNumOfFiles, fileName.c_str(), &numOfFiles))
        return;
    answers.Number("files", numOfFiles);
    for (UINT number = 0; number <= std::min(numOfFiles, 4u); ++number)
    {
        UINT size = 0;
        if (!answers.Succeeds("size of a file's name", _AC_GetFileName, fileName.c_str(), number, nullptr, &size))
            continue;
        std::vector<wchar_t> name(size / sizeof(wchar_t));
        if (answers.Succeeds("name of a file", _AC_GetFileName, fileName.c_str(), number, name.data(), &size))
            answers.Number("length of the name", size);
    }
}

struct CDocumentCloser
{
    void operator()(void* document) const { ReleaseAndClose(nullptr, nullptr, document); }
};

} // namespace

CWalkAnswers WalkOpenDocument(AC_HFILE document, const CWalkLimits& limits)
{
    CAnswers answers(limits);
    answers.SetResultOfOpening(AC_RESULT_SUCCESS);
    try
    {
        WalkDocument(answers, document);
    }
    catch (const CWalkIsOver&)
    {
    }
    return answers.Get();
}

CWalkAnswers WalkFilesOf(const std::wstring& fileName, const CWalkLimits& limits)
{
    CAnswers answers(limits);
    try
    {
        WalkFiles(answers, fileName);
    }
    catch (const CWalkIsOver&)
    {
    }
    return answers.Get();
}

CWalkAnswers WalkEverything(const std::wstring& fileName, int mode, const CWalkLimits& limits)
{
    CAnswers answers(limits);
    try
    {
        answers.Ask("connect", _AC_Connect);
        answers.Ask("can access", _AC_CanAccess, fileName.c_str());
        AC_HFILE handle = nullptr;
        const AC_Result result = answers.Ask("open", _AC_Open, fileName.c_str(), mode, &handle);
        answers.SetResultOfOpening(result);
        const std::unique_ptr<void, CDocumentCloser> document(handle);
        if (document)
            WalkDocument(answers, document.get());
        answers.Ask("close nothing", _AC_Close, nullptr);
        WalkFiles(answers, fileName);
        answers.Ask("disconnect", _AC_Disconnect);
    }
    catch (const CWalkIsOver&)
    {
    }
    return answers.Get();
}

} // namespace Fuzzing
