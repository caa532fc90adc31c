#include "CommonImageAccess/Boundary.h"
#include "CommonUtil/Assertion.h"
#include "Tests/Accessor/Slide.h"
#include "Tests/Support/Assertion.h"

#include <stdexcept>

using namespace SlideOfTest;
using CIA::AtBoundary;
using CIA::CiaResultToAC_Result;
using CIA::CiaResultToAC_ResultArr;

namespace
{

/// A number that no code of this program leaves as a reason.
constexpr int StrangeErrno = EMFILE;

struct ErrnoRow : Row
{
    int Errno;
    AC_Result Result;
};

class ResultOfErrno : public testing::TestWithParam<ErrnoRow>
{
};

TEST_P(ResultOfErrno, IsThatOfTheTable)
{
    errno = GetParam().Errno;
    EXPECT_EQ(CiaResultToAC_ResultArr(), GetParam().Result);
    EXPECT_EQ(CiaResultToAC_Result(), GetParam().Result);
    EXPECT_EQ(errno, GetParam().Errno);
}

INSTANTIATE_TEST_SUITE_P(Reasons, ResultOfErrno,
                         testing::Values(ErrnoRow{{"ENOENT"}, ENOENT, AC_RESULT_FILE_NOT_FOUND},
                                         ErrnoRow{{"ENOEXEC"}, ENOEXEC, AC_RESULT_FILE_CORRUPT},
                                         ErrnoRow{{"EACCES"}, EACCES, AC_RESULT_IN_USE},
                                         ErrnoRow{{"EINVAL"}, EINVAL, AC_RESULT_INVALID_PARAM},
                                         ErrnoRow{{"ENOSYS"}, ENOSYS, AC_RESULT_UNSUPPORTED_OPERATION},
                                         ErrnoRow{{"ENODATA"}, ENODATA, AC_RESULT_PROPERTY_NOT_FOUND},
                                         ErrnoRow{{"ENOPKG"}, ENOPKG, AC_RESULT_DATA_NOT_SUPPORTED},
                                         ErrnoRow{{"EREMOTE"}, EREMOTE, AC_RESULT_MISSING_FILE},
                                         ErrnoRow{{"EBADFD"}, EBADFD, AC_RESULT_ILLEGAL_STATE}),
                         NameOfRow());

TEST(ResultOfErrno, IsSuccessWithoutAReasonUnlessAFailureWasSeen)
{
    errno = 0;
    EXPECT_EQ(CiaResultToAC_ResultArr(), AC_RESULT_SUCCESS);
    EXPECT_FAILED_ASSERTION(CiaResultToAC_Result());
}

TEST(ResultOfErrno, IsAFailureForANumberThatIsNoReason)
{
    errno = StrangeErrno;
    EXPECT_EQ(CiaResultToAC_ResultArr(), AC_RESULT_FAILURE);
    EXPECT_FAILED_ASSERTION(CiaResultToAC_Result());
}

AC_Result ResultOfFailedAssertion(int reason)
{
    return AtBoundary(
        [&]() -> AC_Result
        {
            errno = reason;
            CommonUtil::BreakOrThrow("a rule is broken");
        });
}

TEST(Boundary, AnswersFailureForAnAssertionWithoutAReason)
{
    AC_Result result = AC_RESULT_SUCCESS;
    const auto messages = MessagesOf([&] { result = ResultOfFailedAssertion(0); });
    EXPECT_EQ(result, AC_RESULT_FAILURE);
    EXPECT_THAT(messages, ElementsAre("a rule is broken"));
}

TEST(Boundary, AnswersTheReasonOfAnAssertionAndLogsItsText)
{
    AC_Result result = AC_RESULT_SUCCESS;
    const auto messages = MessagesOf([&] { result = ResultOfFailedAssertion(ENOEXEC); });
    EXPECT_EQ(result, AC_RESULT_FILE_CORRUPT);
    EXPECT_THAT(messages, ElementsAre("a rule is broken", "Error: a rule is broken"));
}

TEST(Boundary, AnswersFailureForAnAssertionWithAReasonThatIsNone)
{
    EXPECT_EQ(ResultOfFailedAssertion(StrangeErrno), AC_RESULT_FAILURE);
}

AC_Result ResultOfException(int reason)
{
    return AtBoundary(
        [&]() -> AC_Result
        {
            errno = reason;
            throw std::runtime_error("of another kind");
        });
}

TEST(Boundary, AnswersForAnyOtherExceptionWithoutALogLine)
{
    AC_Result result = AC_RESULT_SUCCESS;
    EXPECT_THAT(MessagesOf([&] { result = ResultOfException(EREMOTE); }), IsEmpty());
    EXPECT_EQ(result, AC_RESULT_MISSING_FILE);
    EXPECT_EQ(ResultOfException(0), AC_RESULT_FAILURE);
    EXPECT_EQ(ResultOfException(StrangeErrno), AC_RESULT_FAILURE);
}

struct CodeRow : Row
{
    int Code;
    int Number;
};

class NumberInTheInterface : public testing::TestWithParam<CodeRow>
{
};

TEST_P(NumberInTheInterface, NeverChanges)
{
    EXPECT_EQ(GetParam().Code, GetParam().Number);
}

#define CODE(name, number) (CodeRow{{#name}, name, number})

INSTANTIATE_TEST_SUITE_P(
    Results, NumberInTheInterface,
    testing::Values(CODE(AC_RESULT_SUCCESS, 0), CODE(AC_RESULT_INVALID_PARAM, 1), CODE(AC_RESULT_FILE_NOT_FOUND, 2),
                    CODE(AC_RESULT_PROPERTY_NOT_FOUND, 3), CODE(AC_RESULT_NO_SECTION, 4), CODE(AC_RESULT_NO_LUT, 5),
                    CODE(AC_RESULT_UNSUPPORTED_OPERATION, 6), CODE(AC_RESULT_NO_FRAME, 7), CODE(AC_RESULT_FAILURE, 8),
                    CODE(AC_INVALID_FRAME, 9), CODE(AC_RESULT_INSUFFICIENT_BUFFER, 10),
                    CODE(AC_RESULT_FRAME_NOT_ACQUIRED, 11), CODE(AC_RESULT_NO_MORE_FRAME, 12),
                    CODE(AC_RESULT_INVALID_BLOCK_NUMBER, 13), CODE(AC_RESULT_FILE_VERSION_INVALID, 14),
                    CODE(AC_RESULT_ERROR_IN_READ_DATA, 15), CODE(AC_RESULT_XALAN_TRANSFORMATION_FAILED, 16),
                    CODE(AC_RESULT_DESERIALIZATION_FAILED, 17), CODE(AC_RESULT_DESERIALIZED_ELEMENT_LIST_EMPTY, 18),
                    CODE(AC_RESULT_DESERIALIZED_ELEMENT_EMPTY, 19), CODE(AC_RESULT_DESERIALIZED_VALUE_LIST_EMPTY, 20),
                    CODE(AC_RESULT_DESERIALIZED_VALUE_EMPTY, 21), CODE(AC_RESULT_INVALID_HANDLE_VALUE, 22),
                    CODE(AC_RESULT_INVALID_AXIS_VALUE, 23), CODE(AC_RESULT_ALLOCATION_FAILED, 24),
                    CODE(AC_RESULT_FILE_CORRUPT, 25), CODE(AC_RESULT_FUNCTION_RETURNED_NULL, 26),
                    CODE(AC_RESULT_ILLEGAL_STATE, 27), CODE(AC_RESULT_INCOMPLETE_FILE, 28),
                    CODE(AC_RESULT_DATA_NOT_SUPPORTED, 29), CODE(AC_RESULT_WRITE_OPEN_FAIL, 30),
                    CODE(AC_RESULT_WRITE_FAILED, 31), CODE(AC_RESULT_MISSING_FILE, 32),
                    CODE(AC_RESULT_UNSUPPORTED_COMPRESSION, 33), CODE(AC_RESULT_PROPERTY_NOT_FOUND_IN_DOM, 34),
                    CODE(AC_RESULT_IN_USE, 35), CODE(NUM_OF_AC_RESULT_CODES, 36)),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(OpenModes, NumberInTheInterface,
                         testing::Values(CODE(AC_OM_READ, 0), CODE(AC_OM_NORMAL, 0), CODE(AC_OM_WRITE, 1),
                                         CODE(AC_OM_FORCE, 2), CODE(AC_OM_STREAMING, 4), CODE(AC_OM_READ_WRITE, 8),
                                         CODE(AC_OM_APPEND, 16)),
                         NameOfRow());

INSTANTIATE_TEST_SUITE_P(ValueTypes, NumberInTheInterface,
                         testing::Values(CODE(AC_VT_INTEGER, 0), CODE(AC_VT_DOUBLE, 1), CODE(AC_VT_STRING, 2),
                                         CODE(AC_VT_POINT, 3), CODE(AC_VT_RECT, 4)),
                         NameOfRow());

INSTANTIATE_TEST_SUITE_P(AxisTypes, NumberInTheInterface,
                         testing::Values(CODE(AC_AT_TIME, 0), CODE(AC_AT_Z, 1), CODE(AC_AT_LAMBDA, 2)), NameOfRow());

} // namespace
