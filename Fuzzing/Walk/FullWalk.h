#pragma once
#include "Brix/AccessorInterface.h"

#include <cstdint>
#include <functional>
#include <string>

namespace Fuzzing
{

/// How much of a document is asked for. Limits are on counts and sizes only: of what is left, everything is asked.
struct CWalkLimits
{
    int Groups = 4;
    int Levels = 4;
    uint64_t AreasOfLevel = 4;
    int ImagesOfArea = 6;
    int Channels = 4;                                       ///< whose properties are asked for
    int Regions = 8;                                        ///< the same
    bool NextImages = true;                                 ///< which depend on what was asked of the area before
    uint64_t BytesOfAnswer = 4u << 20;                      ///< a host has no room for more
    std::function<bool()> IsOver = nullptr;                 ///< asked after each call; true ends the walk
    std::function<void(const std::string&)> Tell = nullptr; ///< gets each answer as a line
    std::function<void()> BeforeCall = nullptr;             ///< called right before each exported function
    std::function<void(AC_Result)> AfterCall = nullptr;     ///< and right after it, before its answer is told
};

/// What came of a walk. The same file gives the same, each time and beside whatever other threads do.
struct CWalkAnswers
{
    AC_Result ResultOfOpening = AC_RESULT_FAILURE;
    uint64_t NumOfAnswers = 0;
    uint64_t NumOfFailures = 0; ///< answers that were another result than success
    uint64_t Digest = 0;        ///< of all results, numbers, texts and bytes
    bool operator==(const CWalkAnswers&) const = default;
};

/// Everything that a host can ask of a document: each exported function, each key, good and bad arguments, the sized
/// answers with a buffer of just the needed size. The document is opened by `mode` and closed in the end.
CWalkAnswers WalkEverything(const std::wstring& fileName, int mode = AC_OM_READ, const CWalkLimits& limits = {});

/// The same, of a document that is open and is left so; several threads may walk it at once. They are told the same if
/// they do not ask for next images.
CWalkAnswers WalkOpenDocument(AC_HFILE document, const CWalkLimits& limits = {});

/// What is asked by the name of a document alone: its files.
CWalkAnswers WalkFilesOf(const std::wstring& fileName, const CWalkLimits& limits = {});

} // namespace Fuzzing
