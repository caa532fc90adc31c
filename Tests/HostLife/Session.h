#pragma once
#include "Fuzzing/Walk/FullWalk.h"

#include <string>
#include <vector>

/// What a host does with the plug-in between loading and unloading it: each document is opened, walked whole and
/// closed.
inline std::vector<Fuzzing::CWalkAnswers> WalkAll(const std::vector<std::wstring>& names)
{
    std::vector<Fuzzing::CWalkAnswers> answers;
    for (const std::wstring& name : names)
        answers.push_back(Fuzzing::WalkEverything(name));
    return answers;
}
