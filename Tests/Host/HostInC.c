/* A host in C99: walks every group, level, area and image of a document and prints how much there was. */
#include "Brix/AccessorInterface.h"

#include <stdio.h>
#include <stdlib.h>

static unsigned long long NumOfTiles = 0;
static unsigned long long NumOfBytes = 0;

static AC_Result VisitImage(AC_HIMAGE image)
{
    CMN_RECT whole = {0, 0, 0, 0};
    UINT64 size = 0;
    AC_Result result = _AC_GetImageBody(image, &whole, NULL, 0, &size);
    if (result == AC_RESULT_SUCCESS)
    {
        BYTE* bytes = malloc(size);
        result = bytes ? _AC_GetImageBody(image, &whole, bytes, size, &size) : AC_RESULT_ALLOCATION_FAILED;
        free(bytes);
        ++NumOfTiles;
        NumOfBytes += size;
    }
    return result;
}

static AC_Result VisitArea(AC_HAREA area)
{
    AC_HIMAGE image = NULL;
    AC_Result result = _AC_GetImage(area, L"0", NULL, 0, &image);
    if (result == AC_RESULT_SUCCESS && image)
    {
        result = VisitImage(image);
        if (result == AC_RESULT_SUCCESS)
            result = _AC_ReleaseImage(image);
    }
    return result;
}

static AC_Result VisitLevel(AC_HGROUP group, int level)
{
    INT32 numOfAreas = 0;
    INT32 i;
    AC_Result result = _AC_GetNumOfArea(group, level, &numOfAreas);
    for (i = 0; result == AC_RESULT_SUCCESS && i < numOfAreas; ++i)
    {
        AC_HAREA area = NULL;
        result = _AC_GetArea(group, level, (UINT64)i, &area);
        if (result == AC_RESULT_SUCCESS)
            result = VisitArea(area);
        if (result == AC_RESULT_SUCCESS)
            result = _AC_ReleaseArea(area);
    }
    return result;
}

static AC_Result VisitGroup(AC_HGROUP group)
{
    int numOfLevels = 0;
    int level;
    AC_Result result = _AC_GetNumOfLevels(group, &numOfLevels);
    for (level = 0; result == AC_RESULT_SUCCESS && level < numOfLevels; ++level)
        result = VisitLevel(group, level);
    return result;
}

static AC_Result VisitDocument(AC_HFILE document)
{
    INT32 numOfGroups = 0;
    INT32 i;
    AC_Result result = _AC_GetNumOfGroups(document, &numOfGroups);
    for (i = 0; result == AC_RESULT_SUCCESS && i < numOfGroups; ++i)
    {
        AC_HGROUP group = NULL;
        result = _AC_GetGroup(document, i, &group);
        if (result == AC_RESULT_SUCCESS)
            result = VisitGroup(group);
        if (result == AC_RESULT_SUCCESS)
            result = _AC_ReleaseGroup(group);
    }
    return result;
}

int main(int argc, char** argv)
{
    wchar_t name[4096];
    AC_HFILE document = NULL;
    AC_Result result = AC_RESULT_INVALID_PARAM;
    if (argc == 2 && swprintf(name, sizeof name / sizeof *name, L"%s", argv[1]) > 0)
        result = _AC_Open(name, AC_OM_READ, &document);
    if (result == AC_RESULT_SUCCESS)
    {
        const AC_Result ofVisit = VisitDocument(document);
        result = _AC_Close(document);
        result = ofVisit == AC_RESULT_SUCCESS ? result : ofVisit;
    }
    printf("%llu tiles, %llu bytes\n", NumOfTiles, NumOfBytes);
    return (int)result;
}
