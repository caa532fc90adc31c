#pragma once
#include "Tests/Properties/PropertySets.h"

/// Custom data as a host reads them.
namespace SlideOfTest
{

/// What came of a request for custom data of a group: a host gets both the size and the text.
struct CAnswer
{
    AC_Result Result;
    UINT64 Size;
    std::string Text;
    bool operator==(const CAnswer&) const = default;
};

inline void PrintTo(const CAnswer& answer, std::ostream* stream)
{
    *stream << NameOf(answer.Result) << " " << answer.Size << " '" << answer.Text << "'";
}

/// The successful answer with that text.
inline CAnswer Text(std::string text)
{
    const UINT64 size = text.size();
    return {AC_RESULT_SUCCESS, size, std::move(text)};
}

constexpr UINT64 Untouched = 0xABCD; ///< the size when nothing was written over it

/// Asks twice, for the size and for the text, as a host does.
CAnswer GroupData(AC_HGROUP group, std::wstring key, Params params = {});

} // namespace SlideOfTest
