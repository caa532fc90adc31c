#include "Tests/DocumentData/CustomData.h"

namespace SlideOfTest
{

CAnswer GroupData(AC_HGROUP group, std::wstring key, Params params)
{
    CAnswer answer{AC_RESULT_SUCCESS, Untouched, ""};
    answer.Result = Call(_AC_GetGroupCustomData, group, key.data(), params.Get(), nullptr, UINT64{0}, &answer.Size);
    if (answer.Result != AC_RESULT_SUCCESS || answer.Size == Untouched)
        return answer;
    std::string text(answer.Size + 1, '?');
    auto* buffer = reinterpret_cast<BYTE*>(text.data());
    answer.Result = Call(_AC_GetGroupCustomData, group, key.data(), params.Get(), buffer, answer.Size, &answer.Size);
    EXPECT_EQ(text.back(), '?') << "a text is written without a terminator";
    text.pop_back();
    answer.Text = std::move(text);
    return answer;
}

} // namespace SlideOfTest
